#pragma once

#include "ZNTScreenReader.h"
#include "ZNTSpeechEngine.h"
#include "ZNTText.h"

#include <functional>
#include <string>
#include <vector>

/// An engine that speaks as long as the test says and remembers what it was given, "(stop)" for a stop.
struct ZNTRecordedSpeech final : ZNTSpeechEngine {
    std::vector<std::string> said;
    bool staysSpeaking = false;
    bool speaks = false;
    bool isFound = true;
    int timesStopped = 0; ///< also while nothing was spoken
    std::function<void()> availabilityChanged;

    [[nodiscard]] bool isAvailable() const override { return isFound; }
    void setAvailabilityListener(std::function<void()> changed) override { availabilityChanged = changed; }
    [[nodiscard]] bool isSpeaking() const override { return speaks; }
    void startSpeaking(std::u16string_view text) override
    {
        said.push_back(znt::utf8FromText(text));
        speaks = staysSpeaking;
    }
    void stopSpeaking() override
    {
        ++timesStopped;
        if (speaks)
            said.emplace_back("(stop)");
        speaks = false;
    }
};

struct ZNTRecordedReader final : ZNTScreenReader {
    std::vector<std::string> said;
    bool runs = false;
    bool findsWay = true;

    [[nodiscard]] bool isRunning() const override { return runs; }
    bool sayThis(std::u16string_view text) override
    {
        if (findsWay)
            said.push_back(znt::utf8FromText(text));
        return findsWay;
    }
};
