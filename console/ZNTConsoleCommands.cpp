#include "ZNTConsoleCommands.h"

#include "ZNTConsoleClient.h"
#include "ZNTConsoleEditing.h"
#include "ZNTConsoleSettings.h"
#include "ZNTConsoleWords.h"
#include "ZNTText.h"

using namespace znt::words;

namespace
{

std::u16string_view encodingChoices()
{
    static const auto choices = znt::textFromUtf8(znt::encodingNames("|", "|"));
    return choices;
}

std::u16string_view countWord(std::size_t count)
{
    constexpr std::u16string_view words[] = {u"no", u"one", u"two", u"three", u"four", u"five", u"six"};
    return count < std::size(words) ? words[count] : u"many";
}

} // namespace

ZNTConsoleCommands::ZNTConsoleCommands(ZNTConsoleClient& client) : client(client)
{
    addSessionCommands();
    ZNTConsoleEditing::addCommands(client, commands);
}

ZNTConsoleCommands::~ZNTConsoleCommands() = default;

void ZNTConsoleCommands::addSessionCommands()
{
    auto& session = client.session();
    commands = {
        {u"connect", u"[HOST PORT]", u"Connects to a game; without a name to the one offered last.",
         [this](auto words) { connect(words); }},
        {u"disconnect", u"", u"Ends the connection, or the attempt to make one.",
         [this](auto) { client.disconnect(); }},
        {u"stop", u"", u"Ends every walk; !stop ends the one that was started last.",
         [this](auto) { stopWalks(); }},
        {u"mccp", u"on|off", u"Asks the game for compression, or refuses it.",
         [this, &session](auto word) {
             carryOutSwitch(word, u"/mccp on|off", [&](bool on) {
                 // Without a connection there is nobody to ask, and what comes first is never compressed.
                 if (session.isConnected())
                     session.set_isMccpOnOff(on);
                 else
                     session.acceptCompressionOffers(on);
             });
         }},
        {u"msp", u"on|off", u"Asks the game for sounds, or refuses them.",
         [this, &session](auto word) {
             carryOutSwitch(word, u"/msp on|off", [&](bool on) { session.set_isMspOnOff(on); });
         }},
        {u"speech", u"on|off", u"Speaks what the game says, or falls silent.",
         [this, &session](auto word) {
             carryOutSwitch(word, u"/speech on|off", [&](bool on) {
                 session.setSpeechOnOffBindingState(on ? 1 : 0);
                 session.textToSpeechOnAndOff();
             });
         }},
        {u"interrupt", u"on|off", u"Lets each line you send cut off what is being spoken.",
         [this, &session](auto word) {
             carryOutSwitch(word, u"/interrupt on|off",
                            [&](bool on) { session.setSpeechInterruptOnOffBindingState(on ? 1 : 0); });
         }},
        {u"say", u"[N]", u"Speaks the last N lines once more, the newest first.",
         [this](auto count) { sayAgain(count); }},
        {u"mute", u"on|off", u"Silences the game's sounds, or lets them be heard again.",
         [this](auto word) {
             carryOutSwitch(word, u"/mute on|off", [this](bool on) { client.sounds().setMuted(on); });
         }},
        {u"volume", u"0 to 100", u"Sets how loud the game's sounds are.",
         [this](auto percent) { setVolume(percent); }},
        {u"quiet", u"", u"Ends every sound that plays; the game's next one is heard again.",
         [this](auto) { stopSounds(); }},
        {u"replay", u"", u"Speaks once more what came since your last line.",
         [&session](auto) { session.replayLastText(); }},
        {u"encoding", encodingChoices(), u"Reads and writes the game's text in this encoding.",
         [this](auto name) { changeEncoding(name); }},
        {u"reload", u"", u"Puts changes to the triggers into force.",
         [&session](auto) { session.reloadTriggers(); }},
        {u"resend", u"", u"Sends your last line again.",
         [this, &session](auto) {
             session.resendLastCommand();
             client.complainIfNotConnected();
         }},
        {u"record", u"[done [NAME SECONDS]]",
         u"Starts or pauses recording what you type; with done ends it, shows the lines and names them.",
         [this](auto words) { record(words); }},
        {u"set", u"[NAME [VALUE]]",
         u"Shows the settings, or changes one; /set remember on keeps them for the next start.",
         [this](auto words) { ZNTConsoleSettings(client).carryOut(words); }},
        {u"help", u"[COMMAND]", u"Lists the commands, or explains one.",
         [this](auto name) { showHelp(name); }},
        {u"quit", u"", u"Ends the connection and the program.", [this](auto) { client.quit(); }},
    };
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
    if (meant.size() == 1)
        meant.front()->carryOut(words);
    else if (meant.empty())
        client.complain(joined({u"There is no command /", name,
                                u"; /help lists them. A line for the game that "
                                u"starts with a slash is typed with two."}));
    else
        client.complain(joined({u"/", name, u" could be /", meant[0]->name, u" or /", meant[1]->name, u"."}));
}

void ZNTConsoleCommands::showHelp(std::u16string_view name)
{
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

void ZNTConsoleCommands::carryOutSwitch(std::u16string_view word, std::u16string_view usage,
                                        const std::function<void(bool)>& turn)
{
    if (word == u"on" || word == u"off")
        turn(word == u"on");
    else
        client.complain(joined({u"Say on or off: ", usage}));
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
    if (client.session().isWalking())
        client.session().stopAllWalks();
    else
        client.complain(u"There is no walk to end.");
}

void ZNTConsoleCommands::stopSounds()
{
    if (client.sounds().isPlaying())
        client.session().stopAllSounds();
    else
        client.complain(u"There is no sound to end.");
}

void ZNTConsoleCommands::changeEncoding(std::u16string_view name)
{
    if (const auto encoding = znt::encodingNamed(znt::utf8FromText(name)))
        client.session().changeEncoding(znt::rowOf(*encoding).title);
    else
        client.complain(joined({u"There are ", countWord(ZNTStringEncodings.size()),
                                u" encodings: /encoding ", encodingChoices()}));
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
    if (volume > 100 || (volume == 0 && percent != u"0"))
        client.complain(u"Say how loud, from 0 to 100: /volume 50");
    else
        client.sounds().setMasterVolume(static_cast<float>(volume) / 100);
}

void ZNTConsoleCommands::sayAgain(std::u16string_view count)
{
    const int lines = count.empty() ? 1 : wholeNumber(count);
    if (lines < 1)
        client.complain(u"Say how many lines: /say N");
    else
        client.session().speechReview().lastLines(static_cast<std::size_t>(lines));
}
