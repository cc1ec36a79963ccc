#pragma once

#include "RunLoop.h"
#include "ZNTDemoPasswords.h"
#include "ZNTDemoPlayer.h"
#include "ZNTDemoTexts.h"

#include <array>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// The village while it is played: the places of the players and things, and the events. It knows no sockets.
class ZNTDemoVillage
{
public:
    /// Both outlive the village.
    ZNTDemoVillage(RunLoop& runLoop, const ZNTDemoTexts& texts);

    /// Lets a player in and greets him. `audience` outlives the stay; the player is the village's.
    ZNTDemoPlayer& enter(ZNTDemoAudience& audience);
    /// The things that he carried go back to their homes.
    void leave(ZNTDemoPlayer& player);

    void describeRoom(ZNTDemoPlayer& player);
    void listExits(ZNTDemoPlayer& player);
    void go(ZNTDemoPlayer& player, ZNTDemoDirection direction);
    void say(ZNTDemoPlayer& player, std::u16string_view words);
    void listPlayers(ZNTDemoPlayer& player);
    /// If the player's client can hide what he types, he is asked for the password of the name. A name that
    /// has one is given to nobody else.
    void rename(ZNTDemoPlayer& player, std::u16string_view name);
    /// Takes the answer of a player who wants a name. An empty one leaves his name as it is.
    void takePassword(ZNTDemoPlayer& player, std::u16string_view password);

    void listCarried(ZNTDemoPlayer& player);
    void take(ZNTDemoPlayer& player, std::u16string_view word);
    void drop(ZNTDemoPlayer& player, std::u16string_view word);
    /// Things, the guide, the goblin and Bob can be looked at.
    void lookAt(ZNTDemoPlayer& player, std::u16string_view word);

    /// Kicking the goblin never makes it kick back, so that a trigger that answers its kick does not go on
    /// for ever; poking it does.
    void kick(ZNTDemoPlayer& player, std::u16string_view whom);
    void pokeGoblin(ZNTDemoPlayer& player);
    void callBob(ZNTDemoPlayer& player);
    void showSound(ZNTDemoPlayer& player);

    void tell(ZNTDemoPlayer& player, ZNTDemoPhrase phrase, std::u16string_view first = {},
              std::u16string_view second = {});

private:
    /// A thing lies in a room, or a player carries it.
    struct Thing {
        ZNTDemoRoom room{};
        const ZNTDemoPlayer* carrier = nullptr;
    };
    using Listener = std::function<void(ZNTDemoPlayer&)>;

    void forOthersIn(ZNTDemoRoom room, const ZNTDemoPlayer* except, const Listener& listener);
    void tellOthersIn(ZNTDemoRoom room, const ZNTDemoPlayer* except, ZNTDemoPhrase phrase,
                      std::u16string_view first = {}, std::u16string_view second = {});
    [[nodiscard]] std::u16string roomText(const ZNTDemoPlayer& player) const;
    [[nodiscard]] std::u16string presenceText(const ZNTDemoPlayer& player) const;
    [[nodiscard]] std::u16string exitsText(const ZNTDemoPlayer& player) const;
    [[nodiscard]] std::u16string list(const std::vector<std::u16string>& items) const;
    void giveName(ZNTDemoPlayer& player, std::u16string_view name);
    [[nodiscard]] std::u16string freeName() const;
    [[nodiscard]] bool isTaken(std::u16string_view name, const ZNTDemoPlayer* by) const;
    [[nodiscard]] bool isCalled(ZNTDemoPhrase name, std::u16string_view word) const;
    [[nodiscard]] std::optional<ZNTDemoThing>
    thingCalled(std::u16string_view word, const std::function<bool(const Thing&)>& within) const;
    [[nodiscard]] std::u16string carriedBy(const ZNTDemoPlayer& player) const;

    void startEvents();
    void kickSomeone();
    void goblinKicks(ZNTDemoPlayer& victim);
    void moveBob();
    void bobGoesTo(ZNTDemoRoom room);

    RunLoop& runLoop;
    const ZNTDemoTexts& texts;
    std::vector<std::unique_ptr<ZNTDemoPlayer>> players;
    std::array<Thing, znt::demo::thingCount> things;
    ZNTDemoPasswords passwords;
    ZNTDemoRoom bobsRoom;
    std::size_t nextVictim = 0;
    std::unique_ptr<RunLoopTimer> goblinTimer;
    std::unique_ptr<RunLoopTimer> bobTimer;
};
