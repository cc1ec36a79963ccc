#pragma once

#include <functional>
#include <string_view>

/// Says text aloud in the machine's own voice. Everything here is called on the run loop's thread and returns
/// at once; the speaking goes on by itself.
class ZNTSpeechEngine
{
public:
    virtual ~ZNTSpeechEngine() = default;
    /// From the moment that text was handed over until all of it was said, silenced or lost.
    [[nodiscard]] virtual bool isSpeaking() const = 0;
    /// Says `text` after whatever is being said. Empty text is nothing to say.
    virtual void startSpeaking(std::u16string_view text) = 0;
    /// Silences at once and forgets what waits.
    virtual void stopSpeaking() = 0;

    /// False from the time when a text found nothing that could speak, until one finds something again.
    [[nodiscard]] virtual bool isAvailable() const { return true; }
    /// `changed` is called after each change of `isAvailable`; an empty one ends that. There is one listener.
    virtual void setAvailabilityListener(std::function<void()> /*changed*/) {}
};

/// Where nothing can speak, or nothing should.
class ZNTSilentSpeech final : public ZNTSpeechEngine
{
public:
    [[nodiscard]] bool isSpeaking() const override { return false; }
    void startSpeaking(std::u16string_view) override {}
    void stopSpeaking() override {}
};
