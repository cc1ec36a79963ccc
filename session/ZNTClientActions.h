#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <stdexcept>
#include <string_view>

/// One thing that a player can have the client do. The window makes its menus, its keys and its keyboard map
/// of these rows, the terminal its commands and their help. A new action is a row here, and the function that
/// the window or the terminal joins to the row's name.
struct ZNTClientAction {
    enum class Kind {
        Command,
        Switch,     ///< on or off; off at the start
        SwitchedOn, ///< the same, on at the start
        Choice,     ///< one of its menu's choices; the first one is on at the start
        Directions, ///< one action for each row of ZNTDirections
        Lines       ///< one action for each of the last lines; "%1" is the number
    };
    enum class Enabled { Always, WhileIdle, WhileConnecting, WhileConnected, WhileWalking };

    std::string_view name; ///< the action's object name; unique

    // The window. Without a menu the action belongs to the terminal alone. "&" stands before the letter that
    // picks it; a menu inside another is written "outer/inner"; several keys stand with " or " between them.
    std::string_view menu = {};
    std::string_view title = {};
    std::string_view keys = {};
    Kind kind = Kind::Command;
    Enabled enabled = Enabled::Always;
    bool startsGroup = false; ///< a line is drawn above it

    // The terminal. Without a word the action belongs to the window alone.
    std::u16string_view word = {};
    std::u16string_view usage = {}; ///< what follows the word
    std::u16string_view help = {};  ///< one sentence
};

namespace znt
{

using Action = ZNTClientAction;

/// In the order of the menus.
inline constexpr auto clientActions = std::to_array<ZNTClientAction>({
    {.name = "connectToServer",
     .menu = "&Game",
     .title = "&Connect",
     .keys = "F5",
     .word = u"connect",
     .usage = u"[HOST PORT]",
     .help = u"Connects to a game; without a name to the one offered last."},
    {.name = "stopConnecting",
     .menu = "&Game",
     .title = "&Stop connecting",
     .keys = "Shift+F5",
     .enabled = Action::Enabled::WhileConnecting},
    {.name = "disconnect",
     .word = u"disconnect",
     .help = u"Ends the connection, or the attempt to make one."},
    {.name = "showZNTMudListController", .menu = "&Game", .title = "&Game list...", .keys = "Ctrl+G"},
    {.name = "standardTelnet",
     .menu = "&Game",
     .title = "Standard &telnet",
     .keys = "Ctrl+Shift+T",
     .kind = Action::Kind::Switch,
     .word = u"standard",
     .usage = u"on|off",
     .help = u"Plays with standard telnet, which most games of today need, from the next connection on."},
    {.name = "resendLastCommand",
     .menu = "&Game",
     .title = "&Resend last command",
     .keys = "Ctrl+R",
     .startsGroup = true,
     .word = u"resend",
     .help = u"Sends your last line again."},
    {.name = "newApp", .menu = "&Game", .title = "&New window", .keys = "Ctrl+Shift+N", .startsGroup = true},
    {.name = "showPreferencesView", .menu = "&Game", .title = "&Preferences...", .keys = "Ctrl+,"},
    {.name = "set",
     .word = u"set",
     .usage = u"[NAME [VALUE]]",
     .help = u"Shows the settings, or changes one; /set remember on keeps them for the next start."},
    {.name = "mccp",
     .word = u"mccp",
     .usage = u"on|off",
     .help = u"Asks the game for compression, or refuses it."},
    {.name = "msp",
     .word = u"msp",
     .usage = u"on|off",
     .help = u"Asks the game for sounds, or refuses them."},
    {.name = "encoding", .word = u"encoding", .help = u"Reads and writes the game's text in this encoding."},
    {.name = "trigger",
     .word = u"trigger",
     .help = u"Answers the game's text by itself; %1 and * in the pattern stand for words."},
    {.name = "reloadTriggers", .word = u"reload", .help = u"Puts changes to the triggers into force."},
    {.name = "macro",
     .word = u"macro",
     .usage = u"add NAME TEXT | list | remove N",
     .help = u"Keeps texts that ~NAME sends; %1 is the first word after it."},
    {.name = "group",
     .word = u"group",
     .usage = u"add NAME | list | use N | remove N",
     .help = u"Keeps macros in groups; new ones go into the one in use."},
    {.name = "mud",
     .word = u"mud",
     .usage = u"add NAME HOST PORT | list | remove N | default N | restore",
     .help = u"Edits the address book."},
    {.name = "muds", .word = u"muds", .help = u"Lists the games of the address book."},
    {.name = "quit",
     .menu = "&Game",
     .title = "&Quit",
     .keys = "Ctrl+Q",
     .startsGroup = true,
     .word = u"quit",
     .help = u"Ends the connection and the program."},

    {.name = "copy", .menu = "&Edit", .title = "&Copy", .keys = "Ctrl+C"},
    {.name = "selectAll", .menu = "&Edit", .title = "Select &all of the output", .keys = "Ctrl+Shift+A"},
    {.name = "find",
     .menu = "&Edit",
     .title = "&Find in the output...",
     .keys = "Ctrl+F",
     .startsGroup = true},
    {.name = "findNext", .menu = "&Edit", .title = "Find &next", .keys = "F3"},
    {.name = "findPrevious", .menu = "&Edit", .title = "Find &previous", .keys = "Shift+F3"},
    {.name = "openWebAddress",
     .menu = "&Edit",
     .title = "Open a &web address...",
     .keys = "Ctrl+Shift+W",
     .startsGroup = true},
    {.name = "sayLineTime", .menu = "&Edit", .title = "Show the &time of a line", .keys = "Ctrl+I"},
    {.name = "clearScreen",
     .menu = "&Edit",
     .title = "C&lear the output",
     .keys = "Ctrl+Shift+L",
     .startsGroup = true},

    {.name = "go",
     .menu = "G&o",
     .kind = Action::Kind::Directions,
     .enabled = Action::Enabled::WhileConnected},
    {.name = "stopWalking",
     .menu = "G&o",
     .title = "Stop wal&ks and running recordings",
     .keys = "Ctrl+.",
     .enabled = Action::Enabled::WhileWalking,
     .startsGroup = true,
     .word = u"stop",
     .help = u"Ends every walk and a recording that runs; !stop ends the walk that was started last."},
    {.name = "keypadWalks",
     .menu = "G&o",
     .title = "Numeric keypad w&alks",
     .kind = Action::Kind::SwitchedOn},

    {.name = "invokeMacro",
     .menu = "&Macros",
     .title = "&Run the selected macro",
     .keys = "Ctrl+M",
     .enabled = Action::Enabled::WhileConnected},
    {.name = "addMacro",
     .menu = "&Macros",
     .title = "&Add macro...",
     .keys = "Ctrl+Shift+M",
     .startsGroup = true},
    {.name = "editMacro", .menu = "&Macros", .title = "&Edit macro...", .keys = "Ctrl+E"},
    {.name = "removeMacro", .menu = "&Macros", .title = "Re&move macro"},
    {.name = "createNewMacroGroup", .menu = "&Macros", .title = "&New group", .startsGroup = true},
    {.name = "deleteMacroGroup", .menu = "&Macros", .title = "&Delete group"},
    {.name = "listMacros",
     .menu = "&Macros",
     .title = "&List macro names in the output",
     .startsGroup = true},

    {.name = "startOrPauseRecording",
     .menu = "&Recorder",
     .title = "&Start recording",
     .keys = "Ctrl+Shift+R",
     .word = u"record",
     .usage = u"[done [NAME SECONDS]]",
     .help = u"Starts or pauses recording what you type; with done ends it, shows the lines and names them."},
    {.name = "doneRecording", .menu = "&Recorder", .title = "&Finish recording...", .keys = "Ctrl+Shift+F"},

    {.name = "keepRecording",
     .menu = "&Recorder",
     .title = "&Keep what was recorded...",
     .keys = "Ctrl+Shift+K",
     .startsGroup = true,
     .word = u"keep",
     .usage = u"NAME [SECONDS]",
     .help = u"Keeps a copy of what was recorded, with its seconds between commands."},
    {.name = "keptRecordings",
     .menu = "&Recorder",
     .title = "K&ept recordings...",
     .keys = "Ctrl+K",
     .word = u"kept",
     .usage = u"[list | show N | add N COMMAND | change N LINE COMMAND | delete N LINE | rename N NAME | "
              u"seconds N SECONDS | remove N]",
     .help = u"Lists and edits the recordings that are kept."},
    {.name = "runRecording",
     .word = u"run",
     .usage = u"NAME [again]",
     .help = u"Runs a kept recording once, or again and again; /stop ends it."},

    {.name = "speechOnOff",
     .menu = "&Speech",
     .title = "&Speak what the game sends",
     .keys = "F8",
     .kind = Action::Kind::Switch,
     .word = u"speech",
     .usage = u"on|off",
     .help = u"Speaks what the game says, or falls silent."},
    {.name = "speechInterruptOnOff",
     .menu = "&Speech",
     .title = "&Interrupt speech when I send a command",
     .keys = "Shift+F8",
     .kind = Action::Kind::Switch,
     .word = u"interrupt",
     .usage = u"on|off",
     .help = u"Lets each line you send cut off what is being spoken."},
    {.name = "replayLastText",
     .menu = "&Speech",
     .title = "&Replay what came since my last command",
     .keys = "F7",
     .startsGroup = true,
     .word = u"replay",
     .help = u"Speaks once more what came since your last line."},
    {.name = "sayPrompt",
     .menu = "&Speech",
     .title = "Say the last pro&mpt",
     .keys = "Ctrl+P",
     .word = u"vitals",
     .help = u"Speaks the game's last prompt, where many games show your health."},
    {.name = "stopSpeaking",
     .menu = "&Speech",
     .title = "S&top speaking",
     .keys = "Shift+F7",
     .word = u"hush",
     .help = u"Silences what is being spoken and what waits."},
    {.name = "mute",
     .word = u"mute",
     .usage = u"on|off",
     .help = u"Silences the game's sounds, or lets them be heard again."},
    {.name = "volume",
     .word = u"volume",
     .usage = u"0 to 100",
     .help = u"Sets how loud the game's sounds are."},
    {.name = "stopAllSounds",
     .menu = "&Speech",
     .title = "Stop all s&ounds",
     .keys = "Ctrl+Shift+S",
     .word = u"quiet",
     .help = u"Ends every sound that plays; the game's next one is heard again."},
    {.name = "previousLine",
     .menu = "&Speech",
     .title = "Say the &previous line",
     .keys = "Ctrl+Up",
     .startsGroup = true},
    {.name = "nextLine", .menu = "&Speech", .title = "Say the &next line", .keys = "Ctrl+Down"},
    {.name = "newestOfChannel",
     .menu = "&Speech/&Channels",
     .title = "Say the &newest line of the channel",
     .keys = "Ctrl+Shift+J"},
    {.name = "olderOfChannel",
     .menu = "&Speech/&Channels",
     .title = "Say the &older line",
     .keys = "Ctrl+Shift+Up"},
    {.name = "newerOfChannel",
     .menu = "&Speech/&Channels",
     .title = "Say the n&ewer line",
     .keys = "Ctrl+Shift+Down"},
    {.name = "nextChannel", .menu = "&Speech/&Channels", .title = "Next &channel", .keys = "Ctrl+J"},
    {.name = "showChannelHistory",
     .menu = "&Speech/&Channels",
     .title = "Channel &history...",
     .keys = "Ctrl+Shift+H",
     .word = u"history",
     .usage = u"[CHANNEL [N]]",
     .help = u"Shows the last lines of a channel, or of all, and speaks them while speech is on."},
    {.name = "line",
     .menu = "&Speech/Say a &line",
     .title = "Line &%1 from the end",
     .keys = "Ctrl+%1",
     .kind = Action::Kind::Lines},
    {.name = "nextWord", .menu = "&Speech/Re&view", .title = "Next &word", .keys = "F2"},
    {.name = "previousWord", .menu = "&Speech/Re&view", .title = "Previous w&ord", .keys = "Shift+F2"},
    {.name = "nextLetter", .menu = "&Speech/Re&view", .title = "Next &letter", .keys = "Ctrl+F2"},
    {.name = "previousLetter",
     .menu = "&Speech/Re&view",
     .title = "Previous le&tter",
     .keys = "Ctrl+Shift+F2"},
    {.name = "findInSaid",
     .menu = "&Speech/Re&view",
     .title = "&Find in what was said...",
     .keys = "Ctrl+F12",
     .startsGroup = true},
    {.name = "findOlderSaid", .menu = "&Speech/Re&view", .title = "Find ol&der", .keys = "F12"},
    {.name = "findNewerSaid", .menu = "&Speech/Re&view", .title = "Find &newer", .keys = "Shift+F12"},
    {.name = "goToLastCommand",
     .menu = "&Speech/Re&view",
     .title = "My last &command",
     .keys = "Ctrl+F7",
     .startsGroup = true},
    {.name = "say",
     .word = u"say",
     .usage = u"[N | find [WORDS] | command]",
     .help = u"Speaks the last N lines once more, the newest first; or the newest line with WORDS, then "
             u"those before it; or your last command."},
    {.name = "sayStatus",
     .menu = "&Speech",
     .title = "Say the stat&us",
     .keys = "Ctrl+T",
     .startsGroup = true},
    {.name = "setUpForListening",
     .menu = "&Speech",
     .title = "Set up for listenin&g",
     .keys = "Ctrl+F8",
     .kind = Action::Kind::Switch,
     .startsGroup = true},

    {.name = "larger", .menu = "&View", .title = "&Larger text", .keys = "Ctrl++ or Ctrl+="},
    {.name = "smaller", .menu = "&View", .title = "&Smaller text", .keys = "Ctrl+-"},
    {.name = "normalSize", .menu = "&View", .title = "&Usual text size", .keys = "Ctrl+0"},
    {.name = "changeFont", .menu = "&View", .title = "&Font...", .keys = "Ctrl+Shift+O"},
    // With Shift instead of Alt, keyboards that have plus above the equals sign would mean larger text.
    {.name = "controlsLarger",
     .menu = "&View",
     .title = "Larger &controls",
     .keys = "Ctrl+Alt++ or Ctrl+Alt+=",
     .startsGroup = true},
    {.name = "controlsSmaller", .menu = "&View", .title = "S&maller controls", .keys = "Ctrl+Alt+-"},
    {.name = "systemColours",
     .menu = "&View/C&olours",
     .title = "Of the &system",
     .kind = Action::Kind::Choice},
    {.name = "lightColours", .menu = "&View/C&olours", .title = "&Light", .kind = Action::Kind::Choice},
    {.name = "darkColours", .menu = "&View/C&olours", .title = "&Dark", .kind = Action::Kind::Choice},
    {.name = "highContrastColours",
     .menu = "&View/C&olours",
     .title = "&High contrast",
     .kind = Action::Kind::Choice},
    {.name = "readableColours",
     .menu = "&View",
     .title = "Re&adable colours in the output",
     .kind = Action::Kind::Switch},
    {.name = "showConnectionRow",
     .menu = "&View",
     .title = "Co&nnection fields",
     .keys = "Shift+F9",
     .kind = Action::Kind::SwitchedOn,
     .startsGroup = true},
    {.name = "showSidePanel",
     .menu = "&View",
     .title = "Directions and mac&ros",
     .keys = "F9",
     .kind = Action::Kind::SwitchedOn},
    {.name = "fullScreen",
     .menu = "&View",
     .title = "Full scr&een",
     .keys = "F11",
     .kind = Action::Kind::Switch},
    {.name = "focusCommandLine",
     .menu = "&View",
     .title = "&Go to the command line",
     .keys = "Ctrl+L",
     .startsGroup = true},
    {.name = "jumpToEnd", .menu = "&View", .title = "Go to the en&d of the output", .keys = "Ctrl+End"},
    {.name = "nextPart", .menu = "&View", .title = "Ne&xt part of the window", .keys = "F6"},
    {.name = "previousPart", .menu = "&View", .title = "&Previous part of the window", .keys = "Shift+F6"},
    {.name = "openMenuBar", .menu = "&View", .title = "Open the menu &bar", .keys = "F10"},

    {.name = "firstSteps", .menu = "&Help", .title = "&First steps"},
    {.name = "manual",
     .menu = "&Help",
     .title = "&Manual",
     .word = u"manual",
     .help = u"Says where the manual is, which explains everything."},
    {.name = "firstHourByEar", .menu = "&Help", .title = "First hour by &ear", .keys = "Ctrl+F1"},
    {.name = "keyboardMap",
     .menu = "&Help",
     .title = "&Keyboard map",
     .keys = "F1",
     .word = u"help",
     .usage = u"[COMMAND]",
     .help = u"Lists the commands, or explains one."},
    {.name = "playDemo",
     .menu = "&Help",
     .title = "&Play the demo game",
     .keys = "Ctrl+Shift+D",
     .enabled = Action::Enabled::WhileIdle},
    {.name = "about", .menu = "&Help", .title = "&About Zantor", .startsGroup = true},
});

/// How many of the last lines have an action of their own.
inline constexpr int numberedLines = 9;

} // namespace znt

/// The name of a row in znt::clientActions. A name that is in no row does not compile.
class ZNTActionName
{
public:
    consteval ZNTActionName(const char* name) : index_(indexOf(name)) {}

    [[nodiscard]] constexpr std::size_t index() const { return index_; }
    [[nodiscard]] constexpr const ZNTClientAction& row() const { return znt::clientActions[index_]; }

private:
    static constexpr std::size_t indexOf(std::string_view name)
    {
        const auto found = std::ranges::find(znt::clientActions, name, &ZNTClientAction::name);
        if (found == znt::clientActions.end())
            throw std::invalid_argument("no such action");
        return static_cast<std::size_t>(found - znt::clientActions.begin());
    }

    std::size_t index_;
};
