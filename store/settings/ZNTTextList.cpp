#include "ZNTTextList.h"

#include "ZNTText.h"

#include <algorithm>

namespace
{

constexpr char separator = ';', escape = '\\';

bool isBlank(char unit) { return unit == ' ' || unit == '\t'; }

/// The file is XML, which holds no control characters; bytes that are no UTF-8 would damage it, too.
bool canBeKept(std::string_view text)
{
    const bool hasControls = std::ranges::any_of(text, [](char unit) {
        return (static_cast<unsigned char>(unit) < 0x20 && unit != '\t') || unit == 0x7F;
    });
    return !hasControls && text.size() <= znt::longestTextOfList &&
           znt::utf8FromText(znt::textFromUtf8(text)) == text;
}

/// Whether a backslash before `next` would be read as an escape.
bool needsEscape(std::string_view next) { return next.empty() || next[0] == separator || next[0] == escape; }

} // namespace

namespace znt
{

std::string joinedTexts(const ZNTTextList& list)
{
    std::string joined;
    for (const auto& text : list) {
        if (!joined.empty())
            joined += "; ";
        for (std::size_t at = 0; at < text.size(); ++at) {
            if (text[at] == separator ||
                (text[at] == escape && needsEscape(std::string_view(text).substr(at + 1))))
                joined += escape;
            joined += text[at];
        }
    }
    return joined;
}

std::optional<ZNTTextList> textsIn(std::string_view joined)
{
    std::vector<std::string> texts(1);
    for (std::size_t at = 0; at < joined.size(); ++at) {
        const bool isEscaped =
            joined[at] == escape && at + 1 < joined.size() && needsEscape(joined.substr(at + 1));
        if (isEscaped)
            texts.back() += joined[++at];
        else if (joined[at] == separator || joined[at] == '\n' || joined[at] == '\r')
            texts.emplace_back();
        else
            texts.back() += joined[at];
    }
    return listOfTexts(texts);
}

std::optional<ZNTTextList> listOfTexts(const std::vector<std::string>& texts)
{
    ZNTTextList list;
    for (const auto& text : texts) {
        const auto kept = znt::trimmedOf(std::string_view(text), isBlank);
        if (kept.empty())
            continue;
        if (!canBeKept(kept) || list.size() == mostTextsOfList)
            return std::nullopt;
        list.emplace_back(kept);
    }
    return list;
}

} // namespace znt
