#include "ZNTDemoVillage.h"

#include "ZNTDemoGallery.h"
#include "ZNTDemoWords.h"

#include <algorithm>
#include <iterator>
#include <utility>

using namespace znt::demo;

namespace
{

constexpr double secondsBetweenKicks = 12;
constexpr double secondsBetweenBobsSteps = 20;

constexpr std::u16string_view titleColour = u"1;33";
constexpr std::u16string_view exitsColour = u"0;36";
constexpr std::u16string_view peopleColour = u"0;35";
constexpr std::u16string_view thingsColour = u"0;32";
constexpr std::u16string_view dangerColour = u"1;31";
constexpr std::u16string_view speechColour = u"0;33";

/// The one sound that every client has. Its tag has an empty folder and stands at the end of a line, so that
/// the rest of the line reads as usual.
constexpr std::u16string_view groan = u" !!SOUND(/dying_groan.wav V=80 P=50)";
constexpr std::u16string_view kickSound = u" !!SOUND(/dying_groan.wav V=50 P=60)";

std::u16string soundFor(const ZNTDemoPlayer& player, std::u16string_view tag)
{
    return std::u16string(player.audience.wantsSounds() ? tag : std::u16string_view());
}

std::u16string_view colourOf(ZNTDemoPhrase phrase)
{
    switch (phrase) {
    case ZNTDemoPhrase::GoblinKicksYou:
        return dangerColour;
    case ZNTDemoPhrase::SomeoneSays:
    case ZNTDemoPhrase::YouSay:
        return speechColour;
    case ZNTDemoPhrase::SomeoneArrives:
    case ZNTDemoPhrase::SomeoneLeaves:
        return peopleColour;
    default:
        return {};
    }
}

} // namespace

ZNTDemoVillage::ZNTDemoVillage(RunLoop& runLoop, const ZNTDemoTexts& texts)
    : runLoop(runLoop),
      texts(texts),
      bobsRoom(walkOfBob().front())
{
    for (const auto thing : allThings)
        things[static_cast<std::size_t>(thing)].room = homeOfThing(thing);
}

ZNTDemoPlayer& ZNTDemoVillage::enter(ZNTDemoAudience& audience)
{
    players.push_back(std::make_unique<ZNTDemoPlayer>(ZNTDemoPlayer{audience, freeName()}));
    auto& player = *players.back();
    startEvents();
    const auto welcome = filled(texts.phrase(ZNTDemoPhrase::Welcome), player.name);
    const auto columns = audience.screen().columns;
    audience.showParagraph(coloured(u"1;32", wrapped(welcome, columns)) + u"\n" +
                           wrapped(texts.phrase(ZNTDemoPhrase::WelcomeHint), columns) + u"\n\n" +
                           roomText(player));
    tellOthersIn(player.room, &player, ZNTDemoPhrase::SomeoneArrives, player.name);
    return player;
}

void ZNTDemoVillage::leave(ZNTDemoPlayer& player)
{
    for (const auto thing : allThings) {
        auto& carried = things[static_cast<std::size_t>(thing)];
        if (carried.carrier == &player)
            carried = {homeOfThing(thing), nullptr};
    }
    tellOthersIn(player.room, &player, ZNTDemoPhrase::SomeoneVanishes, player.name);
    std::erase_if(players, [&](const auto& each) { return each.get() == &player; });
    if (players.empty()) {
        goblinTimer.reset();
        bobTimer.reset();
    }
}

void ZNTDemoVillage::describeRoom(ZNTDemoPlayer& player) { player.audience.showParagraph(roomText(player)); }

void ZNTDemoVillage::listExits(ZNTDemoPlayer& player) { player.audience.showParagraph(exitsText(player)); }

void ZNTDemoVillage::go(ZNTDemoPlayer& player, ZNTDemoDirection direction)
{
    const auto there = roomInDirection(player.room, direction);
    if (!there) {
        tell(player, ZNTDemoPhrase::NoWay, texts.direction(direction));
        return;
    }
    tellOthersIn(player.room, &player, ZNTDemoPhrase::SomeoneLeaves, player.name, texts.direction(direction));
    player.room = *there;
    describeRoom(player);
    tellOthersIn(player.room, &player, ZNTDemoPhrase::SomeoneArrives, player.name);
}

void ZNTDemoVillage::say(ZNTDemoPlayer& player, std::u16string_view words)
{
    if (words.empty()) {
        tell(player, ZNTDemoPhrase::SayWhat);
        return;
    }
    tell(player, ZNTDemoPhrase::YouSay, words);
    tellOthersIn(player.room, &player, ZNTDemoPhrase::SomeoneSays, player.name, words);
}

void ZNTDemoVillage::listPlayers(ZNTDemoPlayer& player)
{
    std::vector<std::u16string> names;
    for (const auto& each : players)
        names.push_back(each.get() == &player ? filled(texts.phrase(ZNTDemoPhrase::You), each->name)
                                              : each->name);
    tell(player, ZNTDemoPhrase::WhoIsThere, list(names));
}

void ZNTDemoVillage::listCarried(ZNTDemoPlayer& player)
{
    const auto carried = carriedBy(player);
    tell(player, carried.empty() ? ZNTDemoPhrase::CarryNothing : ZNTDemoPhrase::Carry, carried);
}

void ZNTDemoVillage::take(ZNTDemoPlayer& player, std::u16string_view word)
{
    const auto thing = thingCalled(
        word, [&](const Thing& each) { return each.carrier == nullptr && each.room == player.room; });
    if (!thing) {
        tell(player, ZNTDemoPhrase::NotHere);
        return;
    }
    things[static_cast<std::size_t>(*thing)].carrier = &player;
    tell(player, ZNTDemoPhrase::Take, texts.thing(*thing));
    tellOthersIn(player.room, &player, ZNTDemoPhrase::SomeoneTakes, player.name, texts.thing(*thing));
}

void ZNTDemoVillage::drop(ZNTDemoPlayer& player, std::u16string_view word)
{
    const auto thing = thingCalled(word, [&](const Thing& each) { return each.carrier == &player; });
    if (!thing) {
        tell(player, ZNTDemoPhrase::NotCarried);
        return;
    }
    things[static_cast<std::size_t>(*thing)] = {player.room, nullptr};
    tell(player, ZNTDemoPhrase::Drop, texts.thing(*thing));
    tellOthersIn(player.room, &player, ZNTDemoPhrase::SomeoneDrops, player.name, texts.thing(*thing));
}

void ZNTDemoVillage::lookAt(ZNTDemoPlayer& player, std::u16string_view word)
{
    const auto thing = thingCalled(word, [&](const Thing& each) {
        return each.carrier == &player || (each.carrier == nullptr && each.room == player.room);
    });
    if (thing)
        player.audience.showParagraph(
            wrapped(texts.thingDescription(*thing), player.audience.screen().columns));
    else if (isCalled(ZNTDemoPhrase::Guide, word) && player.room == firstRoom)
        tell(player, ZNTDemoPhrase::GuideText, u"%1"); // the guide quotes the placeholder itself
    else if (isCalled(ZNTDemoPhrase::Goblin, word) && player.room == ZNTDemoRoom::GoblinDitch)
        tell(player, ZNTDemoPhrase::GoblinText);
    else if (isCalled(ZNTDemoPhrase::Bob, word) && player.room == bobsRoom)
        tell(player, ZNTDemoPhrase::BobText);
    else
        tell(player, ZNTDemoPhrase::NotHere);
}

void ZNTDemoVillage::kick(ZNTDemoPlayer& player, std::u16string_view whom)
{
    if (isCalled(ZNTDemoPhrase::Goblin, whom) && player.room == ZNTDemoRoom::GoblinDitch) {
        tell(player, ZNTDemoPhrase::YouKickGoblin);
        tellOthersIn(player.room, &player, ZNTDemoPhrase::SomeoneTeasesGoblin, player.name);
        return;
    }
    const auto found = std::find_if(players.begin(), players.end(), [&](const auto& each) {
        return each.get() != &player && each->room == player.room && equalsIgnoringCase(each->name, whom);
    });
    if (found == players.end()) {
        tell(player, ZNTDemoPhrase::NobodyToKick);
        return;
    }
    tell(player, ZNTDemoPhrase::YouKickSomeone, (*found)->name);
    tell(**found, ZNTDemoPhrase::SomeoneKicksYou, player.name);
}

void ZNTDemoVillage::pokeGoblin(ZNTDemoPlayer& player)
{
    if (player.room != ZNTDemoRoom::GoblinDitch) {
        tell(player, ZNTDemoPhrase::NotHere);
        return;
    }
    tell(player, ZNTDemoPhrase::YouPokeGoblin);
    goblinKicks(player);
}

void ZNTDemoVillage::callBob(ZNTDemoPlayer& player)
{
    if (player.room == bobsRoom) {
        tell(player, ZNTDemoPhrase::BobIsHereAlready);
        return;
    }
    tell(player, ZNTDemoPhrase::YouCallBob);
    bobGoesTo(player.room);
}

void ZNTDemoVillage::showSound(ZNTDemoPlayer& player)
{
    const bool wants = player.audience.wantsSounds();
    player.audience.showParagraph(
        wrapped(texts.phrase(wants ? ZNTDemoPhrase::SoundOn : ZNTDemoPhrase::SoundOff),
                player.audience.screen().columns) +
        soundFor(player, groan));
}

void ZNTDemoVillage::tell(ZNTDemoPlayer& player, ZNTDemoPhrase phrase, std::u16string_view first,
                          std::u16string_view second)
{
    const auto colour = colourOf(phrase);
    const auto text = filled(texts.phrase(phrase), first, second);
    // Spoken words stay one line, however long, because a trigger may wait for them.
    player.audience.showParagraph(colour.empty() ? wrapped(text, player.audience.screen().columns)
                                                 : coloured(colour, text));
}

void ZNTDemoVillage::forOthersIn(ZNTDemoRoom room, const ZNTDemoPlayer* except, const Listener& listener)
{
    for (const auto& each : players)
        if (each.get() != except && each->room == room)
            listener(*each);
}

void ZNTDemoVillage::tellOthersIn(ZNTDemoRoom room, const ZNTDemoPlayer* except, ZNTDemoPhrase phrase,
                                  std::u16string_view first, std::u16string_view second)
{
    forOthersIn(room, except, [&](ZNTDemoPlayer& other) { tell(other, phrase, first, second); });
}

std::u16string ZNTDemoVillage::roomText(const ZNTDemoPlayer& player) const
{
    const auto screen = player.audience.screen();
    auto text = coloured(titleColour, wrapped(texts.roomName(player.room), screen.columns));
    if (player.room == ZNTDemoRoom::Crypt)
        text += soundFor(player, groan);
    text += u"\n" + wrapped(texts.roomDescription(player.room), screen.columns);
    if (player.room == ZNTDemoRoom::Gallery)
        text += galleryText(texts, screen);
    return text + u"\n" + exitsText(player) + presenceText(player);
}

std::u16string ZNTDemoVillage::presenceText(const ZNTDemoPlayer& player) const
{
    std::u16string text;
    const auto add = [&, columns = player.audience.screen().columns](std::u16string_view colour,
                                                                     std::u16string_view line) {
        text += u"\n" + coloured(colour, wrapped(line, columns));
    };
    for (const auto thing : allThings) {
        const auto& lying = things[static_cast<std::size_t>(thing)];
        if (lying.carrier == nullptr && lying.room == player.room)
            add(thingsColour, filled(texts.phrase(ZNTDemoPhrase::ThingIsHere), texts.thing(thing)));
    }
    if (player.room == firstRoom)
        add(peopleColour, texts.phrase(ZNTDemoPhrase::GuideIsHere));
    if (player.room == ZNTDemoRoom::GoblinDitch)
        add(dangerColour, texts.phrase(ZNTDemoPhrase::GoblinIsHere));
    if (player.room == bobsRoom)
        add(peopleColour, texts.phrase(ZNTDemoPhrase::BobIsHere));
    for (const auto& each : players)
        if (each.get() != &player && each->room == player.room)
            add(peopleColour, filled(texts.phrase(ZNTDemoPhrase::SomeoneIsHere), each->name));
    return text;
}

std::u16string ZNTDemoVillage::exitsText(const ZNTDemoPlayer& player) const
{
    std::vector<std::u16string> exits;
    for (const auto direction : allDirections)
        if (roomInDirection(player.room, direction))
            exits.emplace_back(texts.direction(direction));
    return coloured(exitsColour, wrapped(filled(texts.phrase(ZNTDemoPhrase::Exits), list(exits)),
                                         player.audience.screen().columns));
}

std::u16string ZNTDemoVillage::list(const std::vector<std::u16string>& items) const
{
    std::u16string text;
    for (std::size_t i = 0; i < items.size(); ++i) {
        if (i > 0)
            text +=
                texts.phrase(i + 1 == items.size() ? ZNTDemoPhrase::ListLast : ZNTDemoPhrase::ListSeparator);
        text += items[i];
    }
    return text;
}

bool ZNTDemoVillage::isCalled(ZNTDemoPhrase name, std::u16string_view word) const
{
    const auto& english = ZNTDemoTexts::forEncoding(ZNTStringEncoding::Ascii);
    return equalsIgnoringCase(texts.phrase(name), word) || equalsIgnoringCase(english.phrase(name), word);
}

std::optional<ZNTDemoThing> ZNTDemoVillage::thingCalled(std::u16string_view word,
                                                        const std::function<bool(const Thing&)>& within) const
{
    const auto& english = ZNTDemoTexts::forEncoding(ZNTStringEncoding::Ascii);
    const auto* found = std::find_if(allThings.begin(), allThings.end(), [&](ZNTDemoThing thing) {
        return within(things[static_cast<std::size_t>(thing)]) &&
               (isNamedBy(texts.thing(thing), word) || isNamedBy(english.thing(thing), word));
    });
    if (found == allThings.end())
        return std::nullopt;
    return *found;
}

std::u16string ZNTDemoVillage::carriedBy(const ZNTDemoPlayer& player) const
{
    std::vector<std::u16string> carried;
    for (const auto thing : allThings)
        if (things[static_cast<std::size_t>(thing)].carrier == &player)
            carried.emplace_back(texts.thing(thing));
    return list(carried);
}

void ZNTDemoVillage::startEvents()
{
    if (!goblinTimer)
        goblinTimer =
            runLoop.startTimer(secondsBetweenKicks, RunLoopRepeat::Forever, [this] { kickSomeone(); });
    if (!bobTimer)
        bobTimer = runLoop.startTimer(secondsBetweenBobsSteps, RunLoopRepeat::Forever, [this] { moveBob(); });
}

void ZNTDemoVillage::kickSomeone()
{
    std::vector<ZNTDemoPlayer*> within;
    forOthersIn(ZNTDemoRoom::GoblinDitch, nullptr, [&](ZNTDemoPlayer& player) { within.push_back(&player); });
    if (!within.empty())
        goblinKicks(*within[nextVictim++ % within.size()]);
}

void ZNTDemoVillage::goblinKicks(ZNTDemoPlayer& victim)
{
    victim.audience.showParagraph(coloured(dangerColour, texts.phrase(ZNTDemoPhrase::GoblinKicksYou)) +
                                  soundFor(victim, kickSound));
    tellOthersIn(victim.room, &victim, ZNTDemoPhrase::GoblinKicksSomeone, victim.name);
}

void ZNTDemoVillage::moveBob()
{
    const auto walk = walkOfBob();
    const auto* at = std::find(walk.data(), walk.data() + walk.size(), bobsRoom);
    // Called away from his walk, he begins it again.
    const auto next = static_cast<std::size_t>(at - walk.data()) + 1;
    bobGoesTo(next < walk.size() ? walk[next] : walk.front());
}

void ZNTDemoVillage::bobGoesTo(ZNTDemoRoom room)
{
    const auto bob = texts.phrase(ZNTDemoPhrase::Bob);
    if (const auto direction = directionBetween(bobsRoom, room))
        tellOthersIn(bobsRoom, nullptr, ZNTDemoPhrase::SomeoneLeaves, bob, texts.direction(*direction));
    bobsRoom = room;
    tellOthersIn(bobsRoom, nullptr, ZNTDemoPhrase::SomeoneArrives, bob);
}
