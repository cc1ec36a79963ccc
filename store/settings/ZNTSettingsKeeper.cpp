#include "ZNTSettingsKeeper.h"

#include <algorithm>
#include <utility>

namespace
{

/// The games of the file under their keys: the file may come from a version that kept the text of the fields.
void useGameKeys(ZNTSettingsFile::Content& content)
{
    for (auto& [place, values] : std::exchange(content.games, {})) {
        const auto blank = std::min(place.rfind(' '), place.size());
        auto& ofGame =
            content.games[znt::gameKey(place.substr(0, blank), std::string_view(place).substr(blank))];
        for (auto& [name, text] : values)
            ofGame.insert_or_assign(name, std::move(text));
    }
}

/// Whether any of `values` is in force.
bool countsIn(const ZNTSettings& settings, const ZNTSettingValues& values)
{
    return std::ranges::any_of(values, [&](const auto& value) {
        const auto* row = znt::settingNamed(value.first);
        return row && znt::settingText(settings, *row) == value.second;
    });
}

} // namespace

ZNTSettingsKeeper::ZNTSettingsKeeper(const ZNTFilePlaces& places, ZNTPlatformLog& log,
                                     ZNTSettingValues ofCommandLine)
    : file(places, log),
      remembered(file.read()),
      known(ZNTKnownGames::shipped(places, log)),
      ofCommandLine(std::move(ofCommandLine))
{
    useGameKeys(remembered);
    weigh();
}

ZNTResult<void> ZNTSettingsKeeper::choose(std::string_view name, std::string_view text)
{
    if (name == znt::listening)
        return chooseForAllGames(name, text);
    auto tried = inForce;
    if (auto changed = znt::changeSetting(tried, name, text); !changed)
        return changed;
    ofCommandLine.erase(std::string(name));
    if (const auto ofGame = chosenForGames.find(game); ofGame != chosenForGames.end())
        ofGame->second.erase(std::string(name));
    chosen.insert_or_assign(std::string(name), std::string(text));
    store(*znt::settingNamed(name), text);
    weigh();
    return {};
}

ZNTResult<void> ZNTSettingsKeeper::chooseForAllGames(std::string_view name, std::string_view text)
{
    auto tried = inForce;
    if (auto changed = znt::changeSetting(tried, name, text); !changed)
        return changed;
    const auto values = znt::valuesMeantBy(name, text);
    for (const auto& [each, value] : values) {
        ofCommandLine.erase(each);
        chosen.erase(each);
        chosenForAllGames.insert_or_assign(each, value);
    }
    store("", values);
    weigh();
    return {};
}

ZNTResult<void> ZNTSettingsKeeper::chooseForGame(const std::string& game, std::string_view name,
                                                 std::string_view text)
{
    const std::string setting(name);
    if (text.empty()) {
        chosenForGames[game].erase(setting);
        remembered.games[game].erase(setting);
        file.forget(game, name);
        weigh();
        return {};
    }
    auto tried = inForce;
    if (auto changed = znt::changeSetting(tried, name, text); !changed)
        return changed;
    chosenForGames[game].insert_or_assign(setting, std::string(text));
    store(game, {{setting, std::string(text)}});
    weigh();
    return {};
}

std::string ZNTSettingsKeeper::chosenForGame(const std::string& game, std::string_view name) const
{
    for (const auto* games : {&chosenForGames, &remembered.games})
        if (const auto ofGame = games->find(game); ofGame != games->end())
            if (const auto value = ofGame->second.find(name); value != ofGame->second.end())
                return value->second;
    return {};
}

ZNTSettings ZNTSettingsKeeper::usualSettingsOf(const std::string& game) const
{
    static const ZNTSettingValues none;
    auto all = layers(game);
    all[OwnOfGame] = all[OwnOfGameNow] = &none;
    NamedBy ignored;
    return weighed(all, ignored);
}

void ZNTSettingsKeeper::noteChoices(const ZNTSettings& ofSession)
{
    for (const auto& row : ZNTSettingsTable)
        if (const auto text = znt::settingText(ofSession, row); text != znt::settingText(inForce, row))
            static_cast<void>(choose(row.name, text)); // a value that a session has is a good one
}

void ZNTSettingsKeeper::beginGame(std::string_view host, std::string_view port)
{
    atConnect.reset();
    game = znt::gameKey(host, port);
    if (game == demoAddress)
        game = znt::gameKey("demo", "");
    weigh();
}

void ZNTSettingsKeeper::noteDemoGame(std::string_view host, std::string_view port)
{
    demoAddress = znt::gameKey(host, port);
}

void ZNTSettingsKeeper::gameConnected() { atConnect = inForce; }

void ZNTSettingsKeeper::endGame()
{
    atConnect.reset();
    game.clear();
    weigh();
}

bool ZNTSettingsKeeper::mayNeedHint() const
{
    const auto all = layers(game);
    return all[KnownGame]->empty() && all[OwnOfGame]->empty() && all[OwnOfGameNow]->empty() &&
           !namedBy.contains(znt::standardTelnet);
}

void ZNTSettingsKeeper::setRemembering(bool isToRemember)
{
    if (!isToRemember) {
        file.remove();
        return;
    }
    file.begin();
    store("", chosenForAllGames);
    for (const auto& [name, text] : chosen)
        store(*znt::settingNamed(name), text);
    for (const auto& [ofGame, values] : chosenForGames)
        store(ofGame, values);
    if (whenRemembering)
        whenRemembering();
}

void ZNTSettingsKeeper::store(const ZNTSettingRow& row, std::string_view text)
{
    store(row.scope == ZNTSettingScope::Game ? std::string_view(game) : std::string_view(),
          {{std::string(row.name), std::string(text)}});
}

/// `whose` is the key of a game, or empty for all games.
void ZNTSettingsKeeper::store(std::string_view whose, const ZNTSettingValues& values)
{
    if (!isRemembering())
        return;
    auto& known = whose.empty() ? remembered.player : remembered.games[std::string(whose)];
    for (const auto& [name, text] : values)
        known.insert_or_assign(name, text);
    file.store(whose, values);
}

ZNTSettingsKeeper::Layers ZNTSettingsKeeper::layers(std::string_view game) const
{
    static const ZNTSettingValues none;
    const auto ofGameIn = [&](const auto& games) {
        const auto own = games.find(game);
        return own == games.end() ? &none : &own->second;
    };
    return {&remembered.player,
            &chosenForAllGames,
            &known.settingsOf(game),
            ofGameIn(remembered.games),
            &chosen,
            &ofCommandLine,
            ofGameIn(chosenForGames)};
}

ZNTSettings ZNTSettingsKeeper::settingsForAllGames() const
{
    ZNTSettings settings;
    for (const auto* values : {&remembered.player, &chosenForAllGames})
        for (const auto& [name, text] : *values)
            static_cast<void>(znt::changeSetting(settings, name, text));
    return settings;
}

/// What the file holds may come from another version: names and values that this one does not know are passed
/// over.
ZNTSettings ZNTSettingsKeeper::weighed(const Layers& all, NamedBy& namedBy) const
{
    ZNTSettings weighed;
    for (std::size_t layer = 0; layer < all.size(); ++layer)
        for (const auto& [name, text] : *all[layer])
            if (znt::changeSetting(weighed, name, text))
                namedBy.insert_or_assign(name, static_cast<Layer>(layer));
    for (const auto& row : ZNTSettingsTable)
        if (!row.follows.empty() && !namedBy.contains(row.name))
            static_cast<void>(znt::changeSetting(
                weighed, row.name,
                znt::settingText(atConnect.value_or(weighed), *znt::settingNamed(row.follows))));
    const auto encoding = namedBy.find("encoding");
    weighed.isEncodingNamed = encoding != namedBy.end() && encoding->second != KnownGame;
    return weighed;
}

/// Decides what is in force.
void ZNTSettingsKeeper::weigh()
{
    namedBy.clear();
    const auto all = layers(game);
    inForce = weighed(all, namedBy);
    if (!atConnect)
        hasSettingsForGame_ = countsIn(inForce, *all[KnownGame]) || countsIn(inForce, *all[OwnOfGame]) ||
                              countsIn(inForce, *all[OwnOfGameNow]);
}
