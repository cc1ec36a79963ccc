#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// Knows the game's last prompt: the line without an end with which a chunk ends. Two prompts are the same if
/// their words are; blanks and control characters around them do not count.
class ZNTPrompts
{
public:
    /// UTF-16 units. What is longer is no prompt but a part of a long text.
    static constexpr std::size_t longest = 1'000;

    /// Takes a chunk's plain text. Returns how many of its units are left without its prompt if that is the
    /// same as the last one; else all of them.
    std::size_t unitsWithoutRepeat(std::u16string_view chunk);
    /// Empty if there was none yet.
    [[nodiscard]] const std::u16string& last() const { return last_; }
    /// Another game begins.
    void forget() { last_.clear(); }

private:
    std::u16string last_;
};
