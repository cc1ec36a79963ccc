#pragma once

#include "ZNTResult.h"
#include "ZNTStringEncoding.h"
#include "ZNTTextList.h"

#include <array>
#include <cstddef>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <variant>

/// Which key silences the voice, in every window.
enum class ZNTSilenceKey { None, Any, Return, Control };

/// Which texts of a game are spoken to their end, however late, until newer text comes.
enum class ZNTFinishedTexts { None, First, Every };

/// One value of a setting that is a choice among a few.
struct ZNTSettingChoice {
    std::string_view name;  ///< for --set, /set and the file
    std::string_view words; ///< for the window
    /// What the value was called while the setting was on or off. It is still read, but never written.
    std::string_view formerName = {};
};

namespace znt
{

/// The choices of a setting whose field is of that enum, in the enum's order. A further such setting is an
/// enum, its choices here, and its place in ZNTSettingField.
template <typename Enum>
inline constexpr std::array<ZNTSettingChoice, 0> settingChoices{};

template <>
inline constexpr std::array settingChoices<ZNTSilenceKey>{
    ZNTSettingChoice{"none", "No key"}, ZNTSettingChoice{"any", "Any key"},
    ZNTSettingChoice{"return", "Return"}, ZNTSettingChoice{"control", "Control"}};

template <>
inline constexpr std::array settingChoices<ZNTFinishedTexts>{ZNTSettingChoice{"none", "None", "off"},
                                                             ZNTSettingChoice{"first", "The first one"},
                                                             ZNTSettingChoice{"every", "Every one", "on"}};

} // namespace znt

/// What a player may set. A session is given this value when it is made and on each change. A new value holds
/// the defaults, which are the program's usual behaviour.
struct ZNTSettings {
    ZNTStringEncoding encoding = ZNTStringEncoding::Ascii;
    bool isEncodingNamed = false; ///< no setting: whether the player chose the encoding, so that no game may
    bool compression = false;
    bool sounds = false;
    bool standardTelnet = false;
    bool tellScreenReader = false;
    bool fullColours = false;
    bool webLinks = false;
    bool lineTimes = false;
    bool attention = false;
    bool standardSounds = false;
    bool speech = false;
    bool interruption = false;
    bool systemVoice = false;
    bool pacing = true;
    int rate = 120;
    bool followVoice = false;
    bool catchUp = false;
    ZNTFinishedTexts finishTexts = ZNTFinishedTexts::None;
    bool skipDecoration = false;
    bool shortenRuns = false;
    bool skipControlSequences = false;
    ZNTSilenceKey silenceKey = ZNTSilenceKey::None;
    bool silentEcho = false;
    bool changedPrompts = false;
    bool wholeLines = false;
    bool gagLines = false;
    bool emptyAction = false;
    bool replayWhenOff = false;
    bool speechFollowsReader = false;
    bool stopSounds = false;
    ZNTTextList urgentLines = {};
    ZNTTextList quietLines = {};
    bool channelHistory = false;
    ZNTTextList channels = {"tells: tells you", "tells: You tell", "says: says[,:]", "says: says [\"']",
                            "says: You say"};
    bool speakAnnouncements = false;

    friend bool operator==(const ZNTSettings&, const ZNTSettings&) = default;
};

/// The type of a setting is that of its field: on or off, a number, an encoding, a list of texts, or one of a
/// few choices.
using ZNTSettingField =
    std::variant<bool ZNTSettings::*, int ZNTSettings::*, ZNTStringEncoding ZNTSettings::*,
                 ZNTTextList ZNTSettings::*, ZNTSilenceKey ZNTSettings::*, ZNTFinishedTexts ZNTSettings::*>;

/// Where the window shows a setting.
enum class ZNTSettingTab { Triggers, Macros, Encoding, Speech, Protocols };

namespace znt
{

/// What the window calls its tabs, in the enum's order.
inline constexpr std::array<std::string_view, 5> settingTabTitles{"Triggers", "Macros", "Encoding and text",
                                                                  "Speech", "Sound and compression"};

constexpr std::string_view titleOf(ZNTSettingTab tab)
{
    return settingTabTitles[static_cast<std::size_t>(tab)];
}

} // namespace znt

/// For whom a choice is remembered: the game that is played, or all games. A choice that is made while no
/// game is played counts for all games.
enum class ZNTSettingScope { Player, Game };

struct ZNTSettingRow {
    std::string_view name; ///< for --set, /set and the file
    ZNTSettingField field;
    std::string_view sentence; ///< what it does, for people
    ZNTSettingTab tab;
    ZNTSettingScope scope;
    bool hasOwnControl =
        false;               ///< the window shows it already; the preferences make a control for all others
    int least = 0, most = 0; ///< of a number
    /// Another setting, of the same type, whose value this one has while nobody has chosen one for it.
    std::string_view follows = {};
    /// The words of its control, if that is for all games, with "&" before the letter that picks it; else the
    /// control is for the game that is played.
    std::string_view captionForAllGames = {};
    /// The value that "Set up for listening" gives it; empty if that leaves it alone.
    std::string_view whenListening = {};
    /// The group in the tab that has its control, and the words of that control, with "&" before the letter
    /// that picks it. The sentence stands below. Without words, the control bears the sentence itself.
    std::string_view group = "More";
    std::string_view words = {};
};

namespace znt
{

/// The setting that others follow.
inline constexpr std::string_view standardTelnet = "standard-telnet";
/// The name that stands for all rows with a value in `whenListening`. On gives them that value, off their
/// default.
inline constexpr std::string_view listening = "listening";

} // namespace znt

/// Every setting. The command lines, /set, the preferences and the file are made from this table, so a
/// further setting is a field above, one row here, and the one class that reads it.
inline constexpr std::array ZNTSettingsTable{
    ZNTSettingRow{.name = "encoding",
                  .field = &ZNTSettings::encoding,
                  .sentence = "The encoding of the game's text.",
                  .tab = ZNTSettingTab::Encoding,
                  .scope = ZNTSettingScope::Game,
                  .hasOwnControl = true},
    ZNTSettingRow{.name = "compression",
                  .field = &ZNTSettings::compression,
                  .sentence = "Accepts compression (MCCP2) when the game offers it.",
                  .tab = ZNTSettingTab::Protocols,
                  .scope = ZNTSettingScope::Game,
                  .hasOwnControl = true},
    ZNTSettingRow{.name = "sounds",
                  .field = &ZNTSettings::sounds,
                  .sentence = "Accepts sounds (MSP) when the game offers them.",
                  .tab = ZNTSettingTab::Protocols,
                  .scope = ZNTSettingScope::Game,
                  .hasOwnControl = true},
    ZNTSettingRow{.name = znt::standardTelnet,
                  .field = &ZNTSettings::standardTelnet,
                  .sentence = "Reads telnet as its standards say, which most games need today, from the next "
                              "connection on.",
                  .tab = ZNTSettingTab::Protocols,
                  .scope = ZNTSettingScope::Game,
                  .captionForAllGames = "Standard &telnet for all games",
                  .group = "Telnet"},
    ZNTSettingRow{.name = "tell-screen-reader",
                  .field = &ZNTSettings::tellScreenReader,
                  .sentence = "With standard telnet, lets games that ask know that you use a screen reader.",
                  .tab = ZNTSettingTab::Speech,
                  .scope = ZNTSettingScope::Player,
                  .group = "Screen reader",
                  .words = "Let games know that I use a screen reader"},
    ZNTSettingRow{.name = "full-colours",
                  .field = &ZNTSettings::fullColours,
                  .sentence = "Shows all colours and styles of text that terminals have.",
                  .tab = ZNTSettingTab::Encoding,
                  .scope = ZNTSettingScope::Game,
                  .follows = znt::standardTelnet,
                  .group = "How text is shown",
                  .words = "All colours and styles"},
    ZNTSettingRow{.name = "web-links",
                  .field = &ZNTSettings::webLinks,
                  .sentence = "Underlines web addresses in the window; a click on one asks to open it.",
                  .tab = ZNTSettingTab::Encoding,
                  .scope = ZNTSettingScope::Player,
                  .group = "How text is shown",
                  .words = "Web addresses as links"},
    ZNTSettingRow{.name = "line-times",
                  .field = &ZNTSettings::lineTimes,
                  .sentence = "Shows in the window when a line came, while the pointer is over it.",
                  .tab = ZNTSettingTab::Encoding,
                  .scope = ZNTSettingScope::Player,
                  .group = "How text is shown",
                  .words = "Time of a line under the pointer"},
    ZNTSettingRow{.name = "attention",
                  .field = &ZNTSettings::attention,
                  .sentence = "Marks the window in the taskbar when text comes while you are in another "
                              "program, and counts its lines in the title.",
                  .tab = ZNTSettingTab::Encoding,
                  .scope = ZNTSettingScope::Player,
                  .group = "How text is shown",
                  .words = "Attention in the taskbar"},
    ZNTSettingRow{.name = "standard-sounds",
                  .field = &ZNTSettings::standardSounds,
                  .sentence = "Reads sound tags as their standard says, also without a folder in the name.",
                  .tab = ZNTSettingTab::Protocols,
                  .scope = ZNTSettingScope::Game,
                  .follows = znt::standardTelnet,
                  .group = "Sounds",
                  .words = "Sound tags as their standard says"},
    ZNTSettingRow{.name = "speech",
                  .field = &ZNTSettings::speech,
                  .sentence = "Speaks what the game sends.",
                  .tab = ZNTSettingTab::Speech,
                  .scope = ZNTSettingScope::Player,
                  .hasOwnControl = true},
    ZNTSettingRow{.name = "interruption",
                  .field = &ZNTSettings::interruption,
                  .sentence = "Lets each line you send cut off what is being spoken.",
                  .tab = ZNTSettingTab::Speech,
                  .scope = ZNTSettingScope::Player,
                  .hasOwnControl = true},
    ZNTSettingRow{.name = "system-voice",
                  .field = &ZNTSettings::systemVoice,
                  .sentence = "Uses the system voice even while the screen reader runs.",
                  .tab = ZNTSettingTab::Speech,
                  .scope = ZNTSettingScope::Player,
                  .hasOwnControl = true},
    ZNTSettingRow{.name = "pacing",
                  .field = &ZNTSettings::pacing,
                  .sentence = "Paces spoken lines by their number of words.",
                  .tab = ZNTSettingTab::Speech,
                  .scope = ZNTSettingScope::Player,
                  .hasOwnControl = true},
    ZNTSettingRow{.name = "rate",
                  .field = &ZNTSettings::rate,
                  .sentence = "Words per minute, for the pacing of spoken lines.",
                  .tab = ZNTSettingTab::Speech,
                  .scope = ZNTSettingScope::Player,
                  .hasOwnControl = true,
                  .least = 10,
                  .most = 600},
    ZNTSettingRow{.name = "follow-voice",
                  .field = &ZNTSettings::followVoice,
                  .sentence = "Speaks each line as soon as the voice has ended the last one.",
                  .tab = ZNTSettingTab::Speech,
                  .scope = ZNTSettingScope::Player,
                  .whenListening = "on",
                  .group = "Pace",
                  .words = "Follow the voice"},
    ZNTSettingRow{.name = "catch-up",
                  .field = &ZNTSettings::catchUp,
                  .sentence = "Skips the oldest lines when more than 50 wait to be spoken, or one for more "
                              "than 5 seconds, and says how many.",
                  .tab = ZNTSettingTab::Speech,
                  .scope = ZNTSettingScope::Player,
                  .whenListening = "on",
                  .group = "Pace",
                  .words = "Catch up by skipping the oldest lines"},
    ZNTSettingRow{.name = "finish-texts",
                  .field = &ZNTSettings::finishTexts,
                  .sentence =
                      "Which texts are said to their end, unless newer text comes. The first one is all that "
                      "comes before your first line; every one is each text of up to 30 lines.",
                  .tab = ZNTSettingTab::Speech,
                  .scope = ZNTSettingScope::Player,
                  .whenListening = "first",
                  .group = "Pace",
                  .words = "Finish texts"},
    ZNTSettingRow{.name = "skip-decoration",
                  .field = &ZNTSettings::skipDecoration,
                  .sentence = "Does not speak lines without letters or digits.",
                  .tab = ZNTSettingTab::Speech,
                  .scope = ZNTSettingScope::Player,
                  .whenListening = "on",
                  .group = "What is spoken",
                  .words = "Leave out decoration"},
    ZNTSettingRow{.name = "shorten-runs",
                  .field = &ZNTSettings::shortenRuns,
                  .sentence =
                      "Speaks a character that is repeated three or more times, such as a dash, as one.",
                  .tab = ZNTSettingTab::Speech,
                  .scope = ZNTSettingScope::Player,
                  .whenListening = "on",
                  .group = "What is spoken",
                  .words = "Shorten repeated characters"},
    ZNTSettingRow{.name = "skip-control-sequences",
                  .field = &ZNTSettings::skipControlSequences,
                  .sentence = "Does not speak the control sequences that a game sends for terminals.",
                  .tab = ZNTSettingTab::Speech,
                  .scope = ZNTSettingScope::Player,
                  .whenListening = "on",
                  .group = "What is spoken",
                  .words = "Leave out control sequences"},
    // Control types nothing, so a player who listens while typing loses no line to a letter.
    ZNTSettingRow{.name = "silence-key",
                  .field = &ZNTSettings::silenceKey,
                  .sentence =
                      "The key that silences the voice. If one is set, a line that you send leaves at once.",
                  .tab = ZNTSettingTab::Speech,
                  .scope = ZNTSettingScope::Player,
                  .whenListening = "control",
                  .group = "Replay and silence",
                  .words = "Silence &key"},
    ZNTSettingRow{.name = "silent-echo",
                  .field = &ZNTSettings::silentEcho,
                  .sentence = "Does not speak the lines that you send.",
                  .tab = ZNTSettingTab::Speech,
                  .scope = ZNTSettingScope::Player,
                  .whenListening = "on",
                  .group = "What is spoken",
                  .words = "Leave out my own lines"},
    ZNTSettingRow{.name = "changed-prompts",
                  .field = &ZNTSettings::changedPrompts,
                  .sentence = "Speaks a prompt only if it differs from the last one.",
                  .tab = ZNTSettingTab::Speech,
                  .scope = ZNTSettingScope::Player,
                  .whenListening = "on",
                  .group = "What is spoken",
                  .words = "Prompts only when they change"},
    ZNTSettingRow{.name = "whole-lines",
                  .field = &ZNTSettings::wholeLines,
                  .sentence = "Shows and speaks each finished line at once; only a prompt waits.",
                  .tab = ZNTSettingTab::Encoding,
                  .scope = ZNTSettingScope::Player,
                  .whenListening = "on",
                  .group = "How text is shown",
                  .words = "Each line at once"},
    ZNTSettingRow{.name = "gag-lines",
                  .field = &ZNTSettings::gagLines,
                  .sentence =
                      "\"Not spoken\" silences only the lines that match, not all that came with them.",
                  .tab = ZNTSettingTab::Triggers,
                  .scope = ZNTSettingScope::Player,
                  .whenListening = "on",
                  .group = "How triggers act",
                  .words = "Silence only the lines that match"},
    ZNTSettingRow{.name = "empty-action",
                  .field = &ZNTSettings::emptyAction,
                  .sentence = "A trigger with an empty command sends nothing, instead of an empty line.",
                  .tab = ZNTSettingTab::Triggers,
                  .scope = ZNTSettingScope::Player,
                  .whenListening = "on",
                  .group = "How triggers act",
                  .words = "Send nothing for an empty command"},
    ZNTSettingRow{.name = "replay-when-off",
                  .field = &ZNTSettings::replayWhenOff,
                  .sentence = "Replays, and says the prompt, also while speech is off.",
                  .tab = ZNTSettingTab::Speech,
                  .scope = ZNTSettingScope::Player,
                  .whenListening = "on",
                  .group = "Replay and silence",
                  .words = "Replay while speech is off"},
    ZNTSettingRow{.name = "speech-follows-reader",
                  .field = &ZNTSettings::speechFollowsReader,
                  .sentence = "Starts speech when a screen reader comes, unless you have switched speech.",
                  .tab = ZNTSettingTab::Speech,
                  .scope = ZNTSettingScope::Player,
                  .whenListening = "on",
                  .group = "Screen reader",
                  .words = "Start speech with the screen reader"},
    ZNTSettingRow{.name = "stop-sounds",
                  .field = &ZNTSettings::stopSounds,
                  .sentence = "Ends all sounds when the connection ends.",
                  .tab = ZNTSettingTab::Protocols,
                  .scope = ZNTSettingScope::Player,
                  .whenListening = "on",
                  .group = "Sounds",
                  .words = "Stop sounds at the end of a connection"},
    ZNTSettingRow{.name = "urgent-lines",
                  .field = &ZNTSettings::urgentLines,
                  .sentence = "Patterns of lines that are spoken at once, before all that waits.",
                  .tab = ZNTSettingTab::Speech,
                  .scope = ZNTSettingScope::Player,
                  .group = "What is spoken",
                  .words = "Lines to speak at once"},
    ZNTSettingRow{.name = "quiet-lines",
                  .field = &ZNTSettings::quietLines,
                  .sentence = "Patterns of lines that are shown but not spoken.",
                  .tab = ZNTSettingTab::Speech,
                  .scope = ZNTSettingScope::Player,
                  .group = "What is spoken",
                  .words = "Lines not to speak"},
    ZNTSettingRow{.name = "channel-history",
                  .field = &ZNTSettings::channelHistory,
                  .sentence = "Keeps the last 100 lines of each channel, such as tells.",
                  .tab = ZNTSettingTab::Speech,
                  .scope = ZNTSettingScope::Player,
                  .whenListening = "on",
                  .group = "Channels",
                  .words = "Keep the last lines of each channel"},
    ZNTSettingRow{.name = "channels",
                  .field = &ZNTSettings::channels,
                  .sentence = "Channels of the history, each pattern as NAME: PATTERN.",
                  .tab = ZNTSettingTab::Speech,
                  .scope = ZNTSettingScope::Player,
                  .group = "Channels",
                  .words = "Patterns of the channels"},
    ZNTSettingRow{.name = "speak-announcements",
                  .field = &ZNTSettings::speakAnnouncements,
                  .sentence =
                      "Lets the client's own voice say alerts, marks and other news of the window while "
                      "speech is on and no screen reader runs.",
                  .tab = ZNTSettingTab::Speech,
                  .scope = ZNTSettingScope::Player,
                  .whenListening = "on",
                  .group = "Screen reader",
                  .words = "Speak the news of the window"},
};

/// Values by the names of their settings, as text: "on" or "off", a number, the name of an encoding or of a
/// choice, or the texts of a list as `znt::joinedTexts` writes them.
using ZNTSettingValues = std::map<std::string, std::string, std::less<>>;

namespace znt
{

/// Null if there is no such setting.
const ZNTSettingRow* settingNamed(std::string_view name);

/// A sentence about what the setting follows; empty if it follows none.
std::string followsInWords(const ZNTSettingRow& row);

std::string settingText(const ZNTSettings& settings, const ZNTSettingRow& row);

/// What the setting may be, in words: "on or off", "a number from 10 to 600".
std::string valuesInWords(const ZNTSettingRow& row);

/// Of a setting that is one of a few choices; else empty.
std::span<const ZNTSettingChoice> choicesOf(const ZNTSettingRow& row);

/// What `name` and `text` mean: one value, or those of all rows that `listening` stands for.
ZNTSettingValues valuesMeantBy(std::string_view name, std::string_view text);

/// Whether every row that `listening` stands for has its value for it.
bool isSetUpForListening(const ZNTSettings& settings);

/// Changes one setting, or all that `listening` stands for. The error is a sentence that says what is wrong
/// with the name or the value; then nothing is changed.
ZNTResult<void> changeSetting(ZNTSettings& settings, std::string_view name, std::string_view text);

/// Adds what "NAME=VALUE" says to `values`. The error is a sentence, as above.
ZNTResult<void> addAssignment(ZNTSettingValues& values, std::string_view assignment);

/// What is wrong with an assignment; empty if nothing is. For the check of a command line.
std::string complaintAboutAssignment(const std::string& assignment);

} // namespace znt
