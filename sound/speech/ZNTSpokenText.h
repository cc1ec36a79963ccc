#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// What becomes of a game's text on its way to a voice.
namespace znt
{

/// The most UTF-16 units that are given to a voice at once: more and a stop, a voice's own queue or a
/// reader's history would have to deal with pages.
inline constexpr std::size_t longestUtterance = 1000;

/// The number of words by the rules of Unicode (UAX 29), of no particular language.
std::size_t wordCount(std::u16string_view text);

/// How much of `text` is to be spoken first: all of it where it has no more than `most` units, else up to
/// the last end of a sentence or line among them, else of a word, else of a character. Zero only for empty
/// text.
std::size_t utteranceLength(std::u16string_view text, std::size_t most = longestUtterance);

/// Without what no voice should be handed: control, private-use and unassigned characters and unpaired
/// surrogates are dropped; a run of tabs and line ends becomes one blank.
std::u16string speakableText(std::u16string_view text);

} // namespace znt
