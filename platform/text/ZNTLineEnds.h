#pragma once

/// Reads the line ends of received text for a view: CR LF, LF CR, LF and CR are each one line break, also
/// when the two characters of a pair come in different pieces of text. One object for each view.
class ZNTLineEnds
{
public:
    enum class Meaning {
        Character, ///< shown as it is
        LineBreak,
        Nothing ///< the second half of a pair, or a control character, which is not shown
    };

    Meaning meaningOf(char16_t unit)
    {
        if (unit >= 0x20 && (unit < 0x7F || unit > 0x9F)) {
            halfOfPair = 0;
            return Meaning::Character;
        }
        if (unit == u'\n' || unit == u'\r') {
            const bool completesPair = halfOfPair != 0 && halfOfPair != unit;
            halfOfPair = completesPair ? char16_t{0} : unit;
            return completesPair ? Meaning::Nothing : Meaning::LineBreak;
        }
        if (unit == u'\t') {
            halfOfPair = 0;
            return Meaning::Character;
        }
        return Meaning::Nothing; // a NUL between CR and LF does not part them
    }

private:
    char16_t halfOfPair = 0; ///< the line end read last, if the other one would belong to it
};
