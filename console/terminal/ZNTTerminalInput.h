#pragma once

#include "ZNTConsoleInput.h"

#include <optional>
#include <termios.h>

/// Lines typed on a terminal, edited with libedit: arrows, history, and what was typed so far comes back
/// after the game's text has passed. The library keeps one state for the process, so there is one of these.
class ZNTTerminalInput final : public ZNTConsoleInput
{
public:
    explicit ZNTTerminalInput(RunLoop& runLoop);
    ~ZNTTerminalInput() override;

    [[nodiscard]] bool isTerminal() const override { return true; }
    [[nodiscard]] bool start(Handlers given) override;
    void hideLine() override;
    void showLine(std::string_view unfinishedLine) override;
    void writeAside(std::string_view line) override;
    void replaceTypedLine() override;
    void setTypingHidden(bool isHidden) override;

private:
    static void onLine(char* line);
    void deliver(char* line);
    void readCharacters();
    void readHidden();
    void redraw();
    /// Rows of the terminal that the prompt and `typed` fill below their first.
    [[nodiscard]] int rowsBelowFirst(std::string_view typed) const;

    static ZNTTerminalInput* theOne;
    RunLoop& runLoop;
    Handlers handlers;
    std::string prompt;
    std::string typedLine; ///< the line being delivered
    bool isDelivering = false;
    bool hasDelivered = false;
    bool isInstalled = false;
    std::string hiddenLine;       ///< what is typed while it is hidden, until its line end
    std::optional<termios> shown; ///< the terminal's modes as they were; set while typing is hidden
    std::unique_ptr<RunLoopWatch> watch;
};
