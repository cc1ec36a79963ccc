#include "ZNTLineEditor.h"

#include "ZNTDescriptors.h"

#include <algorithm>
#include <unistd.h>
#include <utility>

namespace
{

constexpr int linesRemembered = 500;
constexpr char endOfInput = '\x04'; // what the library returns for it

constexpr auto completeCommand = "zantor-complete";

struct KeyBinding {
    const char *keys, *command;
};
/// What terminals send for the arrows and their neighbours while they are not in application mode; the
/// library knows only what the terminal's description lists. Words are passed as in other programs.
constexpr KeyBinding keyBindings[] = {
    {"^[[A", "ed-prev-history"}, {"^[[B", "ed-next-history"},      {"^[[C", "ed-next-char"},
    {"^[[D", "ed-prev-char"},    {"^[[H", "ed-move-to-beg"},       {"^[[F", "ed-move-to-end"},
    {"^[[1~", "ed-move-to-beg"}, {"^[[4~", "ed-move-to-end"},      {"^[[7~", "ed-move-to-beg"},
    {"^[[8~", "ed-move-to-end"}, {"^[[3~", "ed-delete-next-char"}, {"^[[2~", "em-toggle-overwrite"},
    {"^[[1;5C", "em-next-word"}, {"^[[1;5D", "ed-prev-word"},      {"^R", "em-inc-search-prev"},
    {"^I", completeCommand},
};

} // namespace

ZNTLineEditor::ZNTLineEditor()
    : canvas(::fopencookie(this, "w", {.read = nullptr, .write = &take, .seek = nullptr, .close = nullptr}),
             &std::fclose),
      history_(::history_init(), &::history_end),
      library(::el_init_fd("zantor-console", stdin, canvas.get(), stderr, STDIN_FILENO, STDOUT_FILENO,
                           STDERR_FILENO),
              &::el_end)
{
    HistEvent event;
    ::history(history_.get(), &event, H_SETSIZE, linesRemembered);
    ::el_set(library.get(), EL_HIST, &::history, history_.get());
    ::el_set(library.get(), EL_CLIENTDATA, this);
    ::el_set(library.get(), EL_PROMPT, &promptOf);
    ::el_set(library.get(), EL_SIGNAL, 1); // the terminal is given back when a signal ends the program
    ::el_set(library.get(), EL_EDITOR, "emacs");
    ::el_set(library.get(), EL_ADDFN, completeCommand, "Completes a word", &complete);
    for (const auto& binding : keyBindings)
        ::el_set(library.get(), EL_BIND, binding.keys, binding.command, nullptr);
    ::el_source(library.get(), nullptr); // what the player has set in ~/.editrc
}

ZNTLineEditor::~ZNTLineEditor() { end(); }

/// Outside a call of ours the library draws in its signal handlers, when the program continues or the
/// terminal's size changes. Nobody would fetch that.
ssize_t ZNTLineEditor::take(void* editor, const char* bytes, std::size_t count)
{
    auto& self = *static_cast<ZNTLineEditor*>(editor);
    if (self.isGathering)
        self.gathered.append(bytes, count);
    else
        static_cast<void>(znt::writeAll(STDOUT_FILENO, {bytes, count}));
    return static_cast<ssize_t>(count);
}

ZNTLineEditor& ZNTLineEditor::editorOf(EditLine* library)
{
    void* editor = nullptr;
    ::el_get(library, EL_CLIENTDATA, &editor);
    return *static_cast<ZNTLineEditor*>(editor);
}

char* ZNTLineEditor::promptOf(EditLine* library) { return editorOf(library).prompt_.data(); }

unsigned char ZNTLineEditor::complete(EditLine* library, int)
{
    auto& editor = editorOf(library);
    const std::string before(editor.typedBeforeCursor());
    const auto after = editor.whenCompleting ? editor.whenCompleting(before) : std::nullopt;
    if (!after)
        return CC_NORM;
    // The library counts characters.
    const auto isFirstByte = [](char byte) { return (byte & 0xC0) != 0x80; };
    ::el_deletestr(library, static_cast<int>(std::ranges::count_if(before, isFirstByte)));
    ::el_insertstr(library, after->c_str());
    return CC_REFRESH;
}

std::string ZNTLineEditor::drawn()
{
    std::fflush(canvas.get());
    isGathering = false;
    return std::exchange(gathered, {});
}

std::string ZNTLineEditor::begin(std::string prompt)
{
    prompt_ = std::move(prompt);
    isOn_ = isGathering = true;
    ::el_set(library.get(), EL_UNBUFFERED, 1);
    return drawn();
}

void ZNTLineEditor::end()
{
    if (std::exchange(isOn_, false))
        ::el_set(library.get(), EL_UNBUFFERED, 0);
}

ZNTLineEditor::Read ZNTLineEditor::readKey()
{
    Read read;
    isGathering = true;
    int count = 0;
    const char* bytes = ::el_gets(library.get(), &count);
    read.drawn = drawn();
    if (!bytes || count <= 0)
        return read;
    const std::string_view line(bytes, static_cast<std::size_t>(count));
    if (line.ends_with('\n') || line.ends_with('\r'))
        read.outcome = Outcome::Line;
    else if (line.size() == 1 && line.front() == endOfInput)
        read.outcome = Outcome::End;
    if (read.outcome == Outcome::Line)
        read.line = line.substr(0, line.size() - 1);
    return read;
}

std::string ZNTLineEditor::drawAgain(std::string prompt)
{
    prompt_ = std::move(prompt);
    isGathering = true;
    ::el_set(library.get(), EL_REFRESH);
    return drawn();
}

std::string_view ZNTLineEditor::typed() const
{
    const LineInfo* line = ::el_line(library.get());
    return {line->buffer, line->lastchar};
}

std::string_view ZNTLineEditor::typedBeforeCursor() const
{
    const LineInfo* line = ::el_line(library.get());
    return {line->buffer, line->cursor};
}

void ZNTLineEditor::remember(const std::string& line)
{
    HistEvent event;
    ::history(history_.get(), &event, H_ENTER, line.c_str());
}
