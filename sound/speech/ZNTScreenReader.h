#pragma once

#include <string_view>

/// The desktop's screen reader, as far as it can be asked to speak for us. The run loop's thread only.
class ZNTScreenReader
{
public:
    virtual ~ZNTScreenReader() = default;
    [[nodiscard]] virtual bool isRunning() const = 0;
    /// Has the reader say `text` in its own voice and queue. False where there is no way just now, so that
    /// the caller speaks the text itself; never both.
    virtual bool sayThis(std::u16string_view text) = 0;
    /// Forgets what the reader was not handed yet. What it is saying, it stops itself at the player's next
    /// key.
    virtual void forgetWhatWaits() {}
};

/// Where no reader is, or where it reads the screen by itself, as in a terminal.
class ZNTNoScreenReader final : public ZNTScreenReader
{
public:
    [[nodiscard]] bool isRunning() const override { return false; }
    bool sayThis(std::u16string_view) override { return false; }
};
