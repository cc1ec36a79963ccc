#include "ZNTWildcardMatcher.h"

#include "ZNTTextScan.h"

#include <algorithm>
#include <utility>

namespace
{

/// A surrogate occurs neither in a check that is understood here nor in a text that is searched here.
constexpr char16_t anyCharacter = 0xD800;

constexpr bool isSurrogate(char16_t unit) { return (unit & 0xF800) == 0xD800; }

bool isOrdinary(char16_t unit)
{
    return std::u16string_view(u"\\^$.|?+()[]{}*").find(unit) == std::u16string_view::npos &&
           !isSurrogate(unit);
}

/// After a backslash. "*" and "%1" are replaced also behind one.
bool standsForItselfQuoted(char16_t unit)
{
    return std::u16string_view(u"\\^$.|?+()[]{}!\"#&',-/:;<=>@_`~").find(unit) != std::u16string_view::npos;
}

} // namespace

// Pieces

void ZNTWildcardMatcher::Piece::findAnchor()
{
    for (std::size_t start = 0; start < units.size();) {
        const auto end = std::min(units.find(anyCharacter, start), units.size());
        if (end - start > anchorLength) {
            anchor = start;
            anchorLength = end - start;
        }
        start = end + 1;
    }
}

bool ZNTWildcardMatcher::Piece::isAt(std::u16string_view text, std::size_t offset) const
{
    if (offset > text.size() || text.size() - offset < units.size())
        return false;
    if (anchorLength == units.size())
        return text.compare(offset, units.size(), units) == 0;
    for (std::size_t at = 0; at < units.size(); ++at) {
        const char16_t unit = text[offset + at];
        if (units[at] == anyCharacter ? znt::isLineTerminator(unit) : unit != units[at])
            return false;
    }
    return true;
}

/// The first place at or after `from` where the piece stands and ends at or before `end`.
std::size_t ZNTWildcardMatcher::Piece::find(std::u16string_view text, std::size_t from, std::size_t end) const
{
    const auto searched = text.substr(0, end);
    const auto literal = std::u16string_view(units).substr(anchor, anchorLength);
    for (auto at = searched.find(literal, from + anchor); at != std::u16string_view::npos;
         at = searched.find(literal, at + 1)) {
        if (isAt(searched, at - anchor))
            return at - anchor;
    }
    return std::u16string_view::npos;
}

// The check

std::optional<ZNTWildcardMatcher> ZNTWildcardMatcher::forCheck(std::u16string_view check)
{
    ZNTWildcardMatcher matcher;
    matcher.pieces.emplace_back();
    bool followsGroup = false;
    const auto addGroup = [&](std::size_t least) {
        if (!followsGroup) {
            matcher.runs.push_back({least, 0});
            matcher.pieces.emplace_back();
        } else {
            matcher.runs.back().least += least;
            matcher.runs.back().leastAfterFirst += least;
        }
        followsGroup = true;
    };
    for (std::size_t at = 0; at < check.size(); ++at) {
        const char16_t unit = check[at];
        if (unit == u'*') {
            addGroup(0);
            continue;
        }
        if (unit == u'%' && check.substr(at, 2) == u"%1") {
            addGroup(1);
            ++at;
            continue;
        }
        if (unit == u'\\' && at + 1 < check.size() && standsForItselfQuoted(check[at + 1]))
            matcher.pieces.back().units += check[++at];
        else if (unit == u'.')
            matcher.pieces.back().units += anyCharacter;
        else if (isOrdinary(unit))
            matcher.pieces.back().units += unit;
        else
            return std::nullopt;
        followsGroup = false;
    }
    return matcher.isUsable() ? std::optional(std::move(matcher)) : std::nullopt;
}

bool ZNTWildcardMatcher::isUsable()
{
    for (std::size_t index = 0; index < pieces.size(); ++index) {
        auto& piece = pieces[index];
        piece.findAnchor();
        if (piece.anchorLength == 0 && !piece.units.empty())
            return false;
        if (piece.anchorLength > pieces[required].anchorLength)
            required = index;
    }
    return pieces[required].anchorLength > 0;
}

bool ZNTWildcardMatcher::canRead(std::u16string_view text)
{
    // Block by block, without a branch for each character, so that the compiler can take many at once.
    constexpr std::size_t blockLength = 4096;
    for (std::size_t start = 0; start < text.size(); start += blockLength) {
        unsigned found = 0;
        for (const char16_t unit : text.substr(start, blockLength))
            found |= (unit & 0xF800) == 0xD800 ? 1 : 0;
        if (found != 0)
            return false;
    }
    return true;
}

std::u16string_view ZNTWildcardMatcher::requiredLiteral() const
{
    const auto& piece = pieces[required];
    return std::u16string_view(piece.units).substr(piece.anchor, piece.anchorLength);
}

// The search

struct ZNTWildcardMatcher::Search::Part {
    std::size_t most;
    std::vector<ZNTTriggerMatch>& matches;
    const std::function<bool()>& hasTimeForMore;

    /// Asked before each step. To ask for the time costs as much as some steps, so that is done every 256th
    /// time.
    [[nodiscard]] bool isOver(unsigned& steps) const
    {
        return matches.size() >= most || (++steps % 256 == 0 && !hasTimeForMore());
    }
};

ZNTWildcardMatcher::Search::Search(const ZNTWildcardMatcher& matcher, std::u16string_view text,
                                   ZNTLiteralPlaces occurrences, const ZNTWordCharacters& wordCharacters)
    : matcher(matcher),
      text(text),
      occurrences(occurrences),
      wordCharacters(wordCharacters),
      knownRuns(matcher.runs.size())
{
}

bool ZNTWildcardMatcher::Search::collect(std::size_t most, std::vector<ZNTTriggerMatch>& matches,
                                         const std::function<bool()>& hasTimeForMore)
{
    Part part{most, matches, hasTimeForMore};
    if (matcher.runs.empty())
        return collectTexts(part);
    for (;;) {
        if (!isStretchWhole && !findNextStretch(part))
            return false;
        if (!present)
            return true;
        if (!collectWithinStretch(part))
            return false;
        present = std::exchange(ahead, std::nullopt);
        isStretchWhole = false;
    }
}

/// A check without wildcards matches wherever its text stands.
bool ZNTWildcardMatcher::Search::collectTexts(Part& part)
{
    const auto& only = matcher.pieces.front();
    for (;;) {
        if (part.isOver(steps))
            return false;
        const auto offset = occurrences.next();
        if (!offset)
            return true;
        if (*offset < searchedUpTo + only.anchor || !only.isAt(text, *offset - only.anchor))
            continue;
        const auto start = *offset - only.anchor;
        searchedUpTo = start + only.units.size();
        part.matches.push_back(
            {static_cast<std::int32_t>(start), static_cast<std::int32_t>(searchedUpTo), 0, 0});
    }
}

/// Fills `present` with the next stretch, if there is one more. Stretches that touch are one. False if the
/// part is over before that.
bool ZNTWildcardMatcher::Search::findNextStretch(Part& part)
{
    const auto& literal = matcher.pieces[matcher.required];
    while (!ahead) {
        if (part.isOver(steps))
            return false;
        const auto offset = occurrences.next();
        if (!offset)
            break;
        if (*offset < literal.anchor || !literal.isAt(text, *offset - literal.anchor))
            continue;
        const auto stretch = stretchAround(*offset - literal.anchor);
        if (!present)
            present = stretch;
        else if (stretch.start <= present->end)
            present->end = std::max(present->end, stretch.end);
        else
            ahead = stretch;
    }
    isStretchWhole = true;
    if (!present)
        return true;
    piece = matcher.pieces.size() - 1;
    at = present->start;
    places.clear();
    laterPlaces.clear();
    reached = 0;
    return true;
}

/// Everything that a match with the required piece at `place` can cover.
ZNTWildcardMatcher::Search::Stretch ZNTWildcardMatcher::Search::stretchAround(std::size_t place)
{
    Stretch stretch{place, place + matcher.pieces[matcher.required].units.size()};
    for (std::size_t piece = matcher.required; piece-- > 0;) {
        stretch.start = runAround(piece, stretch.start).start;
        stretch.start -= std::min(stretch.start, matcher.pieces[piece].units.size());
    }
    for (std::size_t piece = matcher.required + 1; piece < matcher.pieces.size(); ++piece) {
        stretch.end = runAround(piece - 1, stretch.end).end;
        stretch.end = std::min(stretch.end + matcher.pieces[piece].units.size(), text.size());
    }
    return stretch;
}

/// The longest run of word and white-space characters that touches `offset`. The last answer is kept for each
/// run of the check, so that questions in ascending order look at no character more than a few times.
ZNTWildcardMatcher::Search::Stretch ZNTWildcardMatcher::Search::runAround(std::size_t run, std::size_t offset)
{
    auto& known = knownRuns[run];
    if (known.start <= offset && offset <= known.end && known.start < known.end)
        return known;
    known = {offset, offset};
    while (known.start > 0 && wordCharacters.contains(text[known.start - 1]))
        --known.start;
    while (known.end < text.size() && wordCharacters.contains(text[known.end]))
        ++known.end;
    return known;
}

bool ZNTWildcardMatcher::Search::collectWithinStretch(Part& part)
{
    while (piece > 0) {
        if (!findPlaces(part))
            return false;
        std::swap(places, laterPlaces);
        places.clear();
        reached = 0;
        --piece;
        const bool startsWithRun = piece == 0 && matcher.pieces.front().units.empty();
        at = startsWithRun ? 0 : piece == 0 ? std::max(present->start, searchedUpTo) : present->start;
    }
    return matcher.pieces.front().units.empty() ? collectAfterRun(part) : collectAfterPiece(part);
}

/// Fills `places`. An empty last piece has none: it stands wherever the run before it ends.
bool ZNTWildcardMatcher::Search::findPlaces(Part& part)
{
    const auto& sought = matcher.pieces[piece];
    const bool isLast = piece + 1 == matcher.pieces.size();
    if (sought.units.empty())
        return true;
    for (;;) {
        if (part.isOver(steps))
            return false;
        const auto found = sought.find(text, at, present->end);
        if (found == std::u16string_view::npos)
            return true;
        at = found + 1;
        const auto end = found + sought.units.size();
        if (isLast)
            places.push_back({static_cast<std::uint32_t>(found), static_cast<std::uint32_t>(end)});
        else if (const auto next = continuation(piece, end))
            places.push_back({static_cast<std::uint32_t>(found), next->end});
    }
}

std::optional<ZNTWildcardMatcher::Search::Place> ZNTWildcardMatcher::Search::continuation(std::size_t run,
                                                                                          std::size_t start)
{
    const auto runEnd = runAround(run, start).end;
    const auto least = start + matcher.runs[run].least;
    if (run + 1 == matcher.runs.size() && matcher.pieces.back().units.empty())
        return runEnd >= least ? std::optional(Place{static_cast<std::uint32_t>(runEnd),
                                                     static_cast<std::uint32_t>(runEnd)})
                               : std::nullopt;
    while (reached < laterPlaces.size() && laterPlaces[reached].at <= runEnd)
        ++reached;
    if (reached == 0 || laterPlaces[reached - 1].at < least)
        return std::nullopt;
    return laterPlaces[reached - 1];
}

bool ZNTWildcardMatcher::Search::collectAfterPiece(Part& part)
{
    const auto& first = matcher.pieces.front();
    for (;;) {
        if (part.isOver(steps))
            return false;
        const auto found = first.find(text, at, present->end);
        if (found == std::u16string_view::npos)
            return true;
        const auto runStart = found + first.units.size();
        if (const auto next = continuation(0, runStart))
            addMatch(part, found, runStart, *next);
        at = std::max(found + 1, searchedUpTo);
    }
}

/// The check starts with a group: a match starts as far left of the next piece as its run reaches. `at`
/// counts the places of that piece.
bool ZNTWildcardMatcher::Search::collectAfterRun(Part& part)
{
    for (; at < laterPlaces.size(); ++at) {
        if (part.isOver(steps))
            return false;
        const std::size_t end = laterPlaces[at].at;
        if (end < searchedUpTo)
            continue;
        const auto start = std::max(runAround(0, end).start, searchedUpTo);
        if (end - start < matcher.runs.front().least)
            continue;
        if (const auto next = continuation(0, start))
            addMatch(part, start, start, *next);
    }
    return true;
}

void ZNTWildcardMatcher::Search::addMatch(Part& part, std::size_t start, std::size_t runStart, Place next)
{
    searchedUpTo = next.end;
    part.matches.push_back({static_cast<std::int32_t>(start), static_cast<std::int32_t>(next.end),
                            static_cast<std::int32_t>(runStart),
                            static_cast<std::int32_t>(next.at - matcher.runs.front().leastAfterFirst)});
}
