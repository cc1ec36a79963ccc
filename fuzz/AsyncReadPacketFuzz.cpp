#include "AsyncSocketPackets.h"
#include "FuzzInput.h"

#include <algorithm>
#include <memory>
#include <string>

namespace
{

/// One step of a read: from what was read ahead, or as much from `stream` as the fuzzer says.
AsyncReadState step(AsyncReadPacket& read, AsyncSocketPreBuffer& ahead, FuzzInput& slices,
                    std::string_view& stream, bool isPreBuffering)
{
    if (!ahead.empty())
        return read.takeFromPreBuffer(ahead);
    const auto available = std::min<std::size_t>(slices.byte() % 16 + 1, stream.size());
    const auto count = std::min(read.bytesToAskFor(available, isPreBuffering), stream.size());
    require(count > 0, "a read asks for at least one byte");
    std::copy_n(stream.begin(), count, read.roomFor(count));
    stream.remove_prefix(count);
    return read.tookFromNetwork(count, ahead, isPreBuffering);
}

} // namespace

/// However the bytes are cut, the lines are those that a plain search finds, and no byte is lost or doubled.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FuzzInput input(data, size);
    const bool isPreBuffering = input.byte() % 2 == 0;
    const std::string term(input.take(input.byte() % 4 + 1));
    if (term.empty())
        return 0;
    FuzzInput slices(data, size);
    const auto all = input.rest();
    auto stream = all;
    AsyncSocketPreBuffer ahead;
    std::size_t consumed = 0;
    for (;;) {
        AsyncReadPacket read;
        read.buffer = std::make_shared<std::string>();
        read.term = term;
        auto state = AsyncReadState::Unfinished;
        while (state == AsyncReadState::Unfinished && !(stream.empty() && ahead.empty()))
            state = step(read, ahead, slices, stream, isPreBuffering);
        const auto found = all.find(term, consumed);
        const auto end = found == std::string_view::npos ? all.size() : found + term.size();
        require((state == AsyncReadState::Done) == (found != std::string_view::npos),
                "a read ends behind a terminator, and only there");
        require(read.data() == all.substr(consumed, end - consumed), "no byte is lost or doubled");
        if (state != AsyncReadState::Done)
            return 0;
        consumed = end;
    }
}
