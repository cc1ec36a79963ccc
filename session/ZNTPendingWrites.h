#pragma once

#include <cstddef>
#include <deque>
#include <utility>

/// The writes that a socket was given and has not finished, in its order: how many bytes they come to, and
/// how many of these are replies to telnet offers.
class ZNTPendingWrites
{
public:
    enum class Kind { Line, Reply };

    void add(std::size_t size, Kind kind)
    {
        writes.emplace_back(size, kind);
        totalOf(kind) += size;
    }
    /// The socket has finished the oldest of them. It reports no write that the end of a connection cut off,
    /// so there may be none.
    void finishOldest()
    {
        if (writes.empty())
            return;
        const auto [size, kind] = writes.front();
        totalOf(kind) -= size;
        writes.pop_front();
    }
    void clear() { *this = {}; }

    [[nodiscard]] std::size_t bytes() const { return lineBytes + replyBytes_; }
    [[nodiscard]] std::size_t replyBytes() const { return replyBytes_; }

private:
    std::size_t& totalOf(Kind kind) { return kind == Kind::Reply ? replyBytes_ : lineBytes; }

    std::deque<std::pair<std::size_t, Kind>> writes;
    std::size_t lineBytes = 0, replyBytes_ = 0;
};
