#include "ZNTEscapeSequence.h"

namespace
{

using znt::EscapeSequence;
using Kind = EscapeSequence::Kind;

constexpr char16_t bell = 0x07, cancel = 0x18, substitute = 0x1A;

constexpr bool isWithin(char16_t unit, char16_t first, char16_t last)
{
    return unit >= first && unit <= last;
}
constexpr bool isIntermediate(char16_t unit) { return isWithin(unit, 0x20, 0x2F); }
constexpr bool interrupts(char16_t unit)
{
    return unit == u'\n' || unit == u'\r' || unit == cancel || unit == substitute || unit == znt::escape;
}
/// Control characters that a terminal carries out without leaving the sequence. None of them is shown.
constexpr bool isPassedOver(char16_t unit) { return (unit < 0x20 && !interrupts(unit)) || unit == 0x7F; }

/// Reads one sequence. `text` begins with its ESC and ends where the sequence would be too long.
class SequenceReader
{
public:
    explicit SequenceReader(std::u16string_view text) : text(text) {}

    EscapeSequence read()
    {
        passWhile(&isPassedOver);
        if (isAtEnd())
            return cutOff();
        switch (text[at]) {
        case u'[':
            return readControlSequence();
        case u']':
            return readString(bell);
        case u'P': // DCS
        case u'X': // SOS
        case u'^': // PM
        case u'_': // APC
            return readString(znt::escape);
        default:
            break;
        }
        passWhile([](char16_t unit) { return isIntermediate(unit) || isPassedOver(unit); });
        return isAtEnd() ? cutOff() : ignoredUntil(isWithin(text[at], 0x30, 0x7E) ? at + 1 : at);
    }

private:
    template <typename Belongs>
    void passWhile(Belongs belongs)
    {
        while (at < text.size() && belongs(text[at]))
            ++at;
    }
    [[nodiscard]] bool isAtEnd() const { return at == text.size(); }
    static EscapeSequence ignoredUntil(std::size_t end) { return {Kind::Ignored, end, {}, 0}; }
    /// The text ends, or the sequence is as long as it may be.
    [[nodiscard]] EscapeSequence cutOff() const
    {
        return {text.size() < znt::longestSequence ? Kind::Unfinished : Kind::Ignored, text.size(), {}, 0};
    }

    EscapeSequence readControlSequence()
    {
        const auto first = ++at;
        passWhile([](char16_t unit) { return isWithin(unit, u'0', u'?') || isPassedOver(unit); });
        const auto parameters = text.substr(first, at - first);
        // Parameters behind an intermediate are a mistake. Terminals wait for the final character then, too.
        const auto behind = at;
        passWhile([](char16_t unit) { return isWithin(unit, 0x20, 0x3F) || isPassedOver(unit); });
        if (isAtEnd())
            return cutOff();
        if (!isWithin(text[at], 0x40, 0x7E))
            return ignoredUntil(at);
        const bool isPrivate = !parameters.empty() && isWithin(parameters.front(), u'<', u'?');
        const auto kind = at != behind || isPrivate ? Kind::Ignored : Kind::Control;
        return {kind, at + 1, parameters, text[at]};
    }

    /// `otherEnd` ends the string besides ST.
    EscapeSequence readString(char16_t otherEnd)
    {
        ++at;
        passWhile([otherEnd](char16_t unit) { return !interrupts(unit) && unit != otherEnd; });
        if (isAtEnd())
            return cutOff();
        if (text[at] == bell)
            return ignoredUntil(at + 1);
        if (text[at] != znt::escape)
            return ignoredUntil(at);
        if (at + 1 == text.size() && text.size() < znt::longestSequence)
            return cutOff(); // the next character decides whether this ESC begins an ST
        return ignoredUntil(text.substr(at + 1, 1) == u"\\" ? at + 2 : at);
    }

    std::u16string_view text;
    std::size_t at = 1;
};

} // namespace

znt::EscapeSequence znt::escapeSequenceAt(std::u16string_view text, std::size_t start)
{
    auto sequence = SequenceReader(text.substr(start, longestSequence)).read();
    sequence.end += start;
    return sequence;
}
