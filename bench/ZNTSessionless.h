#pragma once

#include "ZNTBlockDecoder.h"
#include "ZNTParserUtility.h"

#include <string_view>

namespace znt::bench
{

/// Takes `text` the way from bytes to attributed text, in blocks of `blockSize` bytes; each block's outcome
/// goes to `use`.
template <typename Use>
void passThrough(ZNTParserUtility& parser, std::string_view text, std::size_t blockSize, Use use)
{
    for (std::size_t at = 0; at < text.size(); at += blockSize) {
        auto decoded = textOfBlock(text.substr(at, blockSize), ZNTStringEncoding::Ascii);
        static_cast<void>(parser.processServerCommands(decoded));
        use(parser.processIncomingStream(std::move(decoded)));
    }
}

} // namespace znt::bench
