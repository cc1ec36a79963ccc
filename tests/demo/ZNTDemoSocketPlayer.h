#pragma once

#include "VirtualRunLoop.h"

#include <cerrno>
#include <cstdint>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <string>
#include <string_view>
#include <sys/socket.h>
#include <unistd.h>
#include <zlib.h>

/// A socket that is connected to `port` on loopback; -1 where nobody listens.
inline int connectionTo(std::uint16_t port)
{
    const int descriptor = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    if (connect(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0)
        return descriptor;
    close(descriptor);
    return -1;
}

/// A player's end of a connection. It reads when asked to wait, never by itself.
class ZNTDemoSocketPlayer
{
public:
    ZNTDemoSocketPlayer(VirtualRunLoop& loop, int descriptor) : descriptor(descriptor), loop(loop) {}
    ~ZNTDemoSocketPlayer() { hangUp(); }
    ZNTDemoSocketPlayer(const ZNTDemoSocketPlayer&) = delete;
    ZNTDemoSocketPlayer& operator=(const ZNTDemoSocketPlayer&) = delete;

    void hangUp()
    {
        if (descriptor >= 0)
            close(descriptor);
        descriptor = -1;
    }
    /// A few bytes, which the network takes at once.
    void send(std::string_view bytes)
    {
        EXPECT_EQ(::send(descriptor, bytes.data(), bytes.size(), MSG_NOSIGNAL),
                  static_cast<ssize_t>(bytes.size()));
    }
    /// Reads until `text` has come; forgets everything up to its end and answers that.
    std::string readUntil(std::string_view text)
    {
        std::size_t at = std::string::npos;
        loop.runUntil([&] {
            read();
            at = received.find(text);
            return at != std::string::npos || hasEnded;
        });
        const auto end = at == std::string::npos ? received.size() : at + text.size();
        auto result = received.substr(0, end);
        received.erase(0, end);
        return result;
    }
    /// Reads until the game has closed its side.
    bool waitForEnd()
    {
        return loop.runUntil([&] { return read(), hasEnded; });
    }
    /// Reads what has arrived by now, after the loop had a few turns.
    void settle()
    {
        loop.advance(0);
        read();
    }

    /// What has come and was not yet asked for.
    std::string received;
    int descriptor;

private:
    void read()
    {
        char bytes[65536];
        auto count = recv(descriptor, bytes, sizeof bytes, MSG_DONTWAIT);
        for (; count > 0; count = recv(descriptor, bytes, sizeof bytes, MSG_DONTWAIT))
            received.append(bytes, static_cast<std::size_t>(count));
        hasEnded = hasEnded || count == 0 || errno != EAGAIN;
    }

    VirtualRunLoop& loop;
    bool hasEnded = false;
};

/// What one zlib stream holds, as far as `bytes` go; `bytes` keeps what follows the end of the stream.
inline std::string inflatedFrom(std::string& bytes, bool& streamHasEnded)
{
    z_stream stream{};
    inflateInit(&stream);
    stream.next_in = reinterpret_cast<Bytef*>(bytes.data());
    stream.avail_in = static_cast<uInt>(bytes.size());
    std::string text(1 << 20, '\0');
    stream.next_out = reinterpret_cast<Bytef*>(text.data());
    stream.avail_out = static_cast<uInt>(text.size());
    streamHasEnded = inflate(&stream, Z_SYNC_FLUSH) == Z_STREAM_END;
    text.erase(stream.total_out);
    bytes.erase(0, bytes.size() - stream.avail_in);
    inflateEnd(&stream);
    return text;
}
