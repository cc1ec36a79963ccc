#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

class ZNTOutputStore;

/// Finds web addresses (http and https, RFC 3986) in the text of games. Time is linear in the text, whatever
/// the text.
///
/// An address ends before a character that is in no address, such as a blank, a quotation mark or full-width
/// punctuation. Punctuation at its end belongs to the sentence around it, and so does a bracket that has no
/// partner in the address. Letters of other scripts may be in it, but no Chinese ones: Chinese sentences go
/// on without a blank.
namespace znt
{

/// UTF-16 units. What is longer is no address.
inline constexpr std::size_t longestWebAddress = 2048;

/// Replaces `found` by the addresses in `line`, as offsets from its beginning: [first, second).
void webAddressesIn(std::u16string_view line, std::vector<std::pair<std::size_t, std::size_t>>& found);

/// The addresses in the last lines of the store, the newest first and each one once.
std::vector<std::u16string> newestWebAddresses(const ZNTOutputStore& store, std::int64_t lines);

} // namespace znt
