#pragma once

#include <string_view>

/// The desktop's screen reader, as a voice for our text. The run loop's thread only.
class ZNTScreenReader
{
public:
    virtual ~ZNTScreenReader() = default;
    [[nodiscard]] virtual bool isRunning() const = 0;
    /// Asks the reader to say `text` after what it is saying. False if the reader cannot be reached now; the
    /// caller then speaks the text itself.
    virtual bool sayThis(std::u16string_view text) = 0;
    /// Asks the reader to say what the client announces of itself, in whichever of our windows is in front.
    /// Dropped if none comes to the front soon.
    virtual void announce(std::u16string_view text) { static_cast<void>(sayThis(text)); }
    /// Forgets the texts that the reader has not been given yet. The reader itself stops at the player's next
    /// key.
    virtual void forgetWhatWaits() {}
};

/// For programs whose text the reader reads by itself, such as the terminal client.
class ZNTNoScreenReader final : public ZNTScreenReader
{
public:
    [[nodiscard]] bool isRunning() const override { return false; }
    bool sayThis(std::u16string_view) override { return false; }
};
