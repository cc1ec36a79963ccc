#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string_view>

/// Takes a fuzzer's bytes apart: choices from the front, the rest as data. Answers 0 at the end.
class FuzzInput
{
public:
    FuzzInput(const std::uint8_t* data, std::size_t size) : bytes(reinterpret_cast<const char*>(data), size)
    {
    }

    std::uint8_t byte()
    {
        if (bytes.empty())
            return 0;
        const auto first = static_cast<std::uint8_t>(bytes.front());
        bytes.remove_prefix(1);
        return first;
    }
    std::string_view take(std::size_t count)
    {
        const auto taken = bytes.substr(0, count);
        bytes.remove_prefix(taken.size());
        return taken;
    }
    /// What stands before the next `end`, which is taken too; all that is left if there is none.
    std::string_view field(char end)
    {
        const auto taken = bytes.substr(0, bytes.find(end));
        bytes.remove_prefix(taken.size() + (taken.size() < bytes.size() ? 1 : 0));
        return taken;
    }
    [[nodiscard]] bool empty() const { return bytes.empty(); }
    [[nodiscard]] std::string_view rest() const { return bytes; }

private:
    std::string_view bytes;
};

/// Ends the process if a promise does not hold. The fuzzer then keeps the input, and a replay names it.
inline void require(bool holds, const char* promise)
{
    if (holds)
        return;
    std::fprintf(stderr, "Broken promise: %s\n", promise);
    std::abort();
}
