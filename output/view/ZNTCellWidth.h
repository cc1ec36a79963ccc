#pragma once

#include <cstddef>
#include <string_view>

/// How many columns of a fixed-width grid characters take (Unicode Standard Annex #11, East Asian Width).
namespace znt
{

/// Characters that Annex #11 calls ambiguous (line drawing, stars, circles) are two columns wide in the
/// terminals of Chinese games, and one column wide everywhere else.
enum class AmbiguousWidth : bool { Narrow, Wide };

constexpr int tabStop = 8; // columns

/// 0 for what joins the character before it (combining marks, joiners), else 1 or 2. A TAB counts 1 here; its
/// real width depends on where it stands in the line.
int cellWidth(char32_t character, AmbiguousWidth ambiguous);

/// A character with the marks that follow it. It is never divided.
struct Cluster {
    std::size_t length; ///< UTF-16 units, at least 1
    int width;          ///< columns
};

/// The cluster that starts at `offset`, which is inside `text` and not in the middle of a cluster. A
/// surrogate without its partner stands for one character of width 1.
Cluster clusterAt(std::u16string_view text, std::size_t offset, AmbiguousWidth ambiguous);

/// True for units that are a narrow cluster by themselves, if no mark follows. Most text is like that, and
/// this is the quick way through it.
constexpr bool isPlainUnit(char16_t unit) { return unit >= 0x20 && unit < 0x7F; }

} // namespace znt
