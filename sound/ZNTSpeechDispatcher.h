#pragma once

#include "RunLoop.h"
#include "ZNTSpeechEngine.h"

#include <functional>
#include <memory>
#include <string_view>

/// Whether a speech service that does not run may be started by the library, as a desktop does.
enum class ZNTSpeechServiceStart { WhenNeeded, Never };

/// Speaks through speech-dispatcher, the desktop's own speech service, in the voice and at the rate that the
/// desktop has set.
///
/// Talking to a service means waiting for its answers, so a thread of this object's own does it; the run loop
/// never waits for the service. The connection is made with the first text. When the service dies, what it
/// had not finished is said again once it is back.
class ZNTSpeechDispatcher final : public ZNTSpeechEngine
{
public:
    /// Hears on the run loop's thread, once in this object's life, that no service answers; `text` tells the
    /// player so and what to install.
    using Unavailable = std::function<void(std::u16string_view text)>;

    explicit ZNTSpeechDispatcher(RunLoop& runLoop, Unavailable onUnavailable = {},
                                 ZNTSpeechServiceStart serviceStart = ZNTSpeechServiceStart::WhenNeeded);
    ~ZNTSpeechDispatcher() override;

    [[nodiscard]] bool isSpeaking() const override;
    void startSpeaking(std::u16string_view text) override;
    void stopSpeaking() override;

private:
    class Worker;
    std::shared_ptr<Worker> worker;
};
