#include "ZNTSoundTagScanner.h"

#include "ZNTTextScan.h"

#include <algorithm>
#include <unicode/uchar.h>
#include <unicode/utf16.h>

namespace
{

using std::u16string_view;
constexpr std::size_t npos = u16string_view::npos;

/// ICU's "\w" (its manual, "Set Expressions"): Alphabetic, marks, decimal digits, connector punctuation and
/// the two joiners.
bool isWordCharacter(UChar32 character)
{
    if (character < 0x80)
        return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
               (character >= '0' && character <= '9') || character == '_';
    return u_hasBinaryProperty(character, UCHAR_ALPHABETIC) ||
           (U_GET_GC_MASK(character) & (U_GC_M_MASK | U_GC_ND_MASK | U_GC_PC_MASK)) != 0 ||
           character == 0x200C || character == 0x200D;
}

/// Searches for one thing after the other at growing positions. What was found stays the answer for every
/// later question that starts before it, so that all questions together cost one pass over the text.
template <typename Find>
class ForwardSearch
{
public:
    explicit ForwardSearch(Find find) : find(find) {}
    std::size_t atOrAfter(std::size_t from)
    {
        if (!hasAnswer || answer < from) {
            answer = find(from);
            hasAnswer = true;
        }
        return answer;
    }

private:
    Find find;
    std::size_t answer = 0;
    bool hasAnswer = false;
};

class TagScanner
{
public:
    explicit TagScanner(u16string_view text) : text(text) {}

    /// The end of the match that starts at the "!!" at `start`, or npos. Starts must not go backwards.
    std::size_t matchEnd(std::size_t start)
    {
        const std::size_t bracket = endOfWord(start + 2);
        if (bracket >= text.size() || text[bracket] != u'(')
            return npos;
        const std::size_t name = bracket + 1;
        const std::size_t nameEnd = std::min(blank.atOrAfter(name), text.size());
        if (nameEnd == name)
            return npos;
        // "[^ ]+" may cross line ends, ".*" not: from anywhere in the name the tail reaches the first line
        // end behind the name at the furthest.
        const std::size_t limit = std::min(lineEnd.atOrAfter(nameEnd), text.size());
        const std::size_t close = lastCloseBefore(limit);
        return close != npos && close > name ? close + 1 : npos;
    }

private:
    std::size_t endOfWord(std::size_t at)
    {
        // Words of different tags do not overlap, but a "!!" that is no tag may be asked about again one
        // character on; a "!" is no word character, so every word is read once.
        while (at < text.size()) {
            std::size_t next = at;
            UChar32 character;
            U16_NEXT(text.data(), next, text.size(), character);
            if (!isWordCharacter(character))
                break;
            at = next;
        }
        return at;
    }

    /// The last ")" before `limit`; limits do not shrink, so each stretch is searched once.
    std::size_t lastCloseBefore(std::size_t limit)
    {
        if (limit > closeSearched) {
            const auto stretch = text.substr(closeSearched, limit - closeSearched);
            const auto found = stretch.rfind(u')');
            if (found != npos)
                lastClose = closeSearched + found;
            closeSearched = limit;
        }
        return lastClose;
    }

    static std::size_t findLineEnd(u16string_view text, std::size_t at)
    {
        while (at < text.size() && !znt::isLineTerminator(text[at]))
            ++at;
        return at < text.size() ? at : npos;
    }

    struct FindBlank {
        u16string_view text;
        std::size_t operator()(std::size_t from) const { return znt::findUnit(text, u' ', from); }
    };
    struct FindLineEnd {
        u16string_view text;
        std::size_t operator()(std::size_t from) const { return findLineEnd(text, from); }
    };

    u16string_view text;
    ForwardSearch<FindBlank> blank{FindBlank{text}};
    ForwardSearch<FindLineEnd> lineEnd{FindLineEnd{text}};
    std::size_t closeSearched = 0;
    std::size_t lastClose = npos;
};

/// The start of the next "!!" at or after `from`, or npos.
std::size_t nextDoubleMark(u16string_view text, std::size_t from)
{
    for (std::size_t at = from; (at = znt::findUnit(text, u'!', at)) != npos; ++at)
        if (at + 1 < text.size() && text[at + 1] == u'!')
            return at;
    return npos;
}

} // namespace

namespace znt
{

std::optional<std::u16string_view> nextSoundTag(std::u16string_view text, std::size_t from)
{
    TagScanner scanner(text);
    for (std::size_t at = from; (at = nextDoubleMark(text, at)) != npos; ++at) {
        const std::size_t end = scanner.matchEnd(at);
        if (end != npos)
            return text.substr(at, end - at);
    }
    return std::nullopt;
}

void stripSoundTags(std::u16string& text)
{
    if (nextDoubleMark(text, 0) == npos)
        return;
    std::u16string stripped;
    std::size_t kept = 0;
    TagScanner scanner(text);
    for (std::size_t at = 0; (at = nextDoubleMark(text, at)) != npos;) {
        const std::size_t end = scanner.matchEnd(at);
        if (end == npos) {
            ++at;
            continue;
        }
        stripped.append(text, kept, at - kept);
        kept = at = end;
    }
    if (kept == 0)
        return;
    stripped.append(text, kept);
    text = std::move(stripped);
}

} // namespace znt
