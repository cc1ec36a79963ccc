#pragma once

#include <array>
#include <cstdint>

/// The class "[\w\s]" of ICU's regular expressions, for the characters that take one UTF-16 unit. ICU itself
/// is asked, once for each object.
class ZNTWordCharacters
{
public:
    ZNTWordCharacters();
    [[nodiscard]] bool contains(char16_t unit) const { return (bits[unit / 64U] >> (unit % 64U) & 1) != 0; }

private:
    std::array<std::uint64_t, 65536 / 64> bits{};
};
