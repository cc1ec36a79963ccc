#include "ZNTDemoLanguages.h"

namespace
{

using Phrase = ZNTDemoPhrase;
using Room = ZNTDemoRoom;
using Direction = ZNTDemoDirection;
using Thing = ZNTDemoThing;

constexpr ZNTDemoTexts texts{
    .phrases = {{
        {Phrase::Welcome, u"欢迎来到灯笼湾，这个村子一个下午就能走熟。你叫%1。"},
        {Phrase::WelcomeHint, u"打 help 看命令，或者打 look guide 向向导请教。"},
        {Phrase::Prompt, u"> "},
        {Phrase::Exits, u"出口：%1。"},
        {Phrase::ListSeparator, u"、"},
        {Phrase::ListLast, u"和"},
        {Phrase::SomeoneIsHere, u"%1在这里。"},
        {Phrase::ThingIsHere, u"地上有%1。"},
        {Phrase::GuideIsHere, u"向导（guide）坐在井沿上。"},
        {Phrase::BobIsHere, u"鲍勃（Bob）在这里，一身鱼腥味。"},
        {Phrase::GoblinIsHere, u"妖精（goblin）在这里，盯着你的小腿。"},
        {Phrase::NoWay, u"这里没有往%1的路。"},
        {Phrase::SomeoneArrives, u"%1来了。"},
        {Phrase::SomeoneLeaves, u"%1往%2走了。"},
        {Phrase::SomeoneVanishes, u"%1回家了。"},
        {Phrase::Bob, u"鲍勃"},
        {Phrase::Goblin, u"妖精"},
        {Phrase::Guide, u"向导"},
        {Phrase::YouSay, u"你说：%1"},
        {Phrase::SomeoneSays, u"%1说：%2"},
        {Phrase::SayWhat, u"说什么？"},
        {Phrase::WhoIsThere, u"村里有：%1。"},
        {Phrase::You, u"%1（就是你）"},
        {Phrase::Help,
         u"走路：north south east west northeast northwest southeast southwest up down，或者 n s e w "
         u"ne nw se sw u d，也可以打北、南、东、西等等。\n"
         u"观看：look，look 东西，exits，who，inventory。\n"
         u"行动：say 话，get 东西，drop 东西，kick 某人，poke goblin，call bob，name 新名字。\n"
         u"试试客户端：colours，sound，compress，flood 行数。\n"
         u"离开：quit。"},
        {Phrase::CarryNothing, u"你什么也没带。"},
        {Phrase::Carry, u"你带着%1。"},
        {Phrase::Take, u"你拿起%1。"},
        {Phrase::SomeoneTakes, u"%1拿起%2。"},
        {Phrase::Drop, u"你放下%1。"},
        {Phrase::SomeoneDrops, u"%1放下%2。"},
        {Phrase::NotHere, u"这里没有这样的东西。"},
        {Phrase::NotCarried, u"你没带这样的东西。"},
        {Phrase::GoblinKicksYou, u"一只妖精狠狠地踢了你一脚！"},
        {Phrase::GoblinKicksSomeone, u"妖精踢了%1一脚。"},
        {Phrase::YouKickGoblin, u"你踢了妖精一脚。它抱着一条腿跳来跳去，骂个不停。"},
        {Phrase::YouPokeGoblin, u"你戳了戳妖精。"},
        {Phrase::SomeoneTeasesGoblin, u"%1在跟妖精找麻烦。"},
        {Phrase::YouKickSomeone, u"你踢了%1一脚，不重。"},
        {Phrase::SomeoneKicksYou, u"%1友好地踢了你一脚。"},
        {Phrase::NobodyToKick, u"够得着的地方没有这个人。"},
        {Phrase::YouCallBob, u"你大声叫鲍勃。"},
        {Phrase::BobIsHereAlready, u"鲍勃已经在这里了。"},
        {Phrase::GoblinText,
         u"只有膝盖高，满身疙瘩，动作很快。谁站着不动它就踢谁，等不及就戳它（poke goblin）。"},
        {Phrase::BobText, u"一个渔夫，走来走去，又走回来。叫他（call bob）他就来。"},
        {Phrase::GuideText,
         u"向导笑着说：\n"
         u"“速行会自己走熟路：打 !nesw 就能绕过灯塔走一圈再回到这里，一秒一步；数字表示重复，比如 "
         u"!3n2e，打 !stop 就停下。\n"
         u"宏是取了名字的一行命令：加一个叫 greet 的宏，内容是 say 你好 %1，以后打 ~greet 鲍勃 "
         u"就是向鲍勃问好。\n"
         u"触发器替你回答：模式写 一只%1狠狠地踢了你一脚！ 动作写 kick "
         u"%1，别人一踢你就踢回去，东南边的妖精会陪你练习。\n"
         u"它也能播放声音，比如有人来的时候；鲍勃隔一会儿就会路过。\n"
         u"打开游戏声音，往西南再往下，到地下墓室去听一听；打开压缩，除了字节变少，什么都不会变。\n"
         u"别的游戏大多要用标准 telnet，这里也有几样东西要用它：按 Ctrl+Shift+T，或者在终端里打 "
         u"/standard "
         u"on，然后重新连接。这样每个名字都有别人看不见的密码，文字会按窗口的宽度换行，从这里往西再往上的画廊"
         u"会有所有的颜色和外国的字。”"},
        {Phrase::GalleryRainbow,
         u"北墙上是一道彩虹，有 %1 种颜色：左边是红色，然后是橙、黄、绿、蓝，右边是紫色。"},
        {Phrase::GalleryDawn,
         u"南墙上是一片朝霞，有 %1 种颜色：左边是夜蓝，然后是紫、玫瑰红、金黄，右边是淡淡的亮光。"},
        {Phrase::GalleryHasMore, u"这两幅画的颜色，比你的客户端要求的还多。"},
        {Phrase::GalleryWithoutColours,
         u"这里挂着一道彩虹和一片朝霞，可是你的客户端不显示颜色，所以都是灰的。"},
        {Phrase::GallerySea, u"楼梯上面，水手们画了一个海浪 %1 和“海”这个字：%2。"},
        {Phrase::SailorsHomes, u"俄国 希腊 以色列 日本 越南 泰国"},
        {Phrase::GalleryWithoutSea,
         u"楼梯上面，水手们用他们自己的文字写了些什么，用布遮着：你的客户端和游戏还没有约定用 UTF-8。"},
        {Phrase::ColoursTitle, u"所有的颜色："},
        {Phrase::FloodLine, u"第 %1 行，共 %2 行：潮水涨上来，潮水又退下去。"},
        {Phrase::FloodHow, u"打 flood 和行数，最多 100000 行。"},
        {Phrase::NameIs, u"从现在起你叫%1。"},
        {Phrase::NameHow, u"打 name 和一个名字，最多 20 个字。"},
        {Phrase::NameTaken, u"已经有人叫这个名字了。"},
        {Phrase::NameStays, u"你还是叫%1。"},
        {Phrase::PasswordChoose, u"给%1这个名字选一个密码。密码留到游戏结束；打一个空行，名字就不变。"},
        {Phrase::PasswordAsk, u"%1的密码是什么？打一个空行，名字就不变。"},
        {Phrase::PasswordWrong, u"这不是%1的密码。你的名字没有变。"},
        {Phrase::PasswordTooLong, u"密码最多 64 个字。你的名字没有变。"},
        {Phrase::PasswordCannotBeHidden, u"%1这个名字有密码，可是你打的密码，你的客户端会显示出来。请打开标准"
                                         u" telnet，重新连接，再要这个名字。"},
        {Phrase::SomeoneIsNowCalled, u"从现在起%1叫%2。"},
        {Phrase::Names, u"小白 小桦 小松 小榛 小柏 小菩 小枫 小楠 小杉 小柳"},
        {Phrase::CompressionOn, u"你读到的字是压缩以后送来的。打 compress end 就结束压缩。"},
        {Phrase::CompressionOff, u"现在没有压缩。你的客户端可以要求压缩。"},
        {Phrase::CompressionEnds, u"这是压缩的最后一行。"},
        {Phrase::SoundOn, u"这就是墓室里的呻吟。"},
        {Phrase::SoundOff, u"你的客户端没有要求声音。"},
        {Phrase::UnknownWord, u"这里没人懂“%1”。打 help 看命令。"},
        {Phrase::LineTooLong, u"这一行太长了，没人听得完。"},
        {Phrase::VillageIsFull, u"村里住满了，请以后再来。"},
        {Phrase::Farewell, u"灯笼向你点头。再见！"},
    }},
    .roomNames = {{
        {Room::Square, u"灯笼广场"},
        {Room::Harbour, u"码头"},
        {Room::Market, u"集市小巷"},
        {Room::Library, u"藏书楼"},
        {Room::Bridge, u"石桥"},
        {Room::LighthouseFoot, u"灯塔脚下"},
        {Room::LanternRoom, u"灯室"},
        {Room::Garden, u"药草园"},
        {Room::GoblinDitch, u"妖精的水沟"},
        {Room::Churchyard, u"墓园"},
        {Room::Crypt, u"地下墓室"},
        {Room::Passage, u"滴水的通道"},
        {Room::Cellar, u"走私者的地窖"},
        {Room::Gallery, u"画廊"},
    }},
    .roomDescriptions = {{
        {Room::Square,
         u"屋檐之间挂着一串串纸灯笼，在风里轻轻碰响。村里的小路都通到这里，通到这口长满青苔的老井边。"},
        {Room::Harbour, u"缆绳吱吱作响，海鸥吵个不停，潮水拍打着石岸。这里停着三条船，没有一条是干的。"},
        {Room::Market,
         u"布棚下面摆满了苹果和鳗鱼。人人都在喊价，却没有人照价付钱。两个摊子之间，一扇地板门敞开着。"},
        {Room::Library, u"暖暖的灰尘，皮革的气味，还有时钟慢慢的滴答声。书架比梯子还要高。"},
        {Room::Bridge, u"桥面的石头被车轮磨出了凹痕。溪水在下面低语，旁边有铁梯通向黑暗的地下。"},
        {Room::LighthouseFoot, u"高塔在风中嗡嗡地响，像一只瓶子。门开着，楼梯盘旋而上，一共一百零八级。"},
        {Room::LanternRoom, u"四面都是玻璃，大灯不慌不忙地转着。除了一面，到处都听得见大海。"},
        {Room::Garden, u"脚下是百里香，墙边是薄荷，到处是蜜蜂。连杂草也有人挂上了名牌。"},
        {Room::GoblinDitch, u"烂泥、骨头，还有一堆湿柴生的火。这不是个好地方，不过要练习挨踢，倒是正好。"},
        {Room::Churchyard, u"紫杉站在四周，像一群忘了为什么来的人。最大的一棵下面，有台阶通到地下。"},
        {Room::Crypt, u"这里又冷又静，只有不知是谁在呻吟。风从东边吹来。"},
        {Room::Passage, u"水滴数着时间。铁梯向上通往亮处，一条低矮的地道向东北方爬升。"},
        {Room::Cellar, u"酒桶一直堆到屋顶，头上有脚步声。梯子通向一方亮光，那里有苹果的香味。"},
        {Room::Gallery, u"梯子尽头是屋顶下一间长长的白房间，有油漆的气味。墙前拉着绳子，不让人摸墙上的画。"},
    }},
    .directions = {{
        {Direction::North, u"北"},
        {Direction::South, u"南"},
        {Direction::East, u"东"},
        {Direction::West, u"西"},
        {Direction::NorthEast, u"东北"},
        {Direction::NorthWest, u"西北"},
        {Direction::SouthEast, u"东南"},
        {Direction::SouthWest, u"西南"},
        {Direction::Up, u"上"},
        {Direction::Down, u"下"},
    }},
    .things = {{
        {Thing::Apple, u"一个红苹果"},
        {Thing::Book, u"一本薄书"},
        {Thing::Shell, u"一个海螺"},
        {Thing::Lamp, u"一盏铜灯"},
        {Thing::Coin, u"一枚银币"},
    }},
    .thingDescriptions = {{
        {Thing::Apple, u"很红，被咬过一小口。"},
        {Thing::Book, u"书名是《旅人助手》。上面写着：“录制器会记下你打的每一行，录好以后就成了宏。”"},
        {Thing::Shell, u"你把它放到耳边。它唱的歌和码头一样，只是小声一点。"},
        {Thing::Lamp, u"没有点亮。擦它也没有用，有人试过了。"},
        {Thing::Coin, u"一面是国王，另一面还是那位国王，不过是背影。"},
    }},
};
static_assert(texts.isComplete());

} // namespace

const ZNTDemoTexts& znt::demo::simplifiedChinese() { return texts; }
