#include "ZNTConsoleSettings.h"

#include "ZNTConsoleClient.h"
#include "ZNTConsoleWords.h"
#include "ZNTSessionNotice.h"
#include "ZNTText.h"

using namespace znt::words;

namespace
{

constexpr std::u16string_view remember = u"remember";

} // namespace

void ZNTConsoleSettings::carryOut(std::u16string_view words)
{
    const auto name = firstWord(words);
    if (words.empty())
        show(name);
    else
        change(name, words);
}

void ZNTConsoleSettings::show(std::u16string_view name)
{
    const auto asked = znt::utf8FromText(name);
    const auto& keeper = client.settings();
    const auto say = [this](std::string_view setting, std::string_view value, std::string_view sentence) {
        client.say(znt::textFromUtf8(std::string(setting) + " = " +
                                     std::string(value.empty() ? "(nothing)" : value) + "  " +
                                     std::string(sentence)));
    };
    const bool isOfSeveral = name == remember || asked == znt::listening;
    if (!asked.empty() && !isOfSeveral && !znt::settingNamed(asked)) {
        change(name, u"");
        return;
    }
    for (const auto& row : ZNTSettingsTable)
        if (asked.empty() || row.name == asked)
            say(row.name, znt::settingText(keeper.settings(), row),
                std::string(row.sentence) + (row.follows.empty() ? "" : " ") + znt::followsInWords(row));
    if (name.empty() || asked == znt::listening)
        say(znt::listening, znt::isSetUpForListening(keeper.settings()) ? "on" : "off",
            "Sets all that players who listen want, or all of it back.");
    if (name.empty() || name == remember)
        say("remember", keeper.isRemembering() ? "on" : "off", "Keeps the settings for the next start.");
}

void ZNTConsoleSettings::change(std::u16string_view name, std::u16string_view value)
{
    auto& keeper = client.settings();
    if (name == remember) {
        if (value != u"on" && value != u"off") {
            client.complain(u"Say on or off: /set remember on|off");
            return;
        }
        keeper.setRemembering(value == u"on");
        client.confirm(value == u"on" ? u"The settings are kept for the next start."
                                      : u"The settings end with the program.");
        return;
    }
    const auto before = keeper.settings().silenceKey;
    const auto chosen = keeper.choose(znt::utf8FromText(name), znt::utf8FromText(value));
    if (!chosen) {
        client.complain(znt::textFromUtf8(chosen.error().description));
        return;
    }
    client.session().setSettings(keeper.settings());
    if (znt::utf8FromText(name) == znt::listening)
        client.say(znt::notices::setUpForListening(value == u"on").sentence);
    else
        client.confirm(joined({name, u" is ", value, u"."}));
    if (keeper.settings().silenceKey == ZNTSilenceKey::Control && before != ZNTSilenceKey::Control)
        client.say(u"A terminal does not say when Control is pressed. So any key silences the voice here.");
}
