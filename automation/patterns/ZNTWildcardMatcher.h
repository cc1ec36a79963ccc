#pragma once

#include "ZNTLiteralFilter.h"
#include "ZNTTriggerMatch.h"
#include "ZNTWordCharacters.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Matches the checks that players mostly write: text with "%1", "*" and "." in it and no other expression.
/// It takes time proportional to the text; a backtracking matcher can take the square of that. Its answers
/// are those of ICU for the expression that the check stands for.
class ZNTWildcardMatcher
{
public:
    /// None if the check holds other expressions, or no text that every match contains.
    static std::optional<ZNTWildcardMatcher> forCheck(std::u16string_view check);

    /// False for a text with surrogates: the matcher reads by units, ICU by characters.
    static bool canRead(std::u16string_view text);

    /// Occurs in every match. It is the longest such text of the check.
    [[nodiscard]] std::u16string_view requiredLiteral() const;
    [[nodiscard]] bool hasGroup() const { return !runs.empty(); }

    class Search;

private:
    /// Characters that stand for themselves. The unit `anyCharacter` stands for any character but a line end.
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

/// A search for the non-overlapping matches in one text. It can be made in several parts.
///
/// The text is searched only in the stretches that a match can reach: around each place of the required
/// piece, as far as runs and pieces can extend. Within a stretch, from the last piece to the first, the
/// places of a piece are kept from which the rest of the check can match; a greedy run then ends at the last
/// such place within its reach. Places ascend and so do the ends of runs that start at them, so all of this
/// is one walk over the stretch for each piece.
class ZNTWildcardMatcher::Search
{
public:
    /// `occurrences` are those of the required literal in `text`, which is without surrogates. All that is
    /// handed in outlives the search.
    Search(const ZNTWildcardMatcher& matcher, std::u16string_view text, ZNTLiteralPlaces occurrences,
           const ZNTWordCharacters& wordCharacters);

    /// Appends the next matches in order. True if there are no more; false if `most` are in `matches` or
    /// `hasTimeForMore`, which is asked every now and then, has said no.
    bool collect(std::size_t most, std::vector<ZNTTriggerMatch>& matches,
                 const std::function<bool()>& hasTimeForMore);

private:
    struct Stretch {
        std::size_t start, end;
    };
    /// A place of a piece from which the rest of the check matches, up to `end`. Kept small: a text can hold
    /// millions.
    struct Place {
        std::uint32_t at, end;
    };
    struct Part; ///< what one call of `collect` is given

    bool collectTexts(Part& part);
    bool findNextStretch(Part& part);
    [[nodiscard]] Stretch stretchAround(std::size_t place);
    bool collectWithinStretch(Part& part);
    bool findPlaces(Part& part);
    bool collectAfterPiece(Part& part);
    bool collectAfterRun(Part& part);
    void addMatch(Part& part, std::size_t start, std::size_t runStart, Place next);

    /// The greediest continuation of a run that starts at `start`, asked for in ascending order.
    std::optional<Place> continuation(std::size_t run, std::size_t start);
    Stretch runAround(std::size_t run, std::size_t offset);

    const ZNTWildcardMatcher& matcher;
    const std::u16string_view text;
    ZNTLiteralPlaces occurrences;
    const ZNTWordCharacters& wordCharacters;
    std::size_t searchedUpTo = 0; ///< the end of the last match
    std::vector<Stretch> knownRuns;
    std::optional<Stretch> present;         ///< the stretch at hand
    std::optional<Stretch> ahead;           ///< the start of the one after it
    bool isStretchWhole = false;            ///< else the rest of `present` is still to be found
    std::size_t piece = 0;                  ///< whose places are looked for; 0: matches are
    std::size_t at = 0;                     ///< the place from which that continues
    std::vector<Place> places, laterPlaces; ///< of the piece at hand and of the next one
    std::size_t reached = 0;                ///< how many of the later places lie within the present run
    unsigned steps = 0;
};
