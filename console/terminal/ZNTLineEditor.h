#pragma once

#include <cstddef>
#include <cstdio>
#include <functional>
#include <histedit.h>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <sys/types.h>

/// A line that is typed on the terminal, edited with libedit (editline(3)), and the history of such lines.
///
/// What it draws is returned and not written, so that a caller can write it together with other text. All
/// drawings begin where the cursor is: at the start of the prompt's row after `begin` and `drawAgain`, else
/// where the last drawing has left it.
class ZNTLineEditor
{
public:
    ZNTLineEditor();
    ~ZNTLineEditor();
    ZNTLineEditor(const ZNTLineEditor&) = delete;
    ZNTLineEditor& operator=(const ZNTLineEditor&) = delete;

    /// Takes the terminal and begins an empty line behind `prompt`, which is well-formed UTF-8.
    std::string begin(std::string prompt);
    /// Gives the terminal back, which then edits lines by itself. The line is forgotten.
    void end();
    [[nodiscard]] bool isOn() const { return isOn_; }

    enum class Outcome { Going, Line /**< it was ended by Return */, End /**< Ctrl+D on an empty line */ };
    struct Read {
        Outcome outcome = Outcome::Going;
        std::string line;
        std::string drawn;
    };
    /// Reads one key, for which it waits. After a line, the caller ends and begins again.
    Read readKey();
    std::string drawAgain(std::string prompt);

    /// In UTF-8. Valid until the next key.
    [[nodiscard]] std::string_view typed() const;
    [[nodiscard]] std::string_view typedBeforeCursor() const;
    [[nodiscard]] const std::string& prompt() const { return prompt_; }
    void remember(const std::string& line);

    /// Called for Tab with what stands before the cursor (UTF-8). Answers what is to stand there instead;
    /// none leaves it. Optional.
    std::function<std::optional<std::string>(std::string_view before)> whenCompleting;

private:
    static unsigned char complete(EditLine* library, int key);
    static ZNTLineEditor& editorOf(EditLine* library);
    static ssize_t take(void* editor, const char* bytes, std::size_t count);
    static char* promptOf(EditLine* library);
    std::string drawn();

    bool isOn_ = false;
    bool isGathering = false;
    std::string gathered;
    std::string prompt_;
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> canvas; ///< what the library writes to
    std::unique_ptr<History, void (*)(History*)> history_;
    std::unique_ptr<EditLine, void (*)(EditLine*)> library;
};
