#include "ZNTDemoOutput.h"

#include <array>
#include <zlib.h>

struct ZNTDemoOutput::Stream {
    z_stream zlib{};

    Stream() { deflateInit(&zlib, Z_DEFAULT_COMPRESSION); }
    ~Stream() { deflateEnd(&zlib); }
    Stream(const Stream&) = delete;
    Stream& operator=(const Stream&) = delete;
};

ZNTDemoOutput::ZNTDemoOutput() = default;
ZNTDemoOutput::~ZNTDemoOutput() = default;

void ZNTDemoOutput::write(std::string_view bytes)
{
    if (isCompressing())
        deflateInto(bytes, Z_SYNC_FLUSH);
    else
        queue += bytes;
}

void ZNTDemoOutput::startCompression()
{
    if (!isCompressing())
        stream = std::make_unique<Stream>();
}

void ZNTDemoOutput::startCompressionVisibly()
{
    startCompression();
    deflateInto({}, Z_SYNC_FLUSH);
}

void ZNTDemoOutput::endCompression()
{
    if (isCompressing())
        deflateInto({}, Z_FINISH);
    stream.reset();
}

void ZNTDemoOutput::dropCompression() { stream.reset(); }

void ZNTDemoOutput::consume(std::size_t count)
{
    taken += count;
    if (taken == queue.size()) {
        queue.clear();
        taken = 0;
    } else if (taken > queue.size() / 2) { // the front is given back before it outweighs the rest
        queue.erase(0, taken);
        taken = 0;
    }
}

void ZNTDemoOutput::deflateInto(std::string_view bytes, int flush)
{
    auto& zlib = stream->zlib;
    // zlib reads from a pointer to non-const for the sake of old compilers only.
    zlib.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(bytes.data()));
    zlib.avail_in = static_cast<uInt>(bytes.size());
    std::array<char, 16384> block{};
    do {
        zlib.next_out = reinterpret_cast<Bytef*>(block.data());
        zlib.avail_out = static_cast<uInt>(block.size());
        deflate(&zlib, flush);
        queue.append(block.data(), block.size() - zlib.avail_out);
    } while (zlib.avail_out == 0); // a block filled to its end may not be the last
}
