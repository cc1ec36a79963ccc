#pragma once

#include "RunLoop.h"

#include <functional>
#include <memory>
#include <optional>
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
        /// A key was pressed, before anything is done about it. Only an input that has a key's characters
        /// one by one calls it. Optional.
        std::function<void()> keyTyped = {};
        /// Tab was pressed with `before` (UTF-8) before the cursor. Answers what is to stand there instead;
        /// none leaves it. Only an input that edits lines itself calls it. Optional.
        std::function<std::optional<std::string>(std::string_view before)> complete = {};
    };

    virtual ~ZNTConsoleInput() = default;
    [[nodiscard]] virtual bool isTerminal() const { return false; }
    /// Begins to deliver, never from inside this call. False if the system has no room for waiting for input;
    /// nothing is delivered then.
    [[nodiscard]] virtual bool start(Handlers handlers) = 0;
    /// Whether to read no further for now. A few lines may still come; a person at a terminal is never kept
    /// waiting.
    virtual void setPaused(bool isPaused) { static_cast<void>(isPaused); }
    /// What passes above the line being typed. Text goes on where the text before it ended. An aside, a line
    /// on stderr, begins a line of its own.
    enum class Passing { Text, Aside };
    /// Returns what is to be written before that, because it would otherwise break into the line being typed.
    /// `isAtLineStart` is false if the text written last has not ended its line.
    virtual std::string makeWay(Passing passing, bool isAtLineStart);
    /// Returns what is to be written after it, so that the line being typed is shown again. Empty if it is
    /// shown. `unfinishedLine` (UTF-8) stands before the line being typed; as a rule it is the game's prompt.
    /// If `isWritten`, the cursor stands behind it already.
    virtual std::string lineAgain(std::string_view unfinishedLine, bool isWritten);
    /// Whether text has hidden a half-typed line.
    [[nodiscard]] virtual bool hasHiddenHalfLine() const { return false; }
    /// Whether lines on stderr appear on the terminal on which one types.
    [[nodiscard]] virtual bool sharesStandardError() const { return false; }
    /// Writes `line` (UTF-8, with its line end) to stderr.
    virtual void writeAside(std::string_view line);
    /// Takes the line that was typed last from the screen, because the caller shows it. False if it stays
    /// there.
    [[nodiscard]] virtual bool takeBackTypedLine() { return true; }

    /// Whether what is typed is shown. A line that is typed while it is hidden is kept in no history.
    virtual void setTypingHidden(bool isHidden) { static_cast<void>(isHidden); }

    /// The input for stdin: with line editing on a terminal, else plain lines from a pipe, a file or a
    /// device. If `appendsOnly`, the terminal edits its lines by itself. `runLoop` outlives the input.
    static std::unique_ptr<ZNTConsoleInput> forStandardInput(RunLoop& runLoop, bool appendsOnly);

protected:
    /// Whether stdout and stderr are one terminal.
    static bool areErrorsOnOutput();
};
