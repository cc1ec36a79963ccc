#pragma once

#include <string_view>

/// What a trigger does when it matches. The session answers; the calls may lead back into the trigger list.
class ZNTTriggerActions
{
public:
    virtual ~ZNTTriggerActions() = default;
    /// Carries out `command` as if it had been typed, its prefixes included.
    virtual void sendCommand(std::u16string_view command) = 0;
    /// `fileName` as the trigger names it, possibly empty; a file that cannot be played plays nothing.
    virtual void playTriggerSound(std::u16string_view fileName) = 0;
    /// Whether the pass may do more in this turn of the loop. It asks after each answer and every now and
    /// then during a search; at a no it returns, and goes on with the next `goOn`.
    [[nodiscard]] virtual bool hasTimeForMore() { return true; }
};
