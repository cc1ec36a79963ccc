#include "ZNTDemoLanguages.h"

namespace
{

using Phrase = ZNTDemoPhrase;
using Room = ZNTDemoRoom;
using Direction = ZNTDemoDirection;
using Thing = ZNTDemoThing;

constexpr ZNTDemoTexts texts{
    .phrases = {{
        {Phrase::Welcome,
         u"Welcome to Lantern Cove, a village that is learnt in an afternoon. You are called %1."},
        {Phrase::WelcomeHint, u"Type help for the commands, or look guide and be taught."},
        {Phrase::Prompt, u"> "},
        {Phrase::Exits, u"Exits: %1."},
        {Phrase::ListSeparator, u", "},
        {Phrase::ListLast, u" and "},
        {Phrase::SomeoneIsHere, u"%1 is here."},
        {Phrase::ThingIsHere, u"On the ground: %1."},
        {Phrase::GuideIsHere, u"The guide sits on the rim of the well."},
        {Phrase::BobIsHere, u"Bob is here, smelling of fish."},
        {Phrase::GoblinIsHere, u"The goblin is here and looks at your shins."},
        {Phrase::NoWay, u"There is no way %1 from here."},
        {Phrase::SomeoneArrives, u"%1 arrives."},
        {Phrase::SomeoneLeaves, u"%1 leaves %2."},
        {Phrase::SomeoneVanishes, u"%1 goes home."},
        {Phrase::Bob, u"Bob"},
        {Phrase::Goblin, u"goblin"},
        {Phrase::Guide, u"guide"},
        {Phrase::YouSay, u"You say: %1"},
        {Phrase::SomeoneSays, u"%1 says: %2"},
        {Phrase::SayWhat, u"Say what?"},
        {Phrase::WhoIsThere, u"In the village: %1."},
        {Phrase::You, u"%1, that is you"},
        {Phrase::Help,
         u"Go: north south east west northeast northwest southeast southwest up down, "
         u"or n s e w ne nw se sw u d.\n"
         u"See: look, look THING, exits, who, inventory.\n"
         u"Do: say WORDS, get THING, drop THING, kick SOMEONE, poke goblin, call bob, name NEWNAME.\n"
         u"Try the client: colours, sound, compress, flood LINES.\n"
         u"Leave: quit."},
        {Phrase::CarryNothing, u"You carry nothing."},
        {Phrase::Carry, u"You carry %1."},
        {Phrase::Take, u"You take %1."},
        {Phrase::SomeoneTakes, u"%1 takes %2."},
        {Phrase::Drop, u"You put down %1."},
        {Phrase::SomeoneDrops, u"%1 puts down %2."},
        {Phrase::NotHere, u"There is nothing like that here."},
        {Phrase::NotCarried, u"You carry nothing like that."},
        {Phrase::GoblinKicksYou, u"A goblin kicks you hard!"},
        {Phrase::GoblinKicksSomeone, u"The goblin kicks %1."},
        {Phrase::YouKickGoblin, u"You kick the goblin. It hops about on one leg and swears."},
        {Phrase::YouPokeGoblin, u"You poke the goblin."},
        {Phrase::SomeoneTeasesGoblin, u"%1 picks a fight with the goblin."},
        {Phrase::YouKickSomeone, u"You kick %1, but not hard."},
        {Phrase::SomeoneKicksYou, u"%1 gives you a friendly kick."},
        {Phrase::NobodyToKick, u"Nobody of that name stands within reach."},
        {Phrase::YouCallBob, u"You call for Bob."},
        {Phrase::BobIsHereAlready, u"Bob is here already."},
        {Phrase::GoblinText,
         u"Knee-high, warty and quick. It kicks whoever stands about; poke it if you cannot wait."},
        {Phrase::BobText, u"A fisherman who walks from here to there and back again. Call him and he comes."},
        {Phrase::GuideText,
         u"The guide smiles and says:\n"
         u"\"A speed walk goes a known way by itself: type !nesw to stroll by the lighthouse and come "
         u"back "
         u"here, a step a second; a number repeats a step, as in !3n2e, and !stop ends the walk.\n"
         u"A macro is a line kept under a name: add one called greet with the text say hello %1, and "
         u"~greet Bob says hello to Bob.\n"
         u"A trigger answers for you: with the pattern A %1 kicks you hard! and the command kick %1 you "
         u"kick back at once, and the goblin to the southeast will help you practise.\n"
         u"It can play a sound as well, when somebody comes for instance; Bob comes by every now and "
         u"then.\n"
         u"Switch on game sounds and go down into the crypt, southwest and down; switch on compression "
         u"and nothing changes but the number of bytes.\n"
         u"Most other games want standard telnet, and so do some things here: press Ctrl+Shift+T, or type "
         u"/standard on in the terminal, and connect again. Then every name has a password that nobody sees, "
         u"and lines fit your window. The gallery, west and up from here, shows all its colours and its "
         u"foreign letters.\""},
        {Phrase::GalleryRainbow,
         u"The north wall is a rainbow in %1 shades: red at the left, then orange, yellow, green and blue, "
         u"and violet at the right."},
        {Phrase::GalleryDawn,
         u"The south wall is a dawn in %1 shades: night blue at the left, then purple, rose and gold, and "
         u"pale light at the right."},
        {Phrase::GalleryHasMore, u"Both have more shades than your client has asked for."},
        {Phrase::GalleryWithoutColours,
         u"A rainbow and a dawn hang here, but your client shows no colours: they are grey."},
        {Phrase::GallerySea, u"Over the stairs sailors have painted a wave %1 and the word sea: %2."},
        {Phrase::SailorsHomes, u"Russia Greece Israel Japan Vietnam Thailand"},
        {Phrase::GalleryWithoutSea, u"Over the stairs sailors have painted something in letters of their "
                                    u"own, under a cloth: your client "
                                    u"and the game have not agreed on UTF-8."},
        {Phrase::ColoursTitle, u"Every colour there is:"},
        {Phrase::FloodLine, u"Line %1 of %2: the tide comes in, and the tide goes out again."},
        {Phrase::FloodHow, u"Type flood and a number of lines, at most 100000."},
        {Phrase::NameIs, u"You are called %1 from now on."},
        {Phrase::NameHow, u"Type name and one word of at most 20 letters."},
        {Phrase::NameTaken, u"Somebody else is called that."},
        {Phrase::NameStays, u"You are still called %1."},
        {Phrase::PasswordChoose,
         u"Choose a password for the name %1. It is kept until the game ends; an empty line leaves your name "
         u"as it is."},
        {Phrase::PasswordAsk, u"What is the password of %1? An empty line leaves your name as it is."},
        {Phrase::PasswordWrong, u"That is not the password of %1. Your name stays as it is."},
        {Phrase::PasswordTooLong, u"A password has at most 64 letters. Your name stays as it is."},
        {Phrase::PasswordCannotBeHidden,
         u"The name %1 has a password, and your client would show it while you type. Switch on standard "
         u"telnet, connect again, and ask for the name then."},
        {Phrase::SomeoneIsNowCalled, u"%1 is called %2 from now on."},
        {Phrase::Names, u"Ash Birch Cedar Hazel Juniper Linden Maple Rowan Spruce Willow"},
        {Phrase::CompressionOn,
         u"What you read was compressed on its way here. Type compress end to end that."},
        {Phrase::CompressionOff, u"Nothing is compressed. Your client can ask for it."},
        {Phrase::CompressionEnds, u"This is the last compressed line."},
        {Phrase::SoundOn, u"That was the groan from the crypt."},
        {Phrase::SoundOff, u"Your client has not asked for sounds."},
        {Phrase::UnknownWord, u"The word %1 means nothing here. Type help."},
        {Phrase::LineTooLong, u"That line was too long to listen to."},
        {Phrase::VillageIsFull, u"The village is full. Please come again later."},
        {Phrase::Farewell, u"The lanterns nod. Farewell!"},
    }},
    .roomNames = {{
        {Room::Square, u"Lantern Square"},
        {Room::Harbour, u"The Harbour"},
        {Room::Market, u"Market Lane"},
        {Room::Library, u"The Library"},
        {Room::Bridge, u"The Stone Bridge"},
        {Room::LighthouseFoot, u"At the Foot of the Lighthouse"},
        {Room::LanternRoom, u"The Lantern Room"},
        {Room::Garden, u"The Herb Garden"},
        {Room::GoblinDitch, u"The Goblin's Ditch"},
        {Room::Churchyard, u"The Churchyard"},
        {Room::Crypt, u"The Crypt"},
        {Room::Passage, u"A Dripping Passage"},
        {Room::Cellar, u"The Smugglers' Cellar"},
        {Room::Gallery, u"The Gallery"},
    }},
    .roomDescriptions = {{
        {Room::Square,
         u"Paper lanterns hang between the gables and click softly in the wind. All the lanes of the "
         u"village end here, at an old well that smells of moss."},
        {Room::Harbour,
         u"Ropes creak, gulls quarrel, and the tide slaps at the quay. Three boats lie here, none of "
         u"them dry."},
        {Room::Market,
         u"Awnings flap over baskets of apples and eels. Everybody calls out a price and nobody pays "
         u"it. "
         u"A trapdoor between two stalls stands open."},
        {Room::Library,
         u"Warm dust, leather, and the slow tick of a clock. The shelves go up further than the ladder "
         u"does."},
        {Room::Bridge,
         u"The stones are worn hollow by carts. The brook mutters below, and an iron rung leads down "
         u"into the dark beside it."},
        {Room::LighthouseFoot,
         u"The tower hums in the wind like a bottle. Its door is open, and a stair winds upwards, one "
         u"hundred and eight steps."},
        {Room::LanternRoom,
         u"Glass on every side, and the great lamp turning without hurry. You can hear the sea in all "
         u"directions but one."},
        {Room::Garden,
         u"Thyme underfoot, mint at the wall, bees in everything. Somebody has labelled the weeds as "
         u"well."},
        {Room::GoblinDitch,
         u"Mud, bones and a fire of wet sticks. It is not a nice place, but it is a good one to "
         u"practise "
         u"being kicked in."},
        {Room::Churchyard,
         u"Yews stand about like people who have forgotten what they came for. Under the largest a "
         u"flight of steps goes down."},
        {Room::Crypt,
         u"It is cold here, and quiet, apart from whoever is groaning. The air moves from the east."},
        {Room::Passage,
         u"Water counts the seconds. Iron rungs lead up towards daylight, and a low tunnel climbs to "
         u"the "
         u"northeast."},
        {Room::Cellar,
         u"Barrels to the ceiling, and footsteps overhead. A ladder leads up to a square of light that "
         u"smells of apples."},
        {Room::Gallery,
         u"At the end of the ladder there is a long white room under the roof, with a smell of paint. A rope "
         u"keeps visitors from touching the walls."},
    }},
    .directions = {{
        {Direction::North, u"north"},
        {Direction::South, u"south"},
        {Direction::East, u"east"},
        {Direction::West, u"west"},
        {Direction::NorthEast, u"northeast"},
        {Direction::NorthWest, u"northwest"},
        {Direction::SouthEast, u"southeast"},
        {Direction::SouthWest, u"southwest"},
        {Direction::Up, u"up"},
        {Direction::Down, u"down"},
    }},
    .things = {{
        {Thing::Apple, u"a red apple"},
        {Thing::Book, u"a thin book"},
        {Thing::Shell, u"a sea shell"},
        {Thing::Lamp, u"a brass lamp"},
        {Thing::Coin, u"a silver coin"},
    }},
    .thingDescriptions = {{
        {Thing::Apple, u"It is very red and slightly bitten."},
        {Thing::Book,
         u"The Traveller's Helper, it says. \"The recorder writes down the lines you type, and what "
         u"you "
         u"have recorded becomes a macro.\""},
        {Thing::Shell, u"You hold it to your ear. It plays the same song as the harbour, only smaller."},
        {Thing::Lamp, u"It is unlit. Rubbing it does nothing; somebody has tried."},
        {Thing::Coin, u"One side shows a king, the other the same king from behind."},
    }},
};
static_assert(texts.isComplete());

} // namespace

const ZNTDemoTexts& znt::demo::english() { return texts; }
