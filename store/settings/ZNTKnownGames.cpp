#include "ZNTKnownGames.h"

#include "ZNTPrivateFiles.h"
#include "ZNTText.h"

#include <algorithm>
#include <utility>

namespace
{

constexpr std::string_view blanks = " \t\r";

/// Takes the first word off `line`; empty if there is none.
std::string_view takeWord(std::string_view& line)
{
    line.remove_prefix(std::min(line.find_first_not_of(blanks), line.size()));
    const auto word = line.substr(0, line.find_first_of(blanks));
    line.remove_prefix(word.size());
    return word;
}

ZNTError lineError(std::string sentence) { return {"ZNTKnownGames", 0, std::move(sentence)}; }

bool isPort(std::string_view text)
{
    const int port = znt::integerValue(znt::textFromUtf8(text));
    return port >= 1 && port <= 65'535 && std::to_string(port) == text;
}

} // namespace

std::string znt::gameKey(std::string_view host, std::string_view port)
{
    host = znt::trimmedOf(host, [](char unit) { return blanks.find(unit) != blanks.npos; });
    if (host.ends_with('.'))
        host.remove_suffix(1);
    std::string key(host);
    std::ranges::transform(key, key.begin(), znt::asciiLowered<char>);
    return key + " " + std::to_string(znt::integerValue(znt::textFromUtf8(port)));
}

ZNTKnownGames ZNTKnownGames::shipped(const ZNTFilePlaces& places, ZNTPlatformLog& log)
{
    const auto path = places.resource("known-games");
    const auto text = znt::contentOfFile(path);
    if (text.empty())
        log.log("The settings of the shipped games are missing: " + path);
    return fromText(text, log);
}

ZNTKnownGames ZNTKnownGames::fromText(std::string_view text, ZNTPlatformLog& log)
{
    ZNTKnownGames known;
    for (int number = 1; !text.empty(); ++number) {
        const auto line = text.substr(0, text.find('\n'));
        text.remove_prefix(std::min(line.size() + 1, text.size()));
        if (const auto added = known.addLine(line); !added)
            log.log("known-games: line " + std::to_string(number) +
                    " is skipped: " + added.error().description);
    }
    return known;
}

ZNTResult<void> ZNTKnownGames::addLine(std::string_view line)
{
    const auto host = takeWord(line);
    if (host.empty() || host.starts_with('#'))
        return {};
    const auto port = takeWord(line);
    if (!isPort(port))
        return lineError("A port from 1 to 65535 follows the host.");
    ZNTSettingValues values;
    for (auto word = takeWord(line); !word.empty(); word = takeWord(line)) {
        if (auto added = znt::addAssignment(values, word); !added)
            return added;
        const auto name = word.substr(0, word.find('='));
        const auto* row = znt::settingNamed(name); // none for the name that stands for several
        if (!row || row->scope != ZNTSettingScope::Game)
            return lineError("The setting " + std::string(name) + " is for all games, not for one.");
    }
    if (values.empty())
        return lineError("Settings follow the port: NAME=VALUE.");
    if (!games.emplace(znt::gameKey(host, port), std::move(values)).second)
        return lineError("The game is in an earlier line.");
    return {};
}

const ZNTSettingValues& ZNTKnownGames::settingsOf(std::string_view key) const
{
    static const ZNTSettingValues none;
    const auto found = games.find(key);
    return found == games.end() ? none : found->second;
}
