#pragma once

#include <functional>
#include <string_view>

/// Says text aloud in the machine's own voice. Call it on the run loop's thread. Every call returns at once;
/// the speaking goes on in the background.
class ZNTSpeechEngine
{
public:
    virtual ~ZNTSpeechEngine() = default;
    /// True from `startSpeaking` until all text was said, silenced or lost.
    [[nodiscard]] virtual bool isSpeaking() const = 0;
    /// Says `text` after the text that is being said. Empty text is ignored.
    virtual void startSpeaking(std::u16string_view text) = 0;
    /// Stops speaking at once and forgets the texts that wait.
    virtual void stopSpeaking() = 0;

    /// `ended` is called after all text was said or lost, not after a stop; an empty one ends that. There is
    /// one listener.
    virtual void setEndListener(std::function<void()> /*ended*/) {}
    /// False after a text found no service that could speak it, until a later text finds one.
    [[nodiscard]] virtual bool isAvailable() const { return true; }
    /// `changed` is called after each change of `isAvailable`; an empty one ends that. There is one listener.
    virtual void setAvailabilityListener(std::function<void()> /*changed*/) {}
};

/// Says nothing: for sessions without speech.
class ZNTSilentSpeech final : public ZNTSpeechEngine
{
public:
    [[nodiscard]] bool isSpeaking() const override { return false; }
    void startSpeaking(std::u16string_view) override {}
    void stopSpeaking() override {}
};
