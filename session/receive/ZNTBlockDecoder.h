#pragma once

#include "ZNTStringEncoding.h"

#include <string>
#include <string_view>

namespace znt
{

/// The text of one received block, whatever its bytes. One ill-formed character makes strict decoding fail,
/// mostly a Chinese character that the block's end cuts in two. Then the first of these that decodes is
/// taken:
///
/// 1. the block without its last 2 bytes;
/// 2. if it has 9 bytes or more: without the last 2 bytes, and without 4 bytes at the front, or 8, or 12 ...;
/// 3. if it has 15 bytes or more: without the last 3 bytes, and without 4, 8, 12 ... bytes at the front;
/// 4. the whole block, each byte as the character of its value.
///
/// After 2 and 3, white space and line ends around the text go, too; if nothing is left, the next one counts.
///
/// Kept quirks: 2 and 3 cut at least 4 bytes at the front, even if that would not be needed. The NULs behind
/// an inflated block decode, so a cut character there can cost the whole text of the block.
///
/// Linear in the block, also if thousands of beginnings fail.
std::u16string textOfBlock(std::string_view bytes, ZNTStringEncoding encoding);

} // namespace znt
