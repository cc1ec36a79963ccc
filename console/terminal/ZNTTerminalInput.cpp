#include "ZNTTerminalInput.h"

#include "ZNTDescriptors.h"
#include "ZNTTerminalSize.h"

#include <algorithm>
#include <clocale>
#include <cstdlib>
#include <cwchar>
#include <langinfo.h>
#include <termios.h>
#include <unistd.h>
#include <utility>

namespace
{

void writeToTerminal(std::string_view sequence) { static_cast<void>(znt::writeAll(STDOUT_FILENO, sequence)); }

std::string cursorUp(int rows) { return rows > 0 ? "\x1b[" + std::to_string(rows) + "A" : std::string(); }

/// Columns that `text` takes on the terminal.
int columnsOf(std::string_view text)
{
    int columns = 0;
    std::mbstate_t state{};
    for (const char *at = text.data(), *end = at + text.size(); at < end;) {
        wchar_t character;
        const auto length = std::mbrtowc(&character, at, static_cast<std::size_t>(end - at), &state);
        if (length == 0 || length > static_cast<std::size_t>(end - at)) { // ill-formed: one column a byte
            state = {};
            ++at;
            ++columns;
            continue;
        }
        columns += std::max(0, ::wcwidth(character));
        at += length;
    }
    return columns;
}

/// `text` as the line editor can show it. It reads through a null pointer at a prompt that is ill-formed in
/// the locale, and a game may send any character.
std::string decodable(std::string_view text)
{
    std::string prompt(text);
    if (std::mbstowcs(nullptr, prompt.c_str(), 0) == static_cast<std::size_t>(-1))
        for (auto& byte : prompt)
            if (static_cast<unsigned char>(byte) >= 0x80)
                byte = '?';
    return prompt;
}

int terminalColumns()
{
    const auto size = znt::terminalSize();
    return size ? size->columns : 80;
}

} // namespace

ZNTTerminalInput::ZNTTerminalInput(RunLoop& runLoop) : runLoop(runLoop)
{
    // What is written is UTF-8 whatever the locale says, and so is what is read.
    std::setlocale(LC_CTYPE, "");
    if (std::string_view(::nl_langinfo(CODESET)) != "UTF-8")
        std::setlocale(LC_CTYPE, "C.UTF-8");
}

ZNTTerminalInput::~ZNTTerminalInput() = default;

bool ZNTTerminalInput::start(Handlers given)
{
    handlers = std::move(given);
    watch = runLoop.watchDescriptor(STDIN_FILENO, RunLoopInterest::Readable,
                                    [this](RunLoopInterest) { readKey(); });
    if (!watch)
        return false;
    editor.emplace();
    editor->whenCompleting = handlers.complete;
    writeToTerminal(editor->begin(prompt));
    return true;
}

/// The line editor shows what it reads, so it rests while typing is hidden.
void ZNTTerminalInput::setTypingHidden(bool isHidden)
{
    if (isHidden == hidden.has_value() || !watch)
        return;
    if (!isHidden) {
        hidden.reset();
        hiddenLine.clear();
        if (isDelivering)
            return;
        const auto drawing = behindPrompt(editor->begin(prompt));
        if (!isLineHidden)
            writeToTerminal(drawing);
        return;
    }
    if (!isDelivering && !editor->typed().empty()) {
        hiddenLine = editor->typed(); // it was meant for the same question
        if (!isLineHidden)
            writeToTerminal(eraseLine(editor->typedBeforeCursor()) + prompt);
    }
    isPromptWritten = !isDelivering;
    editor->end();
    hidden.emplace(STDIN_FILENO);
}

void ZNTTerminalInput::readHidden()
{
    char bytes[1024];
    const auto count = ::read(STDIN_FILENO, bytes, sizeof bytes);
    if (count <= 0) { // Ctrl+D on an empty line
        finish();
        return;
    }
    hiddenLine.append(bytes, static_cast<std::size_t>(count));
    // The terminal gives one line at a time; what follows its end would be the next read's.
    if (!hiddenLine.ends_with('\n'))
        return;
    hiddenLine.pop_back();
    handlers.line(std::exchange(hiddenLine, {}));
    handlers.catchUp();
}

void ZNTTerminalInput::readKey()
{
    termios modes{};
    if (::tcgetattr(STDIN_FILENO, &modes) != 0) { // the terminal is gone; the library would ask it for ever
        finish();
        return;
    }
    if (handlers.keyTyped)
        handlers.keyTyped();
    if (hidden) {
        readHidden();
        return;
    }
    handlers.catchUp(); // the key is drawn at the cursor
    const auto read = editor->readKey();
    writeToTerminal(read.drawn);
    if (read.outcome == ZNTLineEditor::Outcome::End)
        finish();
    else if (read.outcome == ZNTLineEditor::Outcome::Line)
        deliver(read.line);
}

void ZNTTerminalInput::finish()
{
    hidden.reset();
    editor->end();
    watch.reset();
    handlers.end();
}

void ZNTTerminalInput::deliver(const std::string& line)
{
    editor->end();
    typedLine = line;
    if (!line.empty())
        editor->remember(line);
    isDelivering = isLineHidden = true;
    isPromptWritten = isToBeTakenBack = false;
    handlers.line(line);
    handlers.catchUp();
    isDelivering = isLineHidden = false;
    if (!hidden && watch)
        writeToTerminal(behindPrompt(editor->begin(prompt)));
}

std::string ZNTTerminalInput::eraseLine(std::string_view typed, int rowsMore) const
{
    return cursorUp((columnsOf(prompt) + columnsOf(typed)) / terminalColumns() + rowsMore) + "\r\x1b[J";
}

bool ZNTTerminalInput::takeBackTypedLine()
{
    isToBeTakenBack = isDelivering && !hidden;
    return true;
}

std::string ZNTTerminalInput::makeWay(Passing passing, bool isAtLineStart)
{
    const bool isAside = passing == Passing::Aside;
    const bool isFirst = !std::exchange(isLineHidden, true);
    if (isDelivering &&
        !std::exchange(isPromptWritten, true)) // the cursor is in the row below the typed line
        return !isAside && std::exchange(isToBeTakenBack, false) ? eraseLine(typedLine, 1) + prompt : "";
    if (isDelivering || !isFirst || !editor || !editor->isOn())
        return isAside && !isAtLineStart ? "\n" : "";
    const auto typed = editor->typedBeforeCursor();
    if (isAside)
        return prompt.empty() && typed.empty() ? "" : eraseLine(typed);
    return editor->typed().empty() ? "" : eraseLine(typed) + prompt;
}

std::string ZNTTerminalInput::lineAgain(std::string_view unfinishedLine, bool isWritten)
{
    if (!isLineHidden)
        return {};
    prompt = decodable(unfinishedLine);
    isPromptWritten = isWritten && (isPromptWritten || !isDelivering);
    if (isDelivering) // drawn when the next line begins
        return {};
    isLineHidden = false;
    return editor && editor->isOn() ? behindPrompt(editor->drawAgain(prompt)) : "";
}

bool ZNTTerminalInput::hasHiddenHalfLine() const
{
    return isLineHidden && !isDelivering && editor && editor->isOn() && !editor->typed().empty();
}

/// `drawing` shows the prompt and the line. A prompt that stands there already is not written twice: it has
/// the game's colours, and a screen reader would read it twice.
std::string ZNTTerminalInput::behindPrompt(const std::string& drawing) const
{
    const int columns = columnsOf(prompt);
    if (drawing.empty())
        return {};
    if (!isPromptWritten || columns == 0)
        return "\r" + drawing;
    if (columns < terminalColumns() && drawing.starts_with(prompt))
        return drawing.substr(prompt.size());
    return cursorUp((columns - 1) / terminalColumns()) + "\r" + drawing;
}
