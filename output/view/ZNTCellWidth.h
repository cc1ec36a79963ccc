#pragma once

#include <cstddef>
#include <string_view>

/// How many columns of a fixed-width grid characters take (Unicode Standard Annex #11, East Asian Width).
namespace znt
{

/// Characters that Annex #11 calls ambiguous (line drawing, stars, circles) are drawn two columns wide by
/// the Chinese games' own terminals and one wide everywhere else.
enum class AmbiguousWidth : bool { Narrow, Wide };

constexpr int tabStop = 8; // columns

/// 0 for what joins the character before it (combining marks, joiners), else 1 or 2. A TAB counts 1 here;
/// whoever lays out a line knows where the next stop is.
int cellWidth(char32_t character, AmbiguousWidth ambiguous);

/// What the grid moves as one: a character with the marks that follow it.
struct Cluster {
    std::size_t length; ///< UTF-16 units, at least 1
    int width;          ///< columns
};

/// The cluster that starts at `offset`, which is inside `text` and not in the middle of a cluster. A
/// surrogate without its partner stands for one character of width 1.
Cluster clusterAt(std::u16string_view text, std::size_t offset, AmbiguousWidth ambiguous);

/// True for units that are a narrow cluster by themselves unless a mark follows: the quick way through most
/// text.
constexpr bool isPlainUnit(char16_t unit) { return unit >= 0x20 && unit < 0x7F; }

} // namespace znt
