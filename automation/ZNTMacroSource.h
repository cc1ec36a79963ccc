#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// The macros as the session needs them: their names, and the text that each sends.
class ZNTMacroSource
{
public:
    virtual ~ZNTMacroSource() = default;
    /// Of all groups.
    [[nodiscard]] virtual std::vector<std::u16string> getAllMacroNames() = 0;
    /// Looks in all groups. None if no macro has that name.
    [[nodiscard]] virtual std::optional<std::u16string> textOfMacroNamed(std::u16string_view name) = 0;
    /// Of the list that is shown. None for a row that is not there.
    [[nodiscard]] virtual std::optional<std::u16string> textOfMacroAtIndex(long index) const = 0;
};
