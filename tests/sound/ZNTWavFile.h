#pragma once

#include <cstdint>
#include <string>

/// A WAV file of the given samples (PCM, little-endian).
inline std::string wavFileOfSamples(const std::string& samples, std::uint32_t perSecond,
                                    std::uint32_t channels, std::uint32_t bits)
{
    const auto number = [](std::uint32_t content, int bytes) {
        std::string text;
        for (int at = 0; at < bytes; ++at)
            text += static_cast<char>(content >> (8 * at) & 0xFFU);
        return text;
    };
    const auto frameBytes = channels * bits / 8;
    const auto length = static_cast<std::uint32_t>(samples.size());
    return "RIFF" + number(36 + length, 4) + "WAVEfmt " + number(16, 4) + number(1, 2) + number(channels, 2) +
           number(perSecond, 4) + number(perSecond * frameBytes, 4) + number(frameBytes, 2) +
           number(bits, 2) + "data" + number(length, 4) + samples;
}

/// A WAV file of `frames` frames of one value, as the mixer plays it: 16 bits, stereo, 44.1 kHz.
inline std::string wavFile(std::size_t frames, int value)
{
    std::string samples(frames * 4, static_cast<char>(value & 0xFF));
    for (std::size_t at = 1; at < samples.size(); at += 2)
        samples[at] = static_cast<char>(value >> 8);
    return wavFileOfSamples(samples, 44'100, 2, 16);
}
