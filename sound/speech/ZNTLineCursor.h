#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Goes through one line by words and by letters, for a player who wants to know how a name is spelled.
class ZNTLineCursor
{
public:
    enum class Unit { Word, Letter };
    enum class Way { Next, Previous };

    /// Begins before the first word of `newLine`, and after its last one.
    void setLine(std::u16string_view newLine);

    /// The next or previous word or letter; at the line's end or start, the last or first one again. Empty if
    /// the line has none: a word has a letter or a digit. After a word the next letter is the word's first.
    /// Valid until `setLine`.
    std::u16string_view move(Unit unit, Way way);

private:
    struct Part {
        Unit unit;
        std::size_t start, end; ///< UTF-16 units in `line`
    };
    [[nodiscard]] std::vector<Part> partsOf(Unit unit) const;

    std::u16string line;
    std::optional<Part> now; ///< what `move` answered last
};
