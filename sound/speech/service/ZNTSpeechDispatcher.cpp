#include "ZNTSpeechDispatcher.h"

#include "ZNTSpeechWorker.h"
#include "ZNTText.h"

#include <utility>

ZNTSpeechDispatcher::ZNTSpeechDispatcher(RunLoop& runLoop, ZNTPlatformLog& log,
                                         ZNTSpeechServiceStart serviceStart)
    : worker(std::make_shared<ZNTSpeechWorker>(runLoop, log, serviceStart))
{
}

ZNTSpeechDispatcher::~ZNTSpeechDispatcher() { worker->quit(); }

bool ZNTSpeechDispatcher::isSpeaking() const { return worker->isSpeaking(); }

void ZNTSpeechDispatcher::startSpeaking(std::u16string_view text)
{
    // The service neither queues nor ends an empty message.
    if (!znt::trimmedOfWhitespace(text).empty())
        worker->say(znt::utf8FromText(text));
}

void ZNTSpeechDispatcher::stopSpeaking() { worker->stop(); }

void ZNTSpeechDispatcher::setEndListener(std::function<void()> ended)
{
    worker->allIsSaid = std::move(ended);
}

bool ZNTSpeechDispatcher::isAvailable() const { return worker->isAvailable; }

void ZNTSpeechDispatcher::setAvailabilityListener(std::function<void()> changed)
{
    worker->availabilityChanged = std::move(changed);
}
