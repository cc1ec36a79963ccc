#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Hand-written scanners for four fixed expressions over escape sequences. Offsets are UTF-16 units.
namespace znt
{

/// Applies, one after the other over the whole text:
///   "\e.(\d{1,1};\d{1,2};\d{1,2}m)" becomes ESC "[0m"  (three numbers, the first of one digit: a reset)
///   "\e.(\d{1,2};\d{1,2};\d{1,2}m)" becomes ESC "[1m"  (three numbers, the first of two digits: bold)
///   ESC "[m" is removed.
void normaliseSequences(std::u16string& text);

/// One match of "\e.(\d{1,2};)??(\d{1,2}m)".
struct SgrMatch {
    std::size_t start = 0;
    std::size_t firstGroup = 0;       ///< start of the optional group; meaningful if its length is not 0
    std::size_t firstGroupLength = 0; ///< with its ";"
    std::size_t secondGroup = 0;
    std::size_t secondGroupLength = 0; ///< with its "m"
    [[nodiscard]] std::size_t end() const { return secondGroup + secondGroupLength; }
};

/// The match that starts exactly at `start`, where `text` holds an ESC.
std::optional<SgrMatch> sgrMatchAt(std::u16string_view text, std::size_t start);

} // namespace znt
