#pragma once

#include "ZNTClientActions.h"
#include "ZNTConsoleExchange.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

class ZNTConsoleClient;

/// One command of the terminal client's own.
struct ZNTConsoleCommand {
    std::u16string_view name;
    std::u16string usage;     ///< what follows the name
    std::u16string_view help; ///< one sentence
    std::function<void(std::u16string_view words)> carryOut;
};

/// The terminal client's own commands, "/NAME WORDS": a table of names, what they take and what they do. Bad
/// input is answered with a sentence that says what is wrong, and changes nothing.
class ZNTConsoleCommands
{
public:
    /// The client owns its commands.
    explicit ZNTConsoleCommands(ZNTConsoleClient& client);
    ~ZNTConsoleCommands();

    /// `line` is without the slash. A name may be shortened as long as it is clear.
    void carryOut(std::u16string_view line);
    /// Whether `line`, without the slash, begins with the whole name of a command.
    [[nodiscard]] bool has(std::u16string_view line) const;
    /// What follows the word of `row`, also where another table says it.
    static std::u16string usageOf(const ZNTClientAction& row);

private:
    void addSessionCommands();
    void addRecordings();
    void showHelp(std::u16string_view name);
    void add(ZNTActionName name, std::function<void(std::u16string_view words)> carryOut);
    /// A command that takes "on" or "off".
    void addSwitch(ZNTActionName name, std::function<void(bool)> turn);
    void sayWhereManualIs();
    void connect(std::u16string_view words);
    void stopWalks();
    void stopSounds();
    void changeEncoding(std::u16string_view name);
    void record(std::u16string_view words);
    void setVolume(std::u16string_view percent);
    void sayPrompt();
    void showHistory(std::u16string_view words);
    void sayAgain(std::u16string_view words);
    void findInSaid(std::u16string_view words);

    ZNTConsoleClient& client;
    ZNTConsoleExchange exchange;
    std::vector<ZNTConsoleCommand> commands;
};
