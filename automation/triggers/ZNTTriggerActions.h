#pragma once

#include <string_view>

/// What the session does for triggers when they match. The calls may lead back into the trigger list.
class ZNTTriggerActions
{
public:
    virtual ~ZNTTriggerActions() = default;
    /// Carries out `command` as if it had been typed, its prefixes included.
    virtual void sendCommand(std::u16string_view command) = 0;
    /// `fileName` is the trigger's and may be empty. A file that cannot be played plays nothing.
    virtual void playTriggerSound(std::u16string_view fileName) = 0;
    /// Whether the pass may do more in this turn of the loop. It asks after each answer and every now and
    /// then during a search. If the answer is no, it returns; the next `goOn` continues it.
    [[nodiscard]] virtual bool hasTimeForMore() { return true; }
};
