#include "ZNTSgrScanner.h"

#include "ZNTEscapeSequence.h"
#include "ZNTTextCutter.h"
#include "ZNTTextScan.h"

#include <unicode/uchar.h>
#include <unicode/utf16.h>

namespace
{

/// Reads the parts of a sequence one after the other. A read that fails leaves the position unchanged.
///
/// Reading forward once gives ICU's answer: after "\d{1,2}" comes ";" or "m", which is no digit, so taking
/// fewer digits never helps and no step has to be taken back.
class Reader
{
public:
    Reader(std::u16string_view text, std::size_t at) : text(text), at(at) {}

    /// "." : any character but a line terminator; a surrogate pair is one character.
    bool readAnyCharacter()
    {
        if (at >= text.size())
            return false;
        std::size_t next = at;
        UChar32 character;
        U16_NEXT(text.data(), next, text.size(), character);
        if (znt::isLineTerminator(static_cast<char32_t>(character)))
            return false;
        at = next;
        return true;
    }

    /// "\d{1,most}", as many as there are.
    bool readDigits(int most)
    {
        int read = 0;
        while (read < most && readDigit())
            ++read;
        return read > 0;
    }

    bool readUnit(char16_t wanted)
    {
        if (at >= text.size() || text[at] != wanted)
            return false;
        ++at;
        return true;
    }

    [[nodiscard]] std::size_t position() const { return at; }

private:
    bool readDigit()
    {
        if (at >= text.size())
            return false;
        if (text[at] < 0x80) {
            if (text[at] < u'0' || text[at] > u'9')
                return false;
            ++at;
            return true;
        }
        std::size_t next = at;
        UChar32 character;
        U16_NEXT(text.data(), next, text.size(), character);
        if (u_charType(character) != U_DECIMAL_DIGIT_NUMBER)
            return false;
        at = next;
        return true;
    }

    std::u16string_view text;
    std::size_t at;
};

/// The end of a match of "\e.\d{1,most};\d{1,2};\d{1,2}m" at `start`, or 0.
std::size_t threeNumbersEnd(std::u16string_view text, std::size_t start, int mostFirstDigits)
{
    Reader reader(text, start + 1);
    const bool matches = reader.readAnyCharacter() && reader.readDigits(mostFirstDigits) &&
                         reader.readUnit(u';') && reader.readDigits(2) && reader.readUnit(u';') &&
                         reader.readDigits(2) && reader.readUnit(u'm');
    return matches ? reader.position() : 0;
}

/// The end of ESC "[m" at `start`, or 0.
std::size_t bareResetEnd(std::u16string_view text, std::size_t start)
{
    return text.substr(start + 1, 2) == u"[m" ? start + 3 : 0;
}

/// Replaces every match that starts at an ESC by `replacement`, which is never longer than a match, in place.
template <typename MatchEnd>
void replaceMatches(std::u16string& text, MatchEnd matchEnd, std::u16string_view replacement)
{
    ZNTTextCutter cutter(text);
    for (std::size_t start = 0; (start = znt::findUnit(text, znt::escape, start)) != std::u16string::npos;) {
        const std::size_t end = matchEnd(std::u16string_view(text), start);
        if (end == 0) {
            ++start;
            continue;
        }
        cutter.cut(start, end, replacement);
        start = end;
    }
    cutter.finish();
}

} // namespace

namespace znt
{

void normaliseSequences(std::u16string& text)
{
    if (findUnit(text, znt::escape) == text.npos)
        return;
    // Three passes, because each expression also sees what the one before it has written.
    replaceMatches(
        text, [](auto whole, auto start) { return threeNumbersEnd(whole, start, 1); }, u"\x1b[0m");
    replaceMatches(
        text, [](auto whole, auto start) { return threeNumbersEnd(whole, start, 2); }, u"\x1b[1m");
    replaceMatches(text, bareResetEnd, u"");
}

std::optional<SgrMatch> sgrMatchAt(std::u16string_view text, std::size_t start)
{
    Reader reader(text, start + 1);
    if (!reader.readAnyCharacter())
        return std::nullopt;
    SgrMatch match;
    match.start = start;
    match.secondGroup = reader.position();
    if (!reader.readDigits(2))
        return std::nullopt;
    if (reader.readUnit(u';')) {
        match.firstGroup = match.secondGroup;
        match.firstGroupLength = reader.position() - match.firstGroup;
        match.secondGroup = reader.position();
        if (!reader.readDigits(2))
            return std::nullopt;
    }
    if (!reader.readUnit(u'm'))
        return std::nullopt;
    match.secondGroupLength = reader.position() - match.secondGroup;
    return match;
}

} // namespace znt
