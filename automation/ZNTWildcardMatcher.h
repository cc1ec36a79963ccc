#pragma once

#include "ZNTTriggerMatch.h"
#include "ZNTWordCharacters.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Matches the checks that players mostly write, text with "%1", "*" and "." in it and no other expression,
/// in time proportional to the text, where a backtracking matcher can need its square. Its answers are those
/// of ICU for the expression that the check stands for.
class ZNTWildcardMatcher
{
public:
    /// None where the check holds more than that, or no text that every match contains.
    static std::optional<ZNTWildcardMatcher> forCheck(std::u16string_view check);

    /// Occurs in every match, and is long as such texts go.
    [[nodiscard]] std::u16string_view requiredLiteral() const;
    [[nodiscard]] bool hasGroup() const { return !runs.empty(); }

    /// Appends every non-overlapping match in order. `occurrences` are the ascending offsets of the required
    /// literal in `text`, which is without surrogates.
    void collectMatches(std::u16string_view text, const std::vector<std::int32_t>& occurrences,
                        const ZNTWordCharacters& wordCharacters, std::vector<ZNTTriggerMatch>& matches) const;

private:
    class Search;

    /// Characters that stand for themselves or, where the unit is `anyCharacter`, for any but a line end.
    struct Piece {
        std::u16string units;
        std::size_t anchor = 0; ///< the longest part without `anyCharacter`
        std::size_t anchorLength = 0;

        void findAnchor();
        [[nodiscard]] bool isAt(std::u16string_view text, std::size_t offset) const;
        [[nodiscard]] std::size_t find(std::u16string_view text, std::size_t from, std::size_t end) const;
    };
    /// Groups that follow each other directly, as one run of word and white-space characters.
    struct Run {
        std::size_t least = 0;           ///< characters
        std::size_t leastAfterFirst = 0; ///< of these, those of all groups but the first
    };

    ZNTWildcardMatcher() = default;
    [[nodiscard]] bool isUsable();

    std::vector<Piece> pieces; ///< one more than there are runs; only the first and the last may be empty
    std::vector<Run> runs;
    std::size_t required = 0; ///< the piece whose anchor is the required literal
};
