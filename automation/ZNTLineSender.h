#pragma once

#include <string_view>

/// Where the lines of macros, walks and triggers go: the session. Belongs to the run loop's thread.
class ZNTLineSender
{
public:
    virtual ~ZNTLineSender() = default;
    /// Sends `line` (no line end) as if the player had typed it. With `ignoreSpecials` false a line that
    /// starts with a prefix of the client's own is carried out instead.
    virtual void sendMessageToServer(std::u16string_view line, bool ignoreSpecials) = 0;
    /// False while so much waits to leave that a line which can wait should wait.
    [[nodiscard]] virtual bool hasRoom() const { return true; }
};
