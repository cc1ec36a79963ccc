#include "ZNTCharsetNegotiation.h"

#include "ZNTTelnetCodes.h"
#include "ZNTTelnetMessages.h"

#include <algorithm>
#include <utility>

namespace
{

namespace codes = znt::telnet::charset;

using OnlyEncoding = std::optional<ZNTStringEncoding>;

std::string charsetMessage(unsigned char code, std::string_view content)
{
    std::string message(1, static_cast<char>(code));
    message += content;
    return znt::telnet::subnegotiation(znt::telnet::option::Charset, message);
}

constexpr char capital(char letter)
{
    return letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 'a' + 'A') : letter;
}

/// None if the program lacks the encoding, or may not take it.
OnlyEncoding encodingOfCharset(std::string_view name, OnlyEncoding only)
{
    const auto* found = std::ranges::find_if(ZNTCharsetNames, [&](const auto& row) {
        return (!only || row.encoding == *only) && std::ranges::equal(row.name, name, {}, {}, capital);
    });
    return found == ZNTCharsetNames.end() ? std::nullopt : OnlyEncoding(found->encoding);
}

/// Takes away the offer of a translation table and its version, a byte that no separator has.
std::string_view withoutTableOffer(std::string_view list)
{
    constexpr std::string_view offer = "[TTABLE ]";
    if (!list.starts_with(offer))
        return list;
    list.remove_prefix(offer.size());
    if (!list.empty() && static_cast<unsigned char>(list.front()) < ' ')
        list.remove_prefix(1);
    return list;
}

struct CharsetChoice {
    std::string_view name; ///< as the list writes it
    ZNTStringEncoding encoding;
};

/// `list` is a separator, and names between which it stands.
std::optional<CharsetChoice> choiceFrom(std::string_view list, OnlyEncoding only)
{
    std::optional<CharsetChoice> first;
    while (!list.empty()) {
        const char separator = list.front();
        list.remove_prefix(1);
        const auto name = list.substr(0, list.find(separator));
        list.remove_prefix(name.size());
        const auto encoding = encodingOfCharset(name, only);
        if (encoding == ZNTStringEncoding::Utf8)
            return CharsetChoice{name, *encoding};
        if (encoding && !first)
            first = CharsetChoice{name, *encoding};
    }
    return first;
}

} // namespace

std::string ZNTCharsetNegotiation::request(std::optional<ZNTStringEncoding> only)
{
    std::string list;
    for (const auto& row : ZNTCharsetNames)
        if (row.isOffered && (!only || row.encoding == *only))
            list.append(";").append(row.name);
    isRequestOut = true;
    return charsetMessage(codes::Request, list);
}

ZNTCharsetNegotiation::Result ZNTCharsetNegotiation::receive(std::string_view content,
                                                             std::optional<ZNTStringEncoding> only)
{
    if (content.empty() || answers >= mostAnswers)
        return {};
    ++answers;
    const auto rest = content.substr(1);
    switch (static_cast<unsigned char>(content.front())) {
    case codes::Request:
        return answerRequest(withoutTableOffer(rest), only);
    case codes::Accepted:
        return {.reply = {},
                .agreed = std::exchange(isRequestOut, false) ? encodingOfCharset(rest, only) : std::nullopt};
    case codes::Rejected:
        isRequestOut = false;
        return {};
    case codes::TableIs:
        return {.reply = charsetMessage(codes::TableRejected, {}), .agreed = {}};
    default:
        return {};
    }
}

ZNTCharsetNegotiation::Result ZNTCharsetNegotiation::answerRequest(std::string_view list,
                                                                   std::optional<ZNTStringEncoding> only)
{
    const auto choice = choiceFrom(list, only);
    if (!choice)
        return {.reply = charsetMessage(codes::Rejected, {}), .agreed = {}};
    return {.reply = charsetMessage(codes::Accepted, choice->name), .agreed = choice->encoding};
}
