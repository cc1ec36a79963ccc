#pragma once

#include <cstddef>
#include <string_view>
#include <utility>
#include <vector>

/// Where text may be divided for a reader (Unicode Standard Annex #29), Chinese into its words. For single
/// lines, but for `wordsIn`: each call looks at its text afresh.
namespace znt
{

enum class BreakKind { Character, Word, Sentence };

/// The piece that `offset`, inside `text`, belongs to: [first, second). Blanks and punctuation between words
/// are pieces of their own.
std::pair<std::size_t, std::size_t> pieceAround(std::u16string_view text, std::size_t offset, BreakKind kind);

/// The first beginning of a word after `offset`, or the end of `text`.
std::size_t nextWordStart(std::u16string_view text, std::size_t offset);
/// The last beginning of a word before `offset`, or 0.
std::size_t previousWordStart(std::u16string_view text, std::size_t offset);

/// Replaces `found` by the words in `text`, as offsets from its beginning: [first, second). Numbers are
/// words.
void wordsIn(std::u16string_view text, std::vector<std::pair<std::size_t, std::size_t>>& found);
/// Where the word begins that ends with `text`; the end of `text` if it ends with no word.
std::size_t startOfLastWord(std::u16string_view text);

} // namespace znt
