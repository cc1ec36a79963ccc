#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// Bytes taken from the network that no read has been given yet. Taking from its front costs only what is
/// taken, so that a block of many lines is dealt out in time proportional to its length.
class AsyncSocketPreBuffer
{
public:
    [[nodiscard]] bool empty() const { return start == bytes.size(); }
    [[nodiscard]] std::string_view view() const { return std::string_view(bytes).substr(start); }

    void append(std::string_view more) { bytes += more; }
    void prepend(std::string_view earlier) { bytes.replace(0, start, earlier), start = 0; }
    void removeFront(std::size_t count)
    {
        start += count;
        if (empty())
            clear();
    }
    void clear()
    {
        bytes.clear();
        start = 0;
    }

private:
    std::string bytes;
    std::size_t start = 0;
};
