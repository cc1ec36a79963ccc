#include "ZNTWildcardMatcher.h"

#include "ZNTTextScan.h"

#include <algorithm>

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

std::u16string_view ZNTWildcardMatcher::requiredLiteral() const
{
    const auto& piece = pieces[required];
    return std::u16string_view(piece.units).substr(piece.anchor, piece.anchorLength);
}

// The search

/// The text is searched only in the stretches that a match can reach: around each place of the required
/// piece, as far as runs and pieces can extend. Within a stretch, from the last piece to the first, the
/// places of a piece are kept from which the rest of the check can match; a greedy run then ends at the last
/// such place within its reach. Places ascend and so do the ends of runs that start at them, so all of this
/// is one walk over the stretch for each piece.
class ZNTWildcardMatcher::Search
{
public:
    Search(const ZNTWildcardMatcher& matcher, std::u16string_view text,
           const ZNTWordCharacters& wordCharacters, std::vector<ZNTTriggerMatch>& matches)
        : matcher(matcher),
          text(text),
          wordCharacters(wordCharacters),
          matches(matches),
          knownRuns(matcher.runs.size())
    {
    }

    void collect(const std::vector<std::int32_t>& occurrences);

private:
    struct Stretch {
        std::size_t start, end;
    };
    /// A place of a piece from which the rest of the check matches, up to `end`.
    struct Place {
        std::size_t at, end;
    };

    void collectTexts(const std::vector<std::int32_t>& occurrences);
    [[nodiscard]] Stretch stretchAround(std::size_t place);
    void collectWithin(Stretch stretch);
    void collectAfterPiece(Stretch stretch);
    void collectAfterRun();
    void findPlaces(std::size_t index, Stretch stretch);

    /// The greediest continuation of a run that starts at `start`, asked for in ascending order.
    std::optional<Place> continuation(std::size_t run, std::size_t start);
    Stretch runAround(std::size_t run, std::size_t offset);
    void addMatch(std::size_t start, std::size_t runStart, Place next);

    const ZNTWildcardMatcher& matcher;
    const std::u16string_view text;
    const ZNTWordCharacters& wordCharacters;
    std::vector<ZNTTriggerMatch>& matches;
    std::size_t searchedUpTo = 0; ///< the end of the last match
    std::vector<Stretch> knownRuns;
    std::vector<Place> places, laterPlaces; ///< of the piece at hand and of the next one
    std::size_t reached = 0;                ///< how many of the later places lie within the present run
};

void ZNTWildcardMatcher::Search::collect(const std::vector<std::int32_t>& occurrences)
{
    if (matcher.runs.empty())
        return collectTexts(occurrences);
    const auto& piece = matcher.pieces[matcher.required];
    std::optional<Stretch> present;
    for (const auto occurrence : occurrences) {
        const auto offset = static_cast<std::size_t>(occurrence);
        if (offset < piece.anchor || !piece.isAt(text, offset - piece.anchor))
            continue;
        const auto stretch = stretchAround(offset - piece.anchor);
        if (present && stretch.start <= present->end) {
            present->end = std::max(present->end, stretch.end);
            continue;
        }
        if (present)
            collectWithin(*present);
        present = stretch;
    }
    if (present)
        collectWithin(*present);
}

void ZNTWildcardMatcher::Search::collectTexts(const std::vector<std::int32_t>& occurrences)
{
    const auto& piece = matcher.pieces.front();
    for (const auto occurrence : occurrences) {
        const auto offset = static_cast<std::size_t>(occurrence);
        if (offset < searchedUpTo + piece.anchor || !piece.isAt(text, offset - piece.anchor))
            continue;
        const auto start = offset - piece.anchor;
        searchedUpTo = start + piece.units.size();
        matches.push_back({static_cast<std::int32_t>(start), static_cast<std::int32_t>(searchedUpTo), 0, 0});
    }
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

void ZNTWildcardMatcher::Search::collectWithin(Stretch stretch)
{
    laterPlaces.clear();
    for (std::size_t piece = matcher.pieces.size() - 1; piece > 0; --piece) {
        findPlaces(piece, stretch);
        std::swap(places, laterPlaces);
    }
    if (matcher.pieces.front().units.empty())
        collectAfterRun();
    else
        collectAfterPiece(stretch);
}

/// Fills `places`. Of an empty last piece there are none: it is wherever the run before it ends.
void ZNTWildcardMatcher::Search::findPlaces(std::size_t index, Stretch stretch)
{
    const auto& piece = matcher.pieces[index];
    const bool isLast = index + 1 == matcher.pieces.size();
    places.clear();
    reached = 0;
    if (piece.units.empty())
        return;
    for (auto at = piece.find(text, stretch.start, stretch.end); at != std::u16string_view::npos;
         at = piece.find(text, at + 1, stretch.end)) {
        const auto end = at + piece.units.size();
        if (isLast)
            places.push_back({at, end});
        else if (const auto next = continuation(index, end))
            places.push_back({at, next->end});
    }
}

std::optional<ZNTWildcardMatcher::Search::Place> ZNTWildcardMatcher::Search::continuation(std::size_t run,
                                                                                          std::size_t start)
{
    const auto runEnd = runAround(run, start).end;
    const auto least = start + matcher.runs[run].least;
    if (run + 1 == matcher.runs.size() && matcher.pieces.back().units.empty())
        return runEnd >= least ? std::optional(Place{runEnd, runEnd}) : std::nullopt;
    while (reached < laterPlaces.size() && laterPlaces[reached].at <= runEnd)
        ++reached;
    if (reached == 0 || laterPlaces[reached - 1].at < least)
        return std::nullopt;
    return laterPlaces[reached - 1];
}

void ZNTWildcardMatcher::Search::collectAfterPiece(Stretch stretch)
{
    const auto& piece = matcher.pieces.front();
    reached = 0;
    for (auto at = piece.find(text, std::max(stretch.start, searchedUpTo), stretch.end);
         at != std::u16string_view::npos;) {
        const auto runStart = at + piece.units.size();
        const auto next = continuation(0, runStart);
        if (next)
            addMatch(at, runStart, *next);
        at = piece.find(text, std::max(at + 1, searchedUpTo), stretch.end);
    }
}

/// The check starts with a group: a match starts as far left of the next piece as its run reaches.
void ZNTWildcardMatcher::Search::collectAfterRun()
{
    reached = 0;
    for (const auto& place : laterPlaces) {
        const auto at = place.at;
        if (at < searchedUpTo)
            continue;
        const auto start = std::max(runAround(0, at).start, searchedUpTo);
        if (at - start < matcher.runs.front().least)
            continue;
        if (const auto next = continuation(0, start))
            addMatch(start, start, *next);
    }
}

void ZNTWildcardMatcher::Search::addMatch(std::size_t start, std::size_t runStart, Place next)
{
    searchedUpTo = next.end;
    matches.push_back({static_cast<std::int32_t>(start), static_cast<std::int32_t>(next.end),
                       static_cast<std::int32_t>(runStart),
                       static_cast<std::int32_t>(next.at - matcher.runs.front().leastAfterFirst)});
}

void ZNTWildcardMatcher::collectMatches(std::u16string_view text,
                                        const std::vector<std::int32_t>& occurrences,
                                        const ZNTWordCharacters& wordCharacters,
                                        std::vector<ZNTTriggerMatch>& matches) const
{
    Search(*this, text, wordCharacters, matches).collect(occurrences);
}
