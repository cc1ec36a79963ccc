#pragma once

#include "AsyncSocketPreBuffer.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

enum class AsyncReadState {
    Unfinished,
    Done,
    Overflow ///< as long as allowed, without the terminator
};

/// A queued read, and how far it has come. It decides how much to take and when it is complete. The socket
/// moves the bytes and calls the delegate.
struct AsyncReadPacket {
    std::shared_ptr<std::string> buffer;
    std::size_t startOffset = 0; ///< where in `buffer` the read begins
    std::size_t bytesDone = 0;
    std::size_t maxLength = 0;  ///< 0: no limit
    double timeout = -1;        ///< seconds, all extensions included; negative: none
    std::size_t readLength = 0; ///< 0: not of a fixed length
    std::optional<std::string> term;
    bool bufferOwner = false; ///< the buffer was made here
    std::size_t originalBufferLength = 0;
    std::int64_t tag = 0;

    /// Whether it takes whatever is there.
    [[nodiscard]] bool isOpenEnded() const { return readLength == 0 && !term; }
    [[nodiscard]] std::string_view data() const;
    [[nodiscard]] float progress() const;

    AsyncReadState takeFromPreBuffer(AsyncSocketPreBuffer& preBuffer);

    /// How many bytes to ask the network for if `available` are known to be there (at least 1). Unless
    /// `isPreBuffering`, none of them can belong to the next read.
    [[nodiscard]] std::size_t bytesToAskFor(std::size_t available, bool isPreBuffering) const;
    /// Room for `count` bytes after those that are done. Valid until the next call.
    char* roomFor(std::size_t count);
    /// Takes note that `count` bytes were put there. What belongs to the next read goes to the pre-buffer.
    AsyncReadState tookFromNetwork(std::size_t count, AsyncSocketPreBuffer& preBuffer, bool isPreBuffering);

    /// Cuts off the room that the finished read did not need.
    void cutBuffer();

private:
    [[nodiscard]] std::size_t limitedToMaxLength(std::size_t count) const;
    [[nodiscard]] std::size_t shareOfPreBuffer(std::string_view preBuffered, bool& foundTerm) const;
    [[nodiscard]] std::size_t bytesThatCannotPassTerm() const;
    [[nodiscard]] AsyncReadState stateWithoutTerm() const;
};

/// A queued write, and how far it has come.
struct AsyncWritePacket {
    std::string buffer;
    std::size_t bytesDone = 0;
    std::int64_t tag = 0;
    double timeout = -1; ///< as for reads

    [[nodiscard]] float progress() const
    {
        return static_cast<float>(bytesDone) / static_cast<float>(buffer.size());
    }
};
