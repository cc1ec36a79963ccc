#include "ZNTDemoLanguages.h"

namespace
{

class English final : public ZNTDemoTexts
{
public:
    [[nodiscard]] std::u16string_view phrase(ZNTDemoPhrase phrase) const override;
    [[nodiscard]] std::u16string_view roomName(ZNTDemoRoom room) const override;
    [[nodiscard]] std::u16string_view roomDescription(ZNTDemoRoom room) const override;
    [[nodiscard]] std::u16string_view direction(ZNTDemoDirection direction) const override;
    [[nodiscard]] std::u16string_view thing(ZNTDemoThing thing) const override;
    [[nodiscard]] std::u16string_view thingDescription(ZNTDemoThing thing) const override;
};

std::u16string_view English::roomName(ZNTDemoRoom room) const
{
    switch (room) {
    case ZNTDemoRoom::Square:
        return u"Lantern Square";
    case ZNTDemoRoom::Harbour:
        return u"The Harbour";
    case ZNTDemoRoom::Market:
        return u"Market Lane";
    case ZNTDemoRoom::Library:
        return u"The Library";
    case ZNTDemoRoom::Bridge:
        return u"The Stone Bridge";
    case ZNTDemoRoom::LighthouseFoot:
        return u"At the Foot of the Lighthouse";
    case ZNTDemoRoom::LanternRoom:
        return u"The Lantern Room";
    case ZNTDemoRoom::Garden:
        return u"The Herb Garden";
    case ZNTDemoRoom::GoblinDitch:
        return u"The Goblin's Ditch";
    case ZNTDemoRoom::Churchyard:
        return u"The Churchyard";
    case ZNTDemoRoom::Crypt:
        return u"The Crypt";
    case ZNTDemoRoom::Passage:
        return u"A Dripping Passage";
    case ZNTDemoRoom::Cellar:
        return u"The Smugglers' Cellar";
    }
    return {};
}

std::u16string_view English::roomDescription(ZNTDemoRoom room) const
{
    switch (room) {
    case ZNTDemoRoom::Square:
        return u"Paper lanterns hang between the gables and click softly in the wind. All the lanes of the "
               u"village end here, at an old well that smells of moss.";
    case ZNTDemoRoom::Harbour:
        return u"Ropes creak, gulls quarrel, and the tide slaps at the quay. Three boats lie here, none of "
               u"them dry.";
    case ZNTDemoRoom::Market:
        return u"Awnings flap over baskets of apples and eels. Everybody calls out a price and nobody pays "
               u"it. "
               u"A trapdoor between two stalls stands open.";
    case ZNTDemoRoom::Library:
        return u"Warm dust, leather, and the slow tick of a clock. The shelves go up further than the ladder "
               u"does.";
    case ZNTDemoRoom::Bridge:
        return u"The stones are worn hollow by carts. The brook mutters below, and an iron rung leads down "
               u"into the dark beside it.";
    case ZNTDemoRoom::LighthouseFoot:
        return u"The tower hums in the wind like a bottle. Its door is open, and a stair winds upwards, one "
               u"hundred and eight steps.";
    case ZNTDemoRoom::LanternRoom:
        return u"Glass on every side, and the great lamp turning without hurry. You can hear the sea in all "
               u"directions but one.";
    case ZNTDemoRoom::Garden:
        return u"Thyme underfoot, mint at the wall, bees in everything. Somebody has labelled the weeds as "
               u"well.";
    case ZNTDemoRoom::GoblinDitch:
        return u"Mud, bones and a fire of wet sticks. It is not a nice place, but it is a good one to "
               u"practise "
               u"being kicked in.";
    case ZNTDemoRoom::Churchyard:
        return u"Yews stand about like people who have forgotten what they came for. Under the largest a "
               u"flight of steps goes down.";
    case ZNTDemoRoom::Crypt:
        return u"It is cold here, and quiet, apart from whoever is groaning. The air moves from the east.";
    case ZNTDemoRoom::Passage:
        return u"Water counts the seconds. Iron rungs lead up towards daylight, and a low tunnel climbs to "
               u"the "
               u"northeast.";
    case ZNTDemoRoom::Cellar:
        return u"Barrels to the ceiling, and footsteps overhead. A ladder leads up to a square of light that "
               u"smells of apples.";
    }
    return {};
}

std::u16string_view English::direction(ZNTDemoDirection direction) const
{
    switch (direction) {
    case ZNTDemoDirection::North:
        return u"north";
    case ZNTDemoDirection::South:
        return u"south";
    case ZNTDemoDirection::East:
        return u"east";
    case ZNTDemoDirection::West:
        return u"west";
    case ZNTDemoDirection::NorthEast:
        return u"northeast";
    case ZNTDemoDirection::NorthWest:
        return u"northwest";
    case ZNTDemoDirection::SouthEast:
        return u"southeast";
    case ZNTDemoDirection::SouthWest:
        return u"southwest";
    case ZNTDemoDirection::Up:
        return u"up";
    case ZNTDemoDirection::Down:
        return u"down";
    }
    return {};
}

std::u16string_view English::thing(ZNTDemoThing thing) const
{
    switch (thing) {
    case ZNTDemoThing::Apple:
        return u"a red apple";
    case ZNTDemoThing::Book:
        return u"a thin book";
    case ZNTDemoThing::Shell:
        return u"a sea shell";
    case ZNTDemoThing::Lamp:
        return u"a brass lamp";
    case ZNTDemoThing::Coin:
        return u"a silver coin";
    }
    return {};
}

std::u16string_view English::thingDescription(ZNTDemoThing thing) const
{
    switch (thing) {
    case ZNTDemoThing::Apple:
        return u"It is very red and slightly bitten.";
    case ZNTDemoThing::Book:
        return u"The Traveller's Helper, it says. \"The recorder writes down the lines you type, and what "
               u"you "
               u"have recorded becomes a macro.\"";
    case ZNTDemoThing::Shell:
        return u"You hold it to your ear. It plays the same song as the harbour, only smaller.";
    case ZNTDemoThing::Lamp:
        return u"It is unlit. Rubbing it does nothing; somebody has tried.";
    case ZNTDemoThing::Coin:
        return u"One side shows a king, the other the same king from behind.";
    }
    return {};
}

std::u16string_view English::phrase(ZNTDemoPhrase phrase) const
{
    switch (phrase) {
    case ZNTDemoPhrase::Welcome:
        return u"Welcome to Lantern Cove, a village that is learnt in an afternoon. You are called %1.";
    case ZNTDemoPhrase::WelcomeHint:
        return u"Type help for the commands, or look guide and be taught.";
    case ZNTDemoPhrase::Prompt:
        return u"> ";
    case ZNTDemoPhrase::Exits:
        return u"Exits: %1.";
    case ZNTDemoPhrase::ListSeparator:
        return u", ";
    case ZNTDemoPhrase::ListLast:
        return u" and ";
    case ZNTDemoPhrase::SomeoneIsHere:
        return u"%1 is here.";
    case ZNTDemoPhrase::ThingIsHere:
        return u"On the ground: %1.";
    case ZNTDemoPhrase::GuideIsHere:
        return u"The guide sits on the rim of the well.";
    case ZNTDemoPhrase::BobIsHere:
        return u"Bob is here, smelling of fish.";
    case ZNTDemoPhrase::GoblinIsHere:
        return u"The goblin is here and looks at your shins.";
    case ZNTDemoPhrase::NoWay:
        return u"There is no way %1 from here.";
    case ZNTDemoPhrase::SomeoneArrives:
        return u"%1 arrives.";
    case ZNTDemoPhrase::SomeoneLeaves:
        return u"%1 leaves %2.";
    case ZNTDemoPhrase::SomeoneVanishes:
        return u"%1 goes home.";
    case ZNTDemoPhrase::Bob:
        return u"Bob";
    case ZNTDemoPhrase::Goblin:
        return u"goblin";
    case ZNTDemoPhrase::Guide:
        return u"guide";
    case ZNTDemoPhrase::YouSay:
        return u"You say: %1";
    case ZNTDemoPhrase::SomeoneSays:
        return u"%1 says: %2";
    case ZNTDemoPhrase::SayWhat:
        return u"Say what?";
    case ZNTDemoPhrase::WhoIsThere:
        return u"In the village: %1.";
    case ZNTDemoPhrase::You:
        return u"%1, that is you";
    case ZNTDemoPhrase::Help:
        return u"Go: north south east west northeast northwest southeast southwest up down, "
               u"or n s e w ne nw se sw u d.\n"
               u"See: look, look THING, exits, who, inventory.\n"
               u"Do: say WORDS, get THING, drop THING, kick SOMEONE, poke goblin, call bob, name NEWNAME.\n"
               u"Try the client: colours, sound, compress, flood LINES.\n"
               u"Leave: quit.";
    case ZNTDemoPhrase::CarryNothing:
        return u"You carry nothing.";
    case ZNTDemoPhrase::Carry:
        return u"You carry %1.";
    case ZNTDemoPhrase::Take:
        return u"You take %1.";
    case ZNTDemoPhrase::SomeoneTakes:
        return u"%1 takes %2.";
    case ZNTDemoPhrase::Drop:
        return u"You put down %1.";
    case ZNTDemoPhrase::SomeoneDrops:
        return u"%1 puts down %2.";
    case ZNTDemoPhrase::NotHere:
        return u"There is nothing like that here.";
    case ZNTDemoPhrase::NotCarried:
        return u"You carry nothing like that.";
    case ZNTDemoPhrase::GoblinKicksYou:
        return u"A goblin kicks you hard!";
    case ZNTDemoPhrase::GoblinKicksSomeone:
        return u"The goblin kicks %1.";
    case ZNTDemoPhrase::YouKickGoblin:
        return u"You kick the goblin. It hops about on one leg and swears.";
    case ZNTDemoPhrase::YouPokeGoblin:
        return u"You poke the goblin.";
    case ZNTDemoPhrase::SomeoneTeasesGoblin:
        return u"%1 picks a fight with the goblin.";
    case ZNTDemoPhrase::YouKickSomeone:
        return u"You kick %1, but not hard.";
    case ZNTDemoPhrase::SomeoneKicksYou:
        return u"%1 gives you a friendly kick.";
    case ZNTDemoPhrase::NobodyToKick:
        return u"Nobody of that name stands within reach.";
    case ZNTDemoPhrase::YouCallBob:
        return u"You call for Bob.";
    case ZNTDemoPhrase::BobIsHereAlready:
        return u"Bob is here already.";
    case ZNTDemoPhrase::GoblinText:
        return u"Knee-high, warty and quick. It kicks whoever stands about; poke it if you cannot wait.";
    case ZNTDemoPhrase::BobText:
        return u"A fisherman who walks from here to there and back again. Call him and he comes.";
    case ZNTDemoPhrase::GuideText:
        return u"The guide smiles and says:\n"
               u"\"A speed walk goes a known way by itself: type !nesw to stroll by the lighthouse and come "
               u"back "
               u"here, a step a second; a number repeats a step, as in !3n2e, and !stop ends the walk.\n"
               u"A macro is a line kept under a name: add one called greet with the text say hello %1, and "
               u"~greet Bob says hello to Bob.\n"
               u"A trigger answers for you: with the pattern A %1 kicks you hard! and the action kick %1 you "
               u"kick back at once, and the goblin to the southeast will help you practise.\n"
               u"It can play a sound as well, when somebody comes for instance; Bob comes by every now and "
               u"then.\n"
               u"Switch on game sounds and go down into the crypt, southwest and down; switch on compression "
               u"and nothing changes but the number of bytes.\"";
    case ZNTDemoPhrase::ColoursTitle:
        return u"Every colour there is:";
    case ZNTDemoPhrase::FloodLine:
        return u"Line %1 of %2: the tide comes in, and the tide goes out again.";
    case ZNTDemoPhrase::FloodHow:
        return u"Type flood and a number of lines, at most 100000.";
    case ZNTDemoPhrase::NameIs:
        return u"You are called %1 from now on.";
    case ZNTDemoPhrase::NameHow:
        return u"Type name and one word of at most 20 letters.";
    case ZNTDemoPhrase::NameTaken:
        return u"Somebody else is called that.";
    case ZNTDemoPhrase::SomeoneIsNowCalled:
        return u"%1 is called %2 from now on.";
    case ZNTDemoPhrase::Names:
        return u"Ash Birch Cedar Hazel Juniper Linden Maple Rowan Spruce Willow";
    case ZNTDemoPhrase::CompressionOn:
        return u"What you read was compressed on its way here. Type compress end to end that.";
    case ZNTDemoPhrase::CompressionOff:
        return u"Nothing is compressed. Your client can ask for it.";
    case ZNTDemoPhrase::CompressionEnds:
        return u"This is the last compressed line.";
    case ZNTDemoPhrase::SoundOn:
        return u"That was the groan from the crypt.";
    case ZNTDemoPhrase::SoundOff:
        return u"Your client has not asked for sounds.";
    case ZNTDemoPhrase::UnknownWord:
        return u"The word %1 means nothing here. Type help.";
    case ZNTDemoPhrase::LineTooLong:
        return u"That line was too long to listen to.";
    case ZNTDemoPhrase::VillageIsFull:
        return u"The village is full. Please come again later.";
    case ZNTDemoPhrase::Farewell:
        return u"The lanterns nod. Farewell!";
    }
    return {};
}

} // namespace

const ZNTDemoTexts& znt::demo::english()
{
    static const English texts;
    return texts;
}
