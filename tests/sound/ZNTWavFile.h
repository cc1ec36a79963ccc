#pragma once

#include <cstdint>

/// A WAV file of `frames` frames of one value: PCM, 16 bits, stereo.
inline std::string wavFile(std::size_t frames, int value, std::uint32_t perSecond = 44'100)
{
    const auto number = [](std::size_t content, int bytes) {
        std::string text;
        for (int at = 0; at < bytes; ++at)
            text += static_cast<char>(content >> (8 * at) & 0xFFU);
        return text;
    };
    auto file = "RIFF" + number(36 + 4 * frames, 4) + "WAVEfmt " + number(16, 4) + number(1, 2) +
                number(2, 2) + number(perSecond, 4) + number(perSecond * 4, 4) + number(4, 2) +
                number(16, 2) + "data" + number(4 * frames, 4);
    for (std::size_t sample = 0; sample < 2 * frames; ++sample)
        (file += static_cast<char>(value & 0xFF)) += static_cast<char>(value >> 8);
    return file;
}
