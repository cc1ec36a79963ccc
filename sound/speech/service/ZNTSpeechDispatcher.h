#pragma once

#include "RunLoop.h"
#include "ZNTPlatformLog.h"
#include "ZNTSpeechEngine.h"

#include <functional>
#include <memory>
#include <string_view>

class ZNTSpeechWorker;

/// Whether a speech service that does not run may be started by the library, as a desktop does.
enum class ZNTSpeechServiceStart { WhenNeeded, Never };

/// Speaks through speech-dispatcher, the desktop's own speech service, in the voice and at the rate that the
/// desktop has set.
///
/// A thread of this object's own talks to the service, so the run loop never waits for an answer. The
/// connection is made with the first text. If the service dies, the texts that it had not finished are said
/// again once it is back.
class ZNTSpeechDispatcher final : public ZNTSpeechEngine
{
public:
    /// `log` gets one line when no service answers; it names the packages to install. Both outlive this
    /// object.
    ZNTSpeechDispatcher(RunLoop& runLoop, ZNTPlatformLog& log,
                        ZNTSpeechServiceStart serviceStart = ZNTSpeechServiceStart::WhenNeeded);
    ~ZNTSpeechDispatcher() override;

    [[nodiscard]] bool isSpeaking() const override;
    void startSpeaking(std::u16string_view text) override;
    void stopSpeaking() override;
    void setEndListener(std::function<void()> ended) override;
    [[nodiscard]] bool isAvailable() const override;
    void setAvailabilityListener(std::function<void()> changed) override;

private:
    std::shared_ptr<ZNTSpeechWorker> worker;
};
