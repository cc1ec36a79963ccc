#pragma once

#include "ZNTDemoWorld.h"
#include "ZNTStringEncoding.h"

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

/// All texts of the game but the names of rooms, ways and things. "%1" and "%2" stand for words that are
/// filled in; a line feed starts a new line.
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
    GalleryRainbow,
    GalleryDawn,
    GalleryHasMore,
    GalleryWithoutColours,
    GallerySea,
    SailorsHomes,
    GalleryWithoutSea,
    ColoursTitle,
    FloodLine,
    FloodHow,
    NameIs,
    NameHow,
    NameTaken,
    NameStays,
    PasswordChoose,
    PasswordAsk,
    PasswordWrong,
    PasswordTooLong,
    PasswordCannotBeHidden,
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

} // namespace znt::demo

/// The words of the game in one language: one table for each kind, with a row for each value of its
/// enumeration, in order. All of them can be written in that language's encoding.
struct ZNTDemoTexts {
    template <typename Enumeration>
    struct Row {
        Enumeration what;
        std::u16string_view text;
    };
    template <typename Enumeration, std::size_t count>
    using Table = std::array<Row<Enumeration>, count>;

    Table<ZNTDemoPhrase, znt::demo::phraseCount> phrases;
    Table<ZNTDemoRoom, znt::demo::roomCount> roomNames, roomDescriptions;
    /// Also the words that a player may type to go there.
    Table<ZNTDemoDirection, znt::demo::directionCount> directions;
    /// In the form that a sentence needs: "a red apple".
    Table<ZNTDemoThing, znt::demo::thingCount> things;
    Table<ZNTDemoThing, znt::demo::thingCount> thingDescriptions;

    [[nodiscard]] std::u16string_view phrase(ZNTDemoPhrase phrase) const { return textIn(phrases, phrase); }
    [[nodiscard]] std::u16string_view roomName(ZNTDemoRoom room) const { return textIn(roomNames, room); }
    [[nodiscard]] std::u16string_view roomDescription(ZNTDemoRoom room) const
    {
        return textIn(roomDescriptions, room);
    }
    [[nodiscard]] std::u16string_view direction(ZNTDemoDirection direction) const
    {
        return textIn(directions, direction);
    }
    [[nodiscard]] std::u16string_view thing(ZNTDemoThing thing) const { return textIn(things, thing); }
    [[nodiscard]] std::u16string_view thingDescription(ZNTDemoThing thing) const
    {
        return textIn(thingDescriptions, thing);
    }

    /// Whether each table has every row at its place. Checked when a language is compiled.
    [[nodiscard]] constexpr bool isComplete() const
    {
        return isInOrder(phrases) && isInOrder(roomNames) && isInOrder(roomDescriptions) &&
               isInOrder(directions) && isInOrder(things) && isInOrder(thingDescriptions);
    }

    /// English for ASCII, Simplified Chinese for EUC-CN, Traditional Chinese for Big5.
    static const ZNTDemoTexts& forEncoding(ZNTStringEncoding encoding);

private:
    template <typename Rows, typename Enumeration>
    static std::u16string_view textIn(const Rows& rows, Enumeration what)
    {
        return rows.at(static_cast<std::size_t>(what)).text;
    }
    template <typename Rows>
    static constexpr bool isInOrder(const Rows& rows)
    {
        for (std::size_t at = 0; at < rows.size(); ++at)
            if (static_cast<std::size_t>(rows[at].what) != at || rows[at].text.empty())
                return false;
        return true;
    }
};

namespace znt::demo
{

/// `text` with "%1" and "%2" filled in. Placeholders in the filled-in words stay.
std::u16string filled(std::u16string_view text, std::u16string_view first, std::u16string_view second = {});

/// Broken into lines of at most `columns` terminal columns, between words, or between any two characters of a
/// script that writes without blanks (each of those takes two columns). Line feeds stay.
std::u16string wrapped(std::u16string_view text, std::size_t columns);

} // namespace znt::demo
