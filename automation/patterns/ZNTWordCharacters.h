#pragma once

#include <array>
#include <cstdint>

/// The class "[\w\s]" of ICU's regular expressions, for the characters that take one UTF-16 unit. ICU itself
/// is asked, at the first question in the process, because that takes some milliseconds.
class ZNTWordCharacters
{
public:
    [[nodiscard]] bool contains(char16_t unit) const
    {
        static const Bits bits = askIcu();
        return (bits[unit / 64U] >> (unit % 64U) & 1) != 0;
    }

private:
    using Bits = std::array<std::uint64_t, 65536 / 64>;
    static Bits askIcu();
};
