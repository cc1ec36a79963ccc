#include "ZNTDemoCommands.h"

#include "ZNTDemoWords.h"
#include "ZNTText.h"

#include <algorithm>

using namespace znt::demo;

namespace
{

constexpr int mostFloodLines = 100000;
constexpr std::size_t longestEcho = 40;

/// Short words for the directions ("n" for north), in the order of the directions.
constexpr std::u16string_view abbreviations[directionCount] = {u"n",  u"s",  u"e",  u"w", u"ne",
                                                               u"nw", u"se", u"sw", u"u", u"d"};

struct Colour {
    std::u16string_view code;
    std::u16string_view name;
};
/// In the order of their SGR numbers (ECMA-48). Black is shown by the background behind it.
constexpr Colour colours[] = {{u"31", u"red"},     {u"32", u"green"}, {u"33", u"yellow"}, {u"34", u"blue"},
                              {u"35", u"magenta"}, {u"36", u"cyan"},  {u"37", u"white"}};

} // namespace

std::optional<ZNTDemoDirection> ZNTDemoCommands::directionCalled(std::u16string_view word) const
{
    const auto& english = ZNTDemoTexts::forEncoding(ZNTStringEncoding::Ascii);
    const auto* found =
        std::find_if(allDirections.begin(), allDirections.end(), [&](ZNTDemoDirection direction) {
            return equalsIgnoringCase(english.direction(direction), word) ||
                   equalsIgnoringCase(abbreviations[static_cast<std::size_t>(direction)], word) ||
                   texts.direction(direction) == word;
        });
    if (found == allDirections.end())
        return std::nullopt;
    return *found;
}

void ZNTDemoCommands::handleLine(ZNTDemoPlayer& player, std::u16string_view line)
{
    if (!player.wantedName.empty())
        return village.takePassword(player, line);
    auto rest = znt::trimmedOfBlanks(line);
    const auto typed = takeWord(rest);
    const auto word = lowerCased(typed);
    if (const auto direction = directionCalled(word))
        return village.go(player, *direction);
    if (word.empty())
        return player.audience.showParagraph({});
    if (word == u"look" || word == u"l" || word == u"read")
        return look(player, rest);
    if (word == u"exits")
        return village.listExits(player);
    if (word == u"say")
        return village.say(player, rest);
    if (word == u"who")
        return village.listPlayers(player);
    if (word == u"help")
        return village.tell(player, ZNTDemoPhrase::Help);
    if (word == u"inventory" || word == u"i")
        return village.listCarried(player);
    if (word == u"get" || word == u"take")
        return village.take(player, rest);
    if (word == u"drop")
        return village.drop(player, rest);
    if (word == u"kick")
        return village.kick(player, rest);
    if (word == u"poke")
        return village.pokeGoblin(player);
    if (word == u"call")
        return village.callBob(player);
    if (word == u"name")
        return village.rename(player, rest);
    if (word == u"colours" || word == u"colors")
        return showColours(player);
    if (word == u"sound")
        return village.showSound(player);
    if (word == u"compress")
        return compress(player, rest);
    if (word == u"flood")
        return flood(player, rest);
    if (word == u"quit")
        return player.audience.hangUp(texts.phrase(ZNTDemoPhrase::Farewell));
    village.tell(player, ZNTDemoPhrase::UnknownWord, startOf(typed, longestEcho));
}

void ZNTDemoCommands::handleTooLongLine(ZNTDemoPlayer& player)
{
    if (!player.wantedName.empty())
        village.takePassword(player, {});
    village.tell(player, ZNTDemoPhrase::LineTooLong);
}

void ZNTDemoCommands::look(ZNTDemoPlayer& player, std::u16string_view rest)
{
    if (rest.starts_with(u"at "))
        takeWord(rest);
    if (rest.empty())
        village.describeRoom(player);
    else
        village.lookAt(player, rest);
}

void ZNTDemoCommands::showColours(ZNTDemoPlayer& player)
{
    std::u16string page(texts.phrase(ZNTDemoPhrase::ColoursTitle));
    for (const auto& [code, name] : colours) {
        const std::u16string plain(code);
        page += u"\n" + coloured(plain, name) + u" " + coloured(u"1;" + plain, u"bold") + u" " +
                coloured(u"4;" + plain, u"underlined") + u" " +
                coloured(u"4" + plain.substr(1), u"background");
    }
    player.audience.showParagraph(page);
}

void ZNTDemoCommands::flood(ZNTDemoPlayer& player, std::u16string_view rest)
{
    const int lines = znt::integerValue(rest);
    if (lines < 1 || lines > mostFloodLines)
        village.tell(player, ZNTDemoPhrase::FloodHow);
    else
        player.audience.showFlood(lines);
}

void ZNTDemoCommands::compress(ZNTDemoPlayer& player, std::u16string_view rest)
{
    if (!player.audience.isCompressed())
        return village.tell(player, ZNTDemoPhrase::CompressionOff);
    if (lowerCased(rest) != u"end")
        return village.tell(player, ZNTDemoPhrase::CompressionOn);
    village.tell(player, ZNTDemoPhrase::CompressionEnds);
    player.audience.endCompression();
}
