#include "ZNTInflater.h"

#include <algorithm>
#include <cstdlib>
#include <zlib.h>

namespace
{

/// zlib leaves parts of its memory as it gets it. Zeros make every run the same.
void* zeroFilled(void*, unsigned items, unsigned size) { return std::calloc(items, size); }
void release(void*, void* memory) { std::free(memory); }

} // namespace

ZNTInflater::ZNTInflater() : mccp2(std::make_unique<z_stream>()) {}

ZNTInflater::~ZNTInflater() { endStream(); }

void ZNTInflater::startStream()
{
    endStream();
    *mccp2 = {};
    mccp2->zalloc = zeroFilled;
    mccp2->zfree = release;
    mccp2->data_type = 1;
    isStarted = inflateInit(mccp2.get()) == Z_OK;
}

void ZNTInflater::endStream()
{
    if (isStarted)
        inflateEnd(mccp2.get());
    isStarted = false;
}

ZNTInflater::Block ZNTInflater::anotherInflate(std::string_view compressed)
{
    if (compressed.empty())
        return {};
    Block result;
    result.bytes.resize(4 * compressed.size());
    if (!isStarted) {
        result.outcome = Outcome::Failed;
        return result;
    }
    mccp2->next_in = reinterpret_cast<Bytef*>(const_cast<char*>(compressed.data())); // zlib reads it only
    mccp2->avail_in = static_cast<uInt>(compressed.size());
    mccp2->total_out = 0;
    result.outcome = inflateInto(result.bytes, compressed.size());
    mccp2->total_out = mccp2->total_in = 0;
    mccp2->next_in = nullptr;
    mccp2->avail_in = mccp2->avail_out = 0;
    if (result.outcome != Outcome::GoesOn)
        endStream();
    return result;
}

ZNTInflater::Outcome ZNTInflater::inflateInto(std::string& block, std::size_t inputSize)
{
    for (;;) {
        while (mccp2->total_out >= block.size())
            block.resize(block.size() + 2 * inputSize);
        mccp2->next_out = reinterpret_cast<Bytef*>(block.data()) + mccp2->total_out;
        mccp2->avail_out = static_cast<uInt>(block.size() - mccp2->total_out);
        switch (inflate(mccp2.get(), Z_SYNC_FLUSH)) {
        case Z_STREAM_END:
            return Outcome::Ended;
        case Z_OK:
            if (mccp2->avail_out > 0)
                return Outcome::GoesOn;
            if (mccp2->total_out > mostInflated)
                return Outcome::Failed;
            if (mccp2->total_out >= block.size())
                block.resize(block.size() + inputSize); // the capacity doubles, so few of these copy
            break;
        case Z_BUF_ERROR: // all input was used by the time the block was full
            while (mccp2->total_out >= block.size())
                block.resize(block.size() + std::max<std::size_t>(inputSize / 2, 1));
            return Outcome::GoesOn;
        default:
            return Outcome::Failed;
        }
    }
}
