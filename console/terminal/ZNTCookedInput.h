#pragma once

#include "ZNTHiddenTyping.h"
#include "ZNTPlainInput.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
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
            line(withoutKeys(text));
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
    /// `typed` without the control characters of keys that the terminal has no use for, such as arrows:
    /// ECMA-48, CSI and SS3, and the Linux console's ESC [ [ for F1 to F5.
    static std::string withoutKeys(std::string_view typed)
    {
        std::string text;
        for (std::size_t at = 0; at < typed.size(); ++at) {
            const auto rest = typed.substr(at);
            if (rest.starts_with("\x1bO") || rest.starts_with("\x1b[[")) {
                at += rest[1] == 'O' ? 2 : 3;
            } else if (rest.starts_with("\x1b[")) {
                for (at += 2; at < typed.size() && (typed[at] < '@' || typed[at] > '~');)
                    ++at;
            } else if (rest.front() == '\t' ||
                       (static_cast<unsigned char>(rest.front()) >= 0x20 && rest.front() != '\x7f')) {
                text += rest.front();
            }
        }
        return text;
    }

    const int descriptor;
    const bool showsOutput;
    bool isBelowTypedLine = false; ///< Return was typed, and nothing has been written since
    std::optional<ZNTHiddenTyping> hidden;
};
