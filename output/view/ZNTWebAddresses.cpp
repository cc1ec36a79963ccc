#include "ZNTWebAddresses.h"

#include "ZNTCellWidth.h"
#include "ZNTOutputStore.h"

#include <algorithm>
#include <array>
#include <set>
#include <unicode/uchar.h>
#include <unicode/utf16.h>

namespace
{

constexpr std::u16string_view afterScheme = u"://";
constexpr std::array<std::u16string_view, 2> webSchemes{u"https", u"http"};
constexpr std::u16string_view openingBrackets = u"([", closingBrackets = u")]";
constexpr std::u16string_view sentenceMarks = u".,;:!?'*";

bool isAsciiLetterOrDigit(char16_t unit)
{
    return (unit >= u'0' && unit <= u'9') || (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z');
}

bool isInWebAddress(char32_t character)
{
    constexpr std::u16string_view asciiMarks = u"-._~:/?#[]@!$&'()*+,;=%";
    if (character < 0x80)
        return isAsciiLetterOrDigit(static_cast<char16_t>(character)) ||
               asciiMarks.find(static_cast<char16_t>(character)) != asciiMarks.npos;
    const auto kind = U_GET_GC_MASK(static_cast<UChar32>(character));
    return (kind & (U_GC_L_MASK | U_GC_M_MASK | U_GC_ND_MASK)) != 0 &&
           znt::cellWidth(character, znt::AmbiguousWidth::Narrow) < 2;
}

bool canBeginHost(char16_t unit) { return unit == u'[' || unit >= 0x80 || isAsciiLetterOrDigit(unit); }

/// Where the scheme begins that ends at `colon`; `colon` for none.
std::size_t schemeBefore(std::u16string_view line, std::size_t colon)
{
    for (const auto scheme : webSchemes) {
        if (scheme.size() > colon)
            continue;
        const auto start = colon - scheme.size();
        const auto isSame = [](char16_t sent, char16_t small) { return (sent | 0x20) == small; };
        if (std::equal(scheme.begin(), scheme.end(), line.begin() + static_cast<std::ptrdiff_t>(start),
                       [&](char16_t small, char16_t sent) { return isSame(sent, small); }) &&
            (start == 0 || !isAsciiLetterOrDigit(line[start - 1])))
            return start;
    }
    return colon;
}

struct AddressEnd {
    std::size_t end;
    std::size_t scanned; ///< the text before this has been looked at
};

/// An address of which `from` is the first character of the host. It ends before the first bracket that has
/// no partner in it.
AddressEnd addressEnd(std::u16string_view line, std::size_t from)
{
    std::vector<std::size_t> open;
    auto at = from;
    for (auto next = at; next < line.size(); at = next) {
        UChar32 character = 0;
        U16_NEXT(line.data(), next, line.size(), character);
        if (!isInWebAddress(static_cast<char32_t>(character)))
            break;
        if (openingBrackets.find(line[at]) != openingBrackets.npos)
            open.push_back(at);
        const auto closing = closingBrackets.find(line[at]);
        if (closing == closingBrackets.npos)
            continue;
        if (open.empty() || line[open.back()] != openingBrackets[closing])
            break;
        open.pop_back();
    }
    return {open.empty() ? at : open.front(), at};
}

std::size_t withoutSentenceMarks(std::u16string_view line, std::size_t from, std::size_t end)
{
    while (end > from && sentenceMarks.find(line[end - 1]) != sentenceMarks.npos)
        --end;
    return end;
}

} // namespace

void znt::webAddressesIn(std::u16string_view line, std::vector<std::pair<std::size_t, std::size_t>>& found)
{
    found.clear();
    for (auto colon = line.find(afterScheme); colon != line.npos;) {
        const auto start = schemeBefore(line, colon);
        const auto host = colon + afterScheme.size();
        const auto [end, scanned] = start == colon ? AddressEnd{host, host} : addressEnd(line, host);
        if (const auto last = withoutSentenceMarks(line, host, end);
            last > host && last - start <= longestWebAddress && canBeginHost(line[host]))
            found.emplace_back(start, last);
        colon = line.find(afterScheme, scanned);
    }
}

std::vector<std::u16string> znt::newestWebAddresses(const ZNTOutputStore& store, std::int64_t lines)
{
    std::vector<std::u16string> all;
    std::set<std::u16string, std::less<>> known;
    std::vector<std::pair<std::size_t, std::size_t>> inLine;
    const auto first = std::max(store.firstLine(), store.endLine() - lines);
    for (auto number = store.endLine() - 1; number >= first; --number) {
        const auto text = store.line(number).text;
        webAddressesIn(text, inLine);
        for (auto each = inLine.rbegin(); each != inLine.rend(); ++each) {
            const auto address = text.substr(each->first, each->second - each->first);
            if (known.emplace(address).second)
                all.emplace_back(address);
        }
    }
    return all;
}
