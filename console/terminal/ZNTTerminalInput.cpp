#include "ZNTTerminalInput.h"

#include "ZNTTerminalSize.h"

#include <algorithm>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <cwchar>
#include <editline/readline.h>
#include <langinfo.h>
#include <unistd.h>
#include <utility>

namespace
{

constexpr int commandsRemembered = 500;

/// What terminals send for the arrows and their neighbours while they are not in application mode; the
/// library knows only what the terminal's description lists.
constexpr const char* keyBindings[] = {
    "bind ^[[A ed-prev-history", "bind ^[[B ed-next-history", "bind ^[[C ed-next-char",
    "bind ^[[D ed-prev-char",    "bind ^[[H ed-move-to-beg",  "bind ^[[F ed-move-to-end",
    "bind ^[[1~ ed-move-to-beg", "bind ^[[4~ ed-move-to-end", "bind ^[[3~ ed-delete-next-char"};

void writeToTerminal(const std::string& sequence)
{
    std::fwrite(sequence.data(), 1, sequence.size(), stdout);
    std::fflush(stdout);
}

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

ZNTTerminalInput* ZNTTerminalInput::theOne = nullptr;

ZNTTerminalInput::ZNTTerminalInput(RunLoop& runLoop) : runLoop(runLoop)
{
    // What is written is UTF-8 whatever the locale says, and so is what is read.
    std::setlocale(LC_CTYPE, "");
    if (std::string_view(::nl_langinfo(CODESET)) != "UTF-8")
        std::setlocale(LC_CTYPE, "C.UTF-8");
    theOne = this;
}

ZNTTerminalInput::~ZNTTerminalInput()
{
    setTypingHidden(false);
    if (isInstalled)
        rl_callback_handler_remove();
    theOne = nullptr;
}

bool ZNTTerminalInput::start(Handlers given)
{
    handlers = std::move(given);
    using_history();
    stifle_history(commandsRemembered);
    rl_callback_handler_install("", &ZNTTerminalInput::onLine);
    isInstalled = true;
    for (const auto* binding : keyBindings)
        rl_parse_and_bind(binding);
    watch = runLoop.watchDescriptor(STDIN_FILENO, RunLoopInterest::Readable,
                                    [this](RunLoopInterest) { readCharacters(); });
    return watch != nullptr;
}

/// The line editor draws what it reads, so it rests while typing is hidden. The terminal then gives whole
/// lines and shows nothing of them.
void ZNTTerminalInput::setTypingHidden(bool isHidden)
{
    if (isHidden == shown.has_value() || !watch)
        return;
    if (!isHidden) {
        ::tcsetattr(STDIN_FILENO, TCSANOW, &*shown);
        shown.reset();
        hiddenLine.clear();
        writeToTerminal("\r");
        rl_callback_handler_install(prompt.c_str(), &ZNTTerminalInput::onLine);
        isInstalled = true;
        return;
    }
    // The library keeps a line that it has delivered, with its line end.
    const std::string_view typed = isInstalled && rl_line_buffer ? rl_line_buffer : "";
    if (!isDelivering && !typed.empty() && !typed.ends_with('\n')) {
        writeToTerminal(cursorUp(rowsBelowFirst(typed)) + "\r\x1b[J" + prompt);
        hiddenLine = typed; // it was meant for the same question
    }
    rl_callback_handler_remove();
    isInstalled = false;
    termios modes{};
    ::tcgetattr(STDIN_FILENO, &modes);
    shown = modes;
    modes.c_lflag |= ICANON;
    modes.c_lflag &= ~static_cast<tcflag_t>(ECHO);
    ::tcsetattr(STDIN_FILENO, TCSANOW, &modes);
}

void ZNTTerminalInput::readHidden()
{
    char bytes[1024];
    const auto count = ::read(STDIN_FILENO, bytes, sizeof bytes);
    if (count <= 0) { // Ctrl+D on an empty line
        setTypingHidden(false);
        deliver(nullptr);
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

void ZNTTerminalInput::readCharacters()
{
    termios modes{};
    if (::tcgetattr(STDIN_FILENO, &modes) != 0) { // the terminal is gone; the library would ask it for ever
        shown.reset();
        deliver(nullptr);
        return;
    }
    if (shown) {
        readHidden();
        return;
    }
    handlers.catchUp(); // the library draws the typed character at the cursor
    rl_callback_read_char();
    if (!std::exchange(hasDelivered, false) || !isInstalled)
        return;
    // At the end of a line the library gives up the terminal. It takes it again only if the handler is
    // installed again.
    writeToTerminal("\r");
    rl_callback_handler_install(prompt.c_str(), &ZNTTerminalInput::onLine);
}

void ZNTTerminalInput::onLine(char* line)
{
    theOne->deliver(line);
    std::free(line);
}

void ZNTTerminalInput::deliver(char* line)
{
    if (!line) { // end of input: Ctrl+D on an empty line
        rl_callback_handler_remove();
        isInstalled = false;
        watch.reset();
        handlers.end();
        return;
    }
    typedLine = line;
    if (!typedLine.empty())
        add_history(line);
    isDelivering = true;
    handlers.line(typedLine);
    handlers.catchUp();
    isDelivering = false;
    hasDelivered = true;
}

int ZNTTerminalInput::rowsBelowFirst(std::string_view typed) const
{
    return (columnsOf(prompt) + columnsOf(typed)) / terminalColumns();
}

void ZNTTerminalInput::replaceTypedLine()
{
    // Return has moved the cursor to the row below what was typed.
    if (isDelivering)
        writeToTerminal(cursorUp(rowsBelowFirst(typedLine) + 1) + "\r\x1b[J" + prompt);
}

void ZNTTerminalInput::hideLine()
{
    if (isDelivering || !isInstalled || !rl_line_buffer || *rl_line_buffer == '\0')
        return;
    writeToTerminal(cursorUp(rowsBelowFirst(rl_line_buffer)) + "\r\x1b[J" + prompt);
}

void ZNTTerminalInput::showLine(std::string_view unfinishedLine)
{
    prompt = decodable(unfinishedLine);
    if (!isDelivering)
        redraw();
}

void ZNTTerminalInput::writeAside(std::string_view line)
{
    const bool isInTheWay = isInstalled && !isDelivering && ::isatty(STDERR_FILENO) != 0;
    if (isInTheWay)
        writeToTerminal(cursorUp(rowsBelowFirst(rl_line_buffer ? rl_line_buffer : "")) + "\r\x1b[J");
    ZNTConsoleInput::writeAside(line);
    if (isInTheWay)
        redraw();
}

void ZNTTerminalInput::redraw()
{
    if (!isInstalled)
        return;
    writeToTerminal("\r");
    rl_set_prompt(prompt.c_str());
    rl_forced_update_display();
}
