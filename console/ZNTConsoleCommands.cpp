#include "ZNTConsoleCommands.h"

#include "ZNTChannelHistory.h"
#include "ZNTConsoleClient.h"
#include "ZNTConsoleEditing.h"
#include "ZNTConsoleRecordings.h"
#include "ZNTConsoleSettings.h"
#include "ZNTConsoleTriggers.h"
#include "ZNTConsoleWords.h"
#include "ZNTLogger.h"
#include "ZNTRecorder.h"
#include "ZNTSpeechReview.h"
#include "ZNTSpeechSynth.h"
#include "ZNTText.h"

#include <algorithm>
#include <filesystem>
#include <memory>

using namespace znt::words;

namespace
{

std::u16string encodingChoices() { return znt::textFromUtf8(znt::encodingNames("|", "|")); }

std::u16string_view countWord(std::size_t count)
{
    constexpr std::u16string_view words[] = {u"no", u"one", u"two", u"three", u"four", u"five", u"six"};
    return count < std::size(words) ? words[count] : u"many";
}

} // namespace

ZNTConsoleCommands::ZNTConsoleCommands(ZNTConsoleClient& client)
    : client(client),
      exchange(client.replies(), client.database(), client.places().home,
               [&client] { client.macroGroups().reload(); })
{
    addSessionCommands();
    ZNTConsoleEditing::addCommands(client,
                                   [this](auto name, auto carryOut) { add(name, std::move(carryOut)); });
}

ZNTConsoleCommands::~ZNTConsoleCommands() = default;

/// In the order in which /help lists them.
void ZNTConsoleCommands::addSessionCommands()
{
    auto& session = client.session();
    add("connectToServer", [this](auto words) { connect(words); });
    add("disconnect", [this](auto) { client.disconnect(); });
    add("stopWalking", [this](auto) { stopWalks(); });
    addSwitch("mccp", [&session](bool on) {
        // Without a connection there is nobody to ask, and what comes first is never compressed.
        if (session.isConnected())
            session.set_isMccpOnOff(on);
        else
            session.acceptCompressionOffers(on);
    });
    addSwitch("standardTelnet", [this](bool on) { client.setStandardTelnet(on); });
    addSwitch("msp", [&session](bool on) { session.set_isMspOnOff(on); });
    addSwitch("speechOnOff", [&session](bool on) {
        session.setSpeechOnOffBindingState(on ? 1 : 0);
        session.textToSpeechOnAndOff();
    });
    addSwitch("speechInterruptOnOff",
              [&session](bool on) { session.setSpeechInterruptOnOffBindingState(on ? 1 : 0); });
    add("say", [this](auto count) { sayAgain(count); });
    add("showChannelHistory", [this](auto words) { showHistory(words); });
    addSwitch("mute", [this](bool on) { client.sounds().setMuted(on); });
    add("volume", [this](auto percent) { setVolume(percent); });
    add("stopAllSounds", [this](auto) { stopSounds(); });
    add("replayLastText", [&session](auto) { session.replayLastText(); });
    add("sayPrompt", [this](auto) { sayPrompt(); });
    add("stopSpeaking", [&session](auto) { session.stopSpeaking(); });
    add("encoding", [this](auto name) { changeEncoding(name); });
    add("reloadTriggers", [this, &session](auto) {
        session.reloadTriggers();
        client.confirm(u"The triggers are in force.");
    });
    add("resendLastCommand", [this, &session](auto) {
        session.resendLastCommand();
        client.complainIfNotConnected();
    });
    add("exportRecords", [this](auto file) { exchange.exportTo(file); });
    add("importRecords", [this](auto file) { exchange.importFrom(file); });
    add("showLogFolder", [this](auto) { client.say(znt::textFromUtf8(ZNTLogger::folder(client.places()))); });
    add("startOrPauseRecording", [this](auto words) { record(words); });
    addRecordings();
    add("set", [this](auto words) { ZNTConsoleSettings(client).carryOut(words); });
    add("keyboardMap", [this](auto name) { showHelp(name); });
    add("manual", [this](auto) { sayWhereManualIs(); });
    add("quit", [this](auto) { client.quit(); });
}

void ZNTConsoleCommands::addRecordings()
{
    auto& session = client.session();
    const auto recordings = std::make_shared<ZNTConsoleRecordings>(
        client.replies(), client.keptRecordings(),
        ZNTConsoleRecordings::Session{
            .recorded = [&session] { return session.recorder().getACopyOfTheCommands(); },
            .run = [&session](const auto& recording,
                              auto times) { return session.runRecording(recording, times); }});
    add("keepRecording", [recordings](auto words) { recordings->keep(words); });
    add("keptRecordings", [recordings](auto words) { recordings->editKept(words); });
    add("runRecording", [recordings](auto words) { recordings->run(words); });
}

void ZNTConsoleCommands::add(ZNTActionName name, std::function<void(std::u16string_view)> carryOut)
{
    const ZNTClientAction& row = name.row();
    commands.push_back({row.word, usageOf(row), row.help, std::move(carryOut)});
}

std::u16string ZNTConsoleCommands::usageOf(const ZNTClientAction& row)
{
    if (&row == &ZNTActionName("encoding").row())
        return encodingChoices();
    if (&row == &ZNTActionName("trigger").row())
        return ZNTConsoleTriggers::usage();
    return std::u16string(row.usage);
}

void ZNTConsoleCommands::addSwitch(ZNTActionName name, std::function<void(bool)> turn)
{
    add(name, [this, &row = name.row(), turn = std::move(turn)](std::u16string_view word) {
        if (word == u"on" || word == u"off") {
            turn(word == u"on");
            client.confirm(joined({row.word, u" is ", word, u"."}));
        } else {
            client.complain(joined({u"Say on or off: /", row.word, u" ", row.usage}));
        }
    });
}

bool ZNTConsoleCommands::has(std::u16string_view line) const
{
    const auto name = firstWord(line);
    return std::any_of(commands.begin(), commands.end(),
                       [&](const auto& command) { return command.name == name; });
}

void ZNTConsoleCommands::carryOut(std::u16string_view line)
{
    auto words = line;
    const auto name = firstWord(words);
    std::vector<const ZNTConsoleCommand*> meant;
    for (const auto& command : commands) {
        if (command.name == name) {
            meant = {&command};
            break;
        }
        if (!name.empty() && command.name.starts_with(name))
            meant.push_back(&command);
    }
    if (meant.size() == 1) {
        meant.front()->carryOut(words);
        return;
    }
    if (meant.empty()) {
        client.complain(joined({u"There is no command /", name,
                                u"; /help lists them. A line for the game that "
                                u"starts with a slash is typed with two."}));
        return;
    }
    auto choices = joined({u"/", name, u" could be "});
    for (const auto* command : meant)
        choices += joined({command == meant.front()  ? u"/"
                           : command == meant.back() ? u" or /"
                                                     : u", /",
                           command->name});
    client.complain(choices + u".");
}

void ZNTConsoleCommands::showHelp(std::u16string_view name)
{
    if (name.starts_with(u'/')) // as the command itself is typed
        name.remove_prefix(1);
    bool isKnown = false;
    for (const auto& command : commands) {
        if (!name.empty() && command.name != name)
            continue;
        isKnown = true;
        client.say(joined(
            {u"/", command.name, command.usage.empty() ? u"" : u" ", command.usage, u"  ", command.help}));
    }
    if (!isKnown)
        client.complain(joined({u"There is no command /", name, u"; /help lists them."}));
    else if (name.empty())
        client.say(
            u"Lines for the game: ~NAME runs a macro, !3n2e walks, !stop stops, @ sends a line as it is.");
}

void ZNTConsoleCommands::sayWhereManualIs()
{
    const auto page = client.places().resource("manual.html");
    std::error_code unreadable;
    if (std::filesystem::exists(page, unreadable))
        client.say(joined({u"The manual is ", znt::textFromUtf8(page), u". Any web browser opens it."}));
    else
        client.complain(
            joined({u"The manual is not installed: there is no ", znt::textFromUtf8(page), u"."}));
}

void ZNTConsoleCommands::connect(std::u16string_view words)
{
    if (words.empty()) {
        client.connect(u"", 0);
        return;
    }
    const auto host = firstWord(words);
    const int port = portNumber(words);
    if (port == 0)
        client.complain(u"Name a host and a port from 1 to 65535: /connect HOST PORT");
    else
        client.connect(host, port);
}

void ZNTConsoleCommands::stopWalks()
{
    auto& session = client.session();
    const std::u16string recording(session.runningRecording());
    if (!session.isWalking() && recording.empty()) {
        client.complain(u"There is no walk to end.");
        return;
    }
    session.stopAllThatRuns();
    client.confirm(recording.empty() ? u"No walk goes on."
                                     : joined({u"The recording ", recording, u" is stopped."}));
}

void ZNTConsoleCommands::stopSounds()
{
    if (!client.sounds().isPlaying()) {
        client.complain(u"There is no sound to end.");
        return;
    }
    client.session().stopAllSounds();
    client.confirm(u"No sound plays.");
}

void ZNTConsoleCommands::changeEncoding(std::u16string_view name)
{
    const auto encoding = znt::encodingNamed(znt::utf8FromText(name));
    if (!encoding) {
        client.complain(joined({u"There are ", countWord(ZNTStringEncodings.size()),
                                u" encodings: /encoding ", encodingChoices()}));
        return;
    }
    client.session().changeEncoding(*encoding);
    client.confirm(joined({u"The encoding is ", name, u"."}));
}

void ZNTConsoleCommands::record(std::u16string_view words)
{
    if (words.empty()) {
        client.session().startOrPauseRecording();
        client.say(client.session().recorder()._recorderState() == 1 ? u"Recording."
                                                                     : u"Recording is paused.");
        client.complainIfNotConnected();
        return;
    }
    if (firstWord(words) != u"done") {
        client.complain(u"Start or pause with /record, end with /record done [NAME SECONDS].");
        return;
    }
    const auto name = firstWord(words);
    client.finishRecording(name, words);
    client.complainIfNotConnected();
}

void ZNTConsoleCommands::setVolume(std::u16string_view percent)
{
    const int volume = wholeNumber(percent);
    if (volume > 100 || (volume == 0 && percent != u"0")) {
        client.complain(u"Say how loud, from 0 to 100: /volume 50");
        return;
    }
    client.sounds().setMasterVolume(static_cast<float>(volume) / 100);
    client.confirm(joined({u"The volume is ", percent, u"."}));
}

/// A player whose screen reader reads the terminal has no voice of ours, and gets the prompt as a line.
void ZNTConsoleCommands::sayPrompt()
{
    const auto& session = client.session();
    client.session().sayPrompt();
    if (session.speechOnOffBindingState() != 1)
        client.confirm(session.lastPrompt().empty() ? u"No prompt yet." : session.lastPrompt());
}

void ZNTConsoleCommands::sayAgain(std::u16string_view words)
{
    auto& review = client.session().speechReview();
    auto rest = words;
    const auto first = firstWord(rest);
    const int lines = words.empty() ? 1 : wholeNumber(words);
    if (first == u"find")
        findInSaid(rest);
    else if (words == u"command")
        review.goToLastCommand();
    else if (lines < 1)
        client.complain(u"Say how many lines: /say N");
    else
        review.lastLines(static_cast<std::size_t>(lines));
}

/// The same words once more, or none, find the line before.
void ZNTConsoleCommands::findInSaid(std::u16string_view words)
{
    auto& review = client.session().speechReview();
    if (!words.empty() && review.searchedText() != words)
        review.find(words);
    else if (!review.searchedText().empty())
        review.findOlder();
    else
        client.complain(u"Say which words: /say find WORDS");
}

/// The oldest of the lines first, as they came.
void ZNTConsoleCommands::showHistory(std::u16string_view words)
{
    constexpr std::size_t linesUnlessAsked = 10;
    auto& session = client.session();
    auto& history = session.channelHistory();
    auto channel = words;
    std::size_t count = linesUnlessAsked;
    const auto last = words.substr(words.rfind(u' ') + 1);
    if (const int number = wholeNumber(last); number > 0 && !history.has(words)) {
        count = static_cast<std::size_t>(number);
        channel = znt::trimmedOfWhitespace(words.substr(0, words.size() - last.size()));
    }
    if (!channel.empty() && !history.channelNames().empty() && !history.has(channel)) {
        client.complain(joined({u"There is no channel ", channel, u". The setting channels lists them."}));
        return;
    }
    const auto lines = history.lines(channel);
    if (lines.empty())
        client.complain(history.nothingInWords(channel));
    for (auto at = lines.size() - std::min(lines.size(), count); at < lines.size(); ++at) {
        const auto text = joined({lines[at].channel, u", ", history.inWords(lines[at])});
        client.say(text);
        if (session.speechOnOffBindingState() == 1)
            session.zntSpeechSynth().speakBeforeWaiting(text);
    }
}
