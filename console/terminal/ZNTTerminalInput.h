#pragma once

#include "ZNTConsoleInput.h"
#include "ZNTHiddenTyping.h"
#include "ZNTLineEditor.h"

#include <optional>

/// Lines typed on a terminal, with arrows and history. What was typed so far comes back after the game's text
/// has passed.
class ZNTTerminalInput final : public ZNTConsoleInput
{
public:
    explicit ZNTTerminalInput(RunLoop& runLoop);
    ~ZNTTerminalInput() override;

    [[nodiscard]] bool isTerminal() const override { return true; }
    [[nodiscard]] bool start(Handlers given) override;
    std::string makeWay(Passing passing, bool isAtLineStart) override;
    std::string lineAgain(std::string_view unfinishedLine, bool isWritten) override;
    [[nodiscard]] bool hasHiddenHalfLine() const override;
    [[nodiscard]] bool sharesStandardError() const override { return areErrorsOnOutput(); }
    [[nodiscard]] bool takeBackTypedLine() override;
    void setTypingHidden(bool isHidden) override;

private:
    void readKey();
    void readHidden();
    void deliver(const std::string& line);
    void finish();
    [[nodiscard]] std::string behindPrompt(const std::string& drawing) const;
    [[nodiscard]] std::string eraseLine(std::string_view typed, int rowsMore = 0) const;

    RunLoop& runLoop;
    Handlers handlers;
    std::optional<ZNTLineEditor> editor;
    std::string prompt;
    std::string typedLine;        ///< the line being delivered
    bool isDelivering = false;    ///< no line is being typed: Return was typed, and the cursor is below it
    bool isToBeTakenBack = false; ///< the line being delivered, by the text that comes
    bool isLineHidden = false;    ///< text has passed since the line was shown
    bool isPromptWritten = false; ///< the cursor stands behind the prompt, as the last text has left it
    std::string hiddenLine;       ///< what is typed while it is hidden, until its line end
    std::optional<ZNTHiddenTyping> hidden;
    std::unique_ptr<RunLoopWatch> watch;
};
