#pragma once

#include "VirtualRunLoop.h"
#include "ZNTConsoleInput.h"
#include "ZNTConsoleTextView.h"
#include "ZNTTextSink.h"

#include <functional>
#include <string>
#include <string_view>
#include <utility>

/// Keeps what is written.
struct ZNTNotedSink final : ZNTTextSink {
    void write(std::string_view utf8, To) override
    {
        if (beforeWriting)
            beforeWriting(utf8);
        output += utf8;
    }
    [[nodiscard]] bool hasWrittenAll() const override { return !isStopped; }
    void waitUntilWritten() override { goOn(); }
    [[nodiscard]] bool isFull() const override { return isFullNow; }
    void goOn()
    {
        isStopped = false;
        if (writtenAll)
            writtenAll();
    }
    bool isFullNow = false;
    bool isStopped = false; ///< the terminal takes nothing for now
    std::function<void(std::string_view)> beforeWriting;
    std::string output; ///< and errors, in their order
};

/// Lines that a test types on a terminal. Notes what is asked of the line being typed.
struct ZNTNotedInput final : ZNTConsoleInput {
    [[nodiscard]] bool isTerminal() const override { return true; }
    bool start(Handlers given) override
    {
        handlers = std::move(given);
        return true;
    }
    void setPaused(bool paused) override { isPaused = paused; }
    void setTypingHidden(bool isToBeHidden) override { isTypingHidden = isToBeHidden; }
    std::string makeWay(Passing passing, bool isAtLineStart) override
    {
        isHidden = true;
        return !notesWay ? "" : passing == Passing::Aside ? "[a]" : isAtLineStart ? "[s]" : "[t]";
    }
    std::string lineAgain(std::string_view unfinishedLine, bool) override
    {
        if (!std::exchange(isHidden, false))
            return {};
        prompt = unfinishedLine;
        return notesWay ? "[" + prompt + "]" : "";
    }
    [[nodiscard]] bool hasHiddenHalfLine() const override { return isHidden && hasHalfLine; }
    [[nodiscard]] bool sharesStandardError() const override { return true; }
    void writeAside(std::string_view line) override { aside += line; }
    Handlers handlers;
    bool isHidden = false, isTypingHidden = false, isPaused = false, hasHalfLine = false;
    bool notesWay = false; ///< in what is written: aside, from a line's start or within a line
    std::string prompt, aside;
};

/// A terminal's view, and what it writes.
struct ZNTNotedTerminal {
    explicit ZNTNotedTerminal(ZNTConsoleColour colour = ZNTConsoleColour::Never,
                              ZNTColourDepth depth = ZNTColourDepth::Sixteen)
        : view(colour, output, depth)
    {
    }
    void append(const ZNTAttributedText& text)
    {
        view.append(text);
        loop.runPosted();
    }
    ZNTNotedTerminal& operator<<(std::u16string_view text)
    {
        ZNTAttributedText plain;
        plain.text = text;
        append(plain);
        return *this;
    }
    VirtualRunLoop loop;
    ZNTNotedInput input;
    ZNTNotedSink sink;
    std::string& written = sink.output;
    ZNTConsoleOutput output{loop, input, sink};
    ZNTConsoleTextView view;
};
