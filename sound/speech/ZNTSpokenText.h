#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// Prepares a game's text for a voice.
namespace znt
{

/// The most UTF-16 units that are given to a voice at once. Longer texts make stops slow and fill a screen
/// reader's history with pages.
inline constexpr std::size_t longestUtterance = 1000;

/// The number of words by the rules of Unicode (UAX 29), of no particular language.
std::size_t wordCount(std::u16string_view text);

/// The length of the first utterance of `text`: all of it if it has at most `most` units, else up to the last
/// end of a sentence or line among them, else of a word, else of a character. Zero only for empty text.
std::size_t utteranceLength(std::u16string_view text, std::size_t most = longestUtterance);

/// The text for a voice: control, private-use and unassigned characters and unpaired surrogates are dropped;
/// a run of tabs and line ends becomes one blank.
std::u16string speakableText(std::u16string_view text);

} // namespace znt
