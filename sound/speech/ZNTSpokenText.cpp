#include "ZNTSpokenText.h"

#include "ZNTTextBreaks.h"

#include <algorithm>
#include <unicode/uchar.h>
#include <unicode/utf16.h>

namespace
{

/// Units after the longest utterance that ICU also sees, so that it knows whether a boundary lies at its end.
constexpr std::size_t contextBehind = 64;

std::size_t lastBoundary(UBreakIteratorType type, std::u16string_view text, std::size_t most)
{
    const auto breaks = znt::breaksOf(type, text.substr(0, most + contextBehind));
    if (!breaks)
        return 0;
    const auto boundary = ubrk_preceding(breaks.get(), static_cast<std::int32_t>(most) + 1);
    return boundary == UBRK_DONE ? 0 : static_cast<std::size_t>(boundary);
}

enum class Speakable { Yes, AsBlank, No };

Speakable speakable(UChar32 character)
{
    switch (u_charType(character)) {
    case U_LINE_SEPARATOR:
    case U_PARAGRAPH_SEPARATOR:
        return Speakable::AsBlank;
    case U_CONTROL_CHAR:
        return u_isUWhiteSpace(character) ? Speakable::AsBlank : Speakable::No;
    case U_PRIVATE_USE_CHAR:
    case U_SURROGATE:
    case U_UNASSIGNED:
        return Speakable::No;
    default:
        return Speakable::Yes;
    }
}

} // namespace

namespace znt
{

std::size_t wordCount(std::u16string_view text)
{
    const auto breaks = breaksOf(UBRK_WORD, text);
    std::size_t words = 0;
    if (breaks)
        while (ubrk_next(breaks.get()) != UBRK_DONE)
            words += ubrk_getRuleStatus(breaks.get()) >= UBRK_WORD_NONE_LIMIT ? 1 : 0;
    return words;
}

std::size_t utteranceLength(std::u16string_view text, std::size_t most)
{
    if (text.size() <= most)
        return text.size();
    // A place where a line may be wrapped is the end of a word together with its punctuation.
    for (const auto type : {UBRK_SENTENCE, UBRK_LINE, UBRK_CHARACTER})
        if (const auto length = lastBoundary(type, text, most); length > 0)
            return length;
    const bool splitsPair = U16_IS_LEAD(text[most - 1]) && U16_IS_TRAIL(text[most]);
    return splitsPair && most > 1 ? most - 1 : most;
}

std::u16string speakableText(std::u16string_view text)
{
    std::u16string result;
    result.reserve(text.size());
    bool isInBlank = false;
    for (std::size_t at = 0; at < text.size();) {
        const auto start = at;
        UChar32 character;
        U16_NEXT(text.data(), at, text.size(), character);
        const auto kind = speakable(character);
        if (kind == Speakable::Yes)
            result += text.substr(start, at - start);
        else if (kind == Speakable::AsBlank && !isInBlank)
            result += u' ';
        if (kind != Speakable::No)
            isInBlank = kind == Speakable::AsBlank;
    }
    return result;
}

} // namespace znt
