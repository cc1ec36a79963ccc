#pragma once

#include "ZNTTextDecoder.h"

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
/// UTF-8 knows no such cuts: what is ill-formed or cut off is U+FFFD.
///
/// Linear in the block, also if thousands of beginnings fail.
std::u16string textOfBlock(std::string_view bytes, ZNTStringEncoding encoding);

} // namespace znt

/// The text of a connection's blocks, one after another, for a receiver that looks for telnet in the text.
/// Each block is read by itself, as `znt::textOfBlock` does. In UTF-8, however, a character that two blocks
/// share waits for its end; it is the only thing that waits.
///
/// UTF-8 lets telnet's bytes through as the Chinese encodings do. An IAC cuts a character off. A "ÿ" of
/// the text would look like IAC and take two characters along, so it is given out as "y" and U+0308, which
/// look the same. NULs at a block's end are the inflater's; a character that waits goes on behind them.
class ZNTBlockDecoder
{
public:
    /// Begins a new connection.
    void startStream() { utf8.reset(); }
    /// `encoding` may differ from that of the block before.
    std::u16string textOfBlock(std::string_view bytes, ZNTStringEncoding encoding);

private:
    ZNTTextDecoder utf8{ZNTStringEncoding::Utf8};
};
