#pragma once

#include "ZNTLineSender.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// What a prefixed line can set going.
class ZNTCommandActions
{
public:
    virtual ~ZNTCommandActions() = default;
    virtual void speedwalk(std::u16string_view line) = 0;
    virtual void stopSpeedwalk() = 0;
    [[nodiscard]] virtual std::vector<std::u16string> getAllMacroNames() = 0;
    /// The text of the macro of that name.
    [[nodiscard]] virtual std::optional<std::u16string> getMacroByName(std::u16string_view name) = 0;
    /// Shows a line of the client's own in the output view.
    virtual void insertTextIntoTheWindow(std::u16string_view text) = 0;
};

/// Carries out lines that begin with a prefix: "~" runs a macro, "!" a speed walk, "#" is reserved and
/// swallowed, "@" sends the line as it is, without a further look at prefixes.
///
/// A macro's text is interpreted again, so macros can run macros. One that never ends is stopped at a fixed
/// depth or number of macros, with a message.
class ZNTCommandInterpreter
{
public:
    ZNTCommandInterpreter(ZNTCommandActions& actions, ZNTLineSender& sender)
        : actions(actions),
          sender(sender)
    {
    }

    /// Whether `line` begins with a prefix. Only the low 8 bits of the first UTF-16 unit are looked at, so a
    /// character above U+00FF can pass for one (U+0140 for "@").
    static bool hasPrefix(std::u16string_view line);

    /// Carries out `line`; one without a prefix does nothing.
    void showStrings(std::u16string_view line);

    /// A macro's text with "%1", "%2", ... replaced by the words that follow its name on `line`, which are
    /// parted by single blanks. Without a "%1" in the text nothing is replaced. None where the text would
    /// grow past `longestText`.
    static std::optional<std::u16string> parseMacro(std::u16string_view dataToExecute,
                                                    std::u16string_view line);
    /// Replaces every `key`, a plain text, in `text`.
    static std::u16string replaceKey(std::u16string_view key, std::u16string_view value,
                                     std::u16string_view text);

    static constexpr int mostNestedMacros = 20;
    /// Macros that one line can set going in all.
    static constexpr int mostMacros = 1000;
    /// UTF-16 units that filling in arguments may lead to: macros that double their arguments at each call
    /// would otherwise fill the memory before they meet the other limits.
    static constexpr std::size_t longestText = std::size_t{1} << 20;
    /// UTF-16 units that filling in one line's words may search through: thousands of words for a macro of
    /// thousands of characters. A server can write the words, where a trigger hands them on.
    static constexpr std::size_t mostSearched = std::size_t{64} << 20;

private:
    void runMacroOrList(std::u16string_view name, std::u16string_view line);
    void runMacro(std::u16string_view name, std::u16string_view line);
    void stopMacros(std::u16string_view name, std::u16string_view reason);

    ZNTCommandActions& actions;
    ZNTLineSender& sender;
    int depth = 0;
    int macrosRun = 0;
    bool isStopped = false; ///< a limit was met: the rest of the line is given up
};
