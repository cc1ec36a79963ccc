#pragma once

#include "RunLoop.h"
#include "ZNTSpeechEngine.h"
#include "ZNTSpokenText.h"
#include "ZNTText.h"

#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

/// An engine that takes as long for a text as a voice does, and remembers when each text began and ended.
class ZNTTimedSpeech final : public ZNTSpeechEngine
{
public:
    struct Said {
        std::string text;
        double begin, end;
    };

    explicit ZNTTimedSpeech(RunLoop& runLoop) : runLoop(runLoop) {}

    double wordsPerMinute = 200;
    std::vector<Said> said;

    [[nodiscard]] bool isSpeaking() const override { return !waiting.empty(); }
    void startSpeaking(std::u16string_view text) override
    {
        if (znt::trimmedOfWhitespace(text).empty())
            return;
        waiting.emplace_back(text);
        if (waiting.size() == 1)
            begin();
    }
    void stopSpeaking() override
    {
        if (isSpeaking())
            said.back().end = runLoop.now();
        waiting.clear();
        timer.reset();
    }
    void setEndListener(std::function<void()> ended) override { allIsSaid = std::move(ended); }

private:
    void begin()
    {
        const auto& text = waiting.front();
        const auto seconds = static_cast<double>(znt::wordCount(text)) / wordsPerMinute * 60;
        said.push_back({znt::utf8FromText(text), runLoop.now(), runLoop.now() + seconds});
        timer = runLoop.startTimer(seconds, RunLoopRepeat::Once, [this] { end(); });
    }
    void end()
    {
        waiting.pop_front();
        if (!waiting.empty())
            begin();
        else if (allIsSaid)
            allIsSaid();
    }

    RunLoop& runLoop;
    std::deque<std::u16string> waiting;
    std::unique_ptr<RunLoopTimer> timer;
    std::function<void()> allIsSaid;
};
