#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// Bytes taken from the network that were given to no read yet. Removing from the front does not move the
/// rest, so that the lines of a block are dealt out in time linear in its length.
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
