#pragma once

#include <string_view>

/// Where the terminal client's own commands answer.
class ZNTConsoleReplies
{
public:
    virtual ~ZNTConsoleReplies() = default;
    /// Shows a line on stdout. It is not part of the game's text and not logged.
    virtual void say(std::u16string_view line) = 0;
    /// Says on stderr what was wrong with a command.
    virtual void complain(std::u16string_view sentence) = 0;

    /// Returns `isStored`. If it is false, the player learns that the change is not kept, because the store
    /// itself says nothing.
    bool complainUnless(bool isStored)
    {
        if (!isStored)
            complain(u"This could not be stored; nothing has changed.");
        return isStored;
    }
};
