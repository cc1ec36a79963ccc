#pragma once

#include "ZNTDemoWorld.h"
#include "ZNTStringEncoding.h"

#include <cstdint>
#include <string>
#include <string_view>

/// Everything the game says but the names of rooms, ways and things. "%1" and "%2" stand for what the place
/// asks for; a line feed starts a new line.
enum class ZNTDemoPhrase {
    Welcome,
    WelcomeHint,
    Prompt,
    Exits,
    ListSeparator,
    ListLast,
    SomeoneIsHere,
    ThingIsHere,
    GuideIsHere,
    BobIsHere,
    GoblinIsHere,
    NoWay,
    SomeoneArrives,
    SomeoneLeaves,
    SomeoneVanishes,
    Bob,
    Goblin,
    Guide,
    YouSay,
    SomeoneSays,
    SayWhat,
    WhoIsThere,
    You,
    Help,
    CarryNothing,
    Carry,
    Take,
    SomeoneTakes,
    Drop,
    SomeoneDrops,
    NotHere,
    NotCarried,
    GoblinKicksYou,
    GoblinKicksSomeone,
    YouKickGoblin,
    YouPokeGoblin,
    SomeoneTeasesGoblin,
    YouKickSomeone,
    SomeoneKicksYou,
    NobodyToKick,
    YouCallBob,
    BobIsHereAlready,
    GoblinText,
    BobText,
    GuideText,
    ColoursTitle,
    FloodLine,
    FloodHow,
    NameIs,
    NameHow,
    NameTaken,
    SomeoneIsNowCalled,
    Names,
    CompressionOn,
    CompressionOff,
    CompressionEnds,
    SoundOn,
    SoundOff,
    UnknownWord,
    LineTooLong,
    VillageIsFull,
    Farewell
};

namespace znt::demo
{

inline constexpr std::size_t phraseCount = static_cast<std::size_t>(ZNTDemoPhrase::Farewell) + 1;
inline constexpr auto allPhrases = allOf<ZNTDemoPhrase, phraseCount>();

} // namespace znt::demo

/// The words of the game in one language. Everything it answers can be written in that language's encoding.
class ZNTDemoTexts
{
public:
    virtual ~ZNTDemoTexts() = default;
    [[nodiscard]] virtual std::u16string_view phrase(ZNTDemoPhrase phrase) const = 0;
    [[nodiscard]] virtual std::u16string_view roomName(ZNTDemoRoom room) const = 0;
    [[nodiscard]] virtual std::u16string_view roomDescription(ZNTDemoRoom room) const = 0;
    /// Also what a player may type to go there.
    [[nodiscard]] virtual std::u16string_view direction(ZNTDemoDirection direction) const = 0;
    /// As it stands in a sentence: "a red apple".
    [[nodiscard]] virtual std::u16string_view thing(ZNTDemoThing thing) const = 0;
    [[nodiscard]] virtual std::u16string_view thingDescription(ZNTDemoThing thing) const = 0;

    /// English for ASCII, Simplified Chinese for EUC-CN, Traditional Chinese for Big5.
    static const ZNTDemoTexts& forEncoding(ZNTStringEncoding encoding);
};

namespace znt::demo
{

/// `text` with "%1" and "%2" filled in; what is filled in is not looked at again.
std::u16string filled(std::u16string_view text, std::u16string_view first, std::u16string_view second = {});

/// Broken into lines of at most `columns` terminal columns, between words, or between any two characters of a
/// script that writes without blanks (each of those takes two columns). Line feeds stay.
std::u16string wrapped(std::u16string_view text, std::size_t columns);

} // namespace znt::demo
