#include "ZNTSettingsKeeper.h"

#include <utility>

ZNTSettingsKeeper::ZNTSettingsKeeper(const ZNTFilePlaces& places, ZNTPlatformLog& log,
                                     ZNTSettingValues ofCommandLine)
    : file(places, log),
      remembered(file.read()),
      ofCommandLine(std::move(ofCommandLine))
{
    weigh();
}

ZNTResult<void> ZNTSettingsKeeper::choose(std::string_view name, std::string_view text)
{
    auto tried = inForce;
    if (auto changed = znt::changeSetting(tried, name, text); !changed)
        return changed;
    const auto& row = *znt::settingNamed(name);
    ofCommandLine.erase(std::string(name));
    chosen.insert_or_assign(std::string(name), std::string(text));
    if (isRemembering())
        store(row, text);
    weigh();
    return {};
}

void ZNTSettingsKeeper::noteChoices(const ZNTSettings& ofSession)
{
    for (const auto& row : ZNTSettingsTable)
        if (const auto text = znt::settingText(ofSession, row); text != znt::settingText(inForce, row))
            static_cast<void>(choose(row.name, text)); // a value that a session has is a good one
}

void ZNTSettingsKeeper::beginGame(std::string_view host, std::string_view port)
{
    game = std::string(host) + " " + std::string(port);
    weigh();
}

void ZNTSettingsKeeper::endGame()
{
    game.clear();
    weigh();
}

void ZNTSettingsKeeper::setRemembering(bool isToRemember)
{
    if (!isToRemember) {
        file.remove();
        return;
    }
    file.begin();
    for (const auto& [name, text] : chosen)
        store(*znt::settingNamed(name), text);
}

void ZNTSettingsKeeper::store(const ZNTSettingRow& row, std::string_view text)
{
    const auto whose = row.scope == ZNTSettingScope::Game ? std::string_view(game) : std::string_view();
    auto& values = whose.empty() ? remembered.player : remembered.games[std::string(whose)];
    values.insert_or_assign(std::string(row.name), std::string(text));
    file.store(whose, row.name, text);
}

/// Decides what is in force, from the weakest word to the strongest. What the file holds may come from
/// another version: names and values that this one does not know are passed over.
void ZNTSettingsKeeper::weigh()
{
    ZNTSettings weighed;
    const auto add = [&](const ZNTSettingValues& values) {
        for (const auto& [name, text] : values)
            static_cast<void>(znt::changeSetting(weighed, name, text));
    };
    add(remembered.player);
    if (const auto own = remembered.games.find(game); own != remembered.games.end())
        add(own->second);
    add(chosen);
    add(ofCommandLine);
    inForce = weighed;
}
