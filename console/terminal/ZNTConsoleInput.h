#pragma once

#include "RunLoop.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>

/// Where the terminal client's lines come from. Belongs to the run loop's thread.
class ZNTConsoleInput
{
public:
    struct Handlers {
        /// A line in UTF-8, without its line end.
        std::function<void(std::string line)> line;
        /// No more lines will come. Called once, after the last line.
        std::function<void()> end;
        /// For an input that draws: returns when the text that passes has been written.
        std::function<void()> catchUp = {};
    };

    virtual ~ZNTConsoleInput() = default;
    [[nodiscard]] virtual bool isTerminal() const { return false; }
    /// Begins to deliver, never from inside this call. False if the system has no room for waiting for input;
    /// nothing is delivered then.
    [[nodiscard]] virtual bool start(Handlers handlers) = 0;
    /// Whether to read no further for now. A few lines may still come; a person at a terminal is never kept
    /// waiting.
    virtual void setPaused(bool isPaused) { static_cast<void>(isPaused); }
    /// To be called before text is written, which would otherwise break into the line being typed.
    virtual void hideLine() {}
    /// To be called when it is written. `unfinishedLine` (UTF-8) is shown before the line being typed. As a
    /// rule it is the game's prompt.
    virtual void showLine(std::string_view unfinishedLine) { static_cast<void>(unfinishedLine); }
    /// Writes `line` (UTF-8, with its line end) to stderr, above the line being typed if both are shown on
    /// one terminal.
    virtual void writeAside(std::string_view line);
    /// What has been typed so far need not be shown again, because the caller shows the line itself.
    virtual void replaceTypedLine() {}

    /// Whether what is typed is shown. A line that is typed while it is hidden is kept in no history.
    virtual void setTypingHidden(bool isHidden) { static_cast<void>(isHidden); }

    /// The input for stdin: with line editing on a terminal, else plain lines from a pipe, a file or a
    /// device. `runLoop` outlives it.
    static std::unique_ptr<ZNTConsoleInput> forStandardInput(RunLoop& runLoop);
};
