#pragma once

#include "ZNTHiddenTyping.h"
#include "ZNTPlainInput.h"

#include <optional>
#include <utility>

/// Lines of a terminal that edits and shows them by itself: termios(3), canonical mode. For terminals that
/// cannot move the cursor, and for screen readers that read what is appended.
///
/// While text passes, the terminal keeps the half-typed line, and nothing can be asked about it. So text that
/// comes behind an unfinished line, as a rule a prompt, begins a line of its own. The terminal takes lines of
/// up to 4095 bytes.
class ZNTCookedInput final : public ZNTPlainInput
{
public:
    /// `showsOutput` says whether stdout is the same terminal.
    ZNTCookedInput(RunLoop& runLoop, int descriptor, bool showsOutput)
        : ZNTPlainInput(runLoop, descriptor),
          descriptor(descriptor),
          showsOutput(showsOutput)
    {
    }

    [[nodiscard]] bool isTerminal() const override { return showsOutput; }
    [[nodiscard]] bool start(Handlers given) override
    {
        given.line = [this, line = std::move(given.line)](std::string text) {
            isBelowTypedLine = !hidden;
            line(std::move(text));
        };
        return ZNTPlainInput::start(std::move(given));
    }
    void setPaused(bool isToBePaused) override
    {
        if (!showsOutput)
            ZNTPlainInput::setPaused(isToBePaused);
    }
    std::string makeWay(Passing, bool isAtLineStart) override
    {
        const bool isInLine = showsOutput && !isAtLineStart && !isBelowTypedLine;
        isBelowTypedLine = false;
        return isInLine ? "\n" : "";
    }
    [[nodiscard]] bool sharesStandardError() const override { return showsOutput && areErrorsOnOutput(); }
    [[nodiscard]] bool takeBackTypedLine() override { return !showsOutput; }
    void setTypingHidden(bool isHidden) override
    {
        if (!isHidden)
            hidden.reset();
        else if (!hidden)
            hidden.emplace(descriptor);
    }

private:
    const int descriptor;
    const bool showsOutput;
    bool isBelowTypedLine = false; ///< Return was typed, and nothing has been written since
    std::optional<ZNTHiddenTyping> hidden;
};
