#pragma once

#include "ZNTStringEncoding.h"

#include <string>
#include <string_view>

namespace znt
{

/// The text of one received block, whatever its bytes. A Chinese character that the block's end cuts in two
/// makes strict decoding fail; then what can be read is recovered, giving up some characters at the ends:
/// without the last 2 bytes; else, from 9 bytes on, without them and the fewest multiple of 4 bytes at the
/// front; else, from 15 bytes on, the same without the last 3 bytes; else the whole block as ASCII. What was
/// cut at the front comes back without white space and line ends around it.
///
/// Linear in the block, also where thousands of beginnings fail.
std::u16string textOfBlock(std::string_view bytes, ZNTStringEncoding encoding);

} // namespace znt
