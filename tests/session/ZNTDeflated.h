#pragma once

#include <string>
#include <string_view>
#include <zlib.h>

/// `plain` as a zlib stream (RFC 1950), ended, or with Z_SYNC_FLUSH up to a point from where it could go on.
inline std::string deflated(std::string_view plain, int flush = Z_FINISH)
{
    z_stream stream{};
    deflateInit(&stream, Z_BEST_COMPRESSION);
    std::string bytes(deflateBound(&stream, plain.size()) + 64, '\0');
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(plain.data()));
    stream.avail_in = static_cast<uInt>(plain.size());
    stream.next_out = reinterpret_cast<Bytef*>(bytes.data());
    stream.avail_out = static_cast<uInt>(bytes.size());
    deflate(&stream, flush);
    bytes.resize(stream.total_out);
    deflateEnd(&stream);
    return bytes;
}
