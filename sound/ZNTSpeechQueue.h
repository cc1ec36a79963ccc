#pragma once

#include "ZNTSpokenText.h"

#include <cstddef>
#include <deque>
#include <optional>
#include <string>

/// The lines that wait to be spoken, first in, first out, and never without bound: past `mostLines` or
/// `mostUnits` the oldest are dropped, and the next thing to speak says how many. Not thread-safe.
class ZNTSpeechQueue
{
public:
    static constexpr std::size_t mostLines = 2'000;
    /// UTF-16 units over all lines.
    static constexpr std::size_t mostUnits = mostLines * znt::longestUtterance;

    void append(std::u16string line);
    void clear();
    [[nodiscard]] bool isEmpty() const { return lines.empty(); }

    /// The next thing to speak, without line ends around it: word of dropped lines, or the first line, or the
    /// first utterance of a very long one, whose rest stays first. None where nothing waits.
    std::optional<std::u16string> takeUtterance();

private:
    void dropFirst();

    std::deque<std::u16string> lines;
    /// Of the first line, what was already taken.
    std::size_t taken = 0;
    std::size_t units = 0;
    std::size_t dropped = 0;
};
