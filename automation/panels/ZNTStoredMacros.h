#pragma once

#include "ZNTMacro.h"
#include "ZNTMacroSource.h"

#include <cstdint>
#include <optional>

class ZNTDatabaseHelper;

/// The macros of all groups, read from the store each time. No list of them is shown.
class ZNTStoredMacros : public ZNTMacroSource
{
public:
    /// `database` outlives this.
    explicit ZNTStoredMacros(ZNTDatabaseHelper& database) : database(database) {}

    [[nodiscard]] std::vector<std::u16string> getAllMacroNames() override;
    /// The macro with that number in the store, in whatever group. None if there is none.
    [[nodiscard]] std::optional<ZNTMacro> macroNumbered(std::int64_t oid);
    [[nodiscard]] std::optional<std::u16string> textOfMacroNamed(std::u16string_view name) override;
    [[nodiscard]] std::optional<std::u16string> textOfMacroAtIndex(long) const override
    {
        return std::nullopt;
    }

protected:
    ZNTDatabaseHelper& database;
};
