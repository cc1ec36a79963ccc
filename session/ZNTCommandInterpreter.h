#pragma once

#include "ZNTLineSender.h"
#include "ZNTSpeedWalking.h"

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

/// What a prefixed line can set going.
class ZNTCommandActions
{
public:
    virtual ~ZNTCommandActions() = default;
    /// Called for each walk that a line starts, with one and the same route.
    virtual void speedwalk(const std::shared_ptr<const ZNTSpeedWalking::Route>& route) = 0;
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
/// A macro's text is interpreted again, so macros can run macros. A server can write the line, where a
/// trigger hands it on, so what one line sets going has limits (below), and the work is proportional to the
/// line. At a limit a message is shown and the rest of the line is given up.
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
    /// Macros that one line can run in all, those that its macros run included. Each name that "list-macro"
    /// shows counts as one; a list that was begun is shown whole.
    static constexpr int mostMacros = 1000;
    /// UTF-16 units that filling in arguments may lead to, and past which the texts that one line has sent
    /// let no further macro run: macros that double their arguments at each call would otherwise fill the
    /// memory before they meet the other limits.
    static constexpr std::size_t longestText = std::size_t{1} << 20;
    /// UTF-16 units that filling in the arguments of one line may search through: thousands of keys in a text
    /// of thousands of characters.
    static constexpr std::size_t mostSearched = std::size_t{64} << 20;

private:
    /// What a line has set going so far, its macros' lines included, and what it found in the store.
    struct Work {
        int macrosRun = 0;
        std::size_t textSent = 0; ///< UTF-16 units
        std::size_t searched = 0; ///< UTF-16 units
        bool isStopped = false;   ///< a limit was met: the rest of the line is given up
        std::map<std::u16string, std::optional<std::u16string>, std::less<>> macros;
        std::optional<std::set<std::u16string, std::less<>>>
            names; ///< of all macros; read if one does not do
    };
    /// The filled-in texts of one line, by the names on it.
    using FilledTexts = std::map<std::u16string_view, std::u16string>;

    void startOrStopWalks(std::u16string_view line);
    void runMacros(std::u16string_view line);
    void listMacros(std::u16string_view keyword);
    void runMacro(std::u16string_view name, std::u16string_view line, FilledTexts& filled);
    [[nodiscard]] const std::u16string* macroNamed(std::u16string_view name);
    [[nodiscard]] bool mayRunAnother(std::u16string_view name);
    void stopMacros(std::u16string_view name, std::u16string_view reason);

    ZNTCommandActions& actions;
    ZNTLineSender& sender;
    int depth = 0; ///< of macros that run each other; 0 while the line itself is read
    Work work;     ///< of the line that is carried out, not of those that its macros lead to
};
