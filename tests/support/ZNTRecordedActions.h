#pragma once

#include "ZNTTriggerList.h"

#include <string>
#include <vector>

/// What triggers did, in order: commands as they are, sounds behind "sound:".
struct ZNTRecordedActions final : ZNTTriggerActions {
    std::vector<std::u16string> done;
    /// What every question for more time is answered.
    bool hasTime = true;

    /// A whole pass over `text`, in as many parts as it takes. True if the chunk is gagged.
    bool passOver(ZNTTriggerList& list, std::u16string_view text)
    {
        const auto pass = list.startPass(text, *this);
        while (!pass->goOn())
            continue;
        return pass->outcome().isGagged;
    }
    void sendCommand(std::u16string_view command) override { done.emplace_back(command); }
    void playTriggerSound(std::u16string_view fileName) override
    {
        done.push_back(u"sound:" + std::u16string(fileName));
    }
    [[nodiscard]] bool hasTimeForMore() override { return hasTime; }
};
