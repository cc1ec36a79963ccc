#pragma once

#include <cstddef>
#include <string_view>

namespace znt
{

inline constexpr char16_t escape = 0x1B; ///< ESC, which begins every sequence

/// An escape sequence of ECMA-48: a control sequence (ESC "["), a control string (ESC "]", "P", "X", "^" or
/// "_", until ST, that is ESC "\"; the first of them also until BEL), or ESC with a final character. Only ESC
/// introduces one. The 8-bit introducers are letters in the encodings of games.
///
/// A line end interrupts a sequence, and so does whatever cannot stand in it. The interrupted part is a
/// sequence without an effect, and what interrupts is not part of it. Control characters inside a sequence
/// are passed over, as terminals do.
struct EscapeSequence {
    enum class Kind {
        Unfinished, ///< the text ends before it
        Ignored,    ///< taken out, and nothing else
        Control     ///< a control sequence of the standard kind: neither private nor with intermediates
    };
    Kind kind = Kind::Ignored;
    std::size_t end = 0; ///< behind its last unit, counted in the text
    std::u16string_view
        parameters;     ///< of a control sequence: digits, ";", ":"; control characters are possible
    char16_t final = 0; ///< of a control sequence
};

/// Past this many UTF-16 units a sequence ends without effect, so that a game that never ends one loses no
/// more text than this.
inline constexpr std::size_t longestSequence = 4096;

/// The sequence at `start`, where `text` holds an ESC. Looks at `longestSequence` units at most.
EscapeSequence escapeSequenceAt(std::u16string_view text, std::size_t start);

} // namespace znt
