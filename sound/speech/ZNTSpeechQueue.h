#pragma once

#include "ZNTSpokenText.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>
#include <string>

/// The chunks that wait to be spoken, first in, first out. All are spoken, however late. Only if more than
/// `mostUnits` wait, the older half is dropped, and the next utterance says how many lines that were. Not
/// thread-safe.
class ZNTSpeechQueue
{
public:
    /// UTF-16 units over all chunks. The newest line stays, whatever its length.
    static constexpr std::size_t mostUnits = std::size_t{8} << 20;

    /// `chunk` is not empty.
    void append(std::u16string_view chunk);
    void clear();
    [[nodiscard]] bool isEmpty() const { return lengths.empty(); }

    /// The next text to speak, without line ends around it: the notice of dropped lines, or the first chunk,
    /// or the first utterance of a very long chunk, whose rest stays first. None if nothing waits.
    std::optional<std::u16string> takeUtterance();

private:
    void dropOlderHalf();
    /// The first line of the first chunk, with the line ends around it.
    [[nodiscard]] std::size_t firstLineLength() const;
    void takeUnits(std::size_t count);
    std::u16string takeNotice();

    /// The chunks one after the other, and how long each is: a flood of tiny ones costs little more than its
    /// text.
    std::deque<char16_t> text;
    std::deque<std::uint32_t> lengths;
    std::size_t droppedLines = 0;
    /// Set after a notice: the next utterance is text of the game, even if more was dropped meanwhile.
    bool owesText = false;
};
