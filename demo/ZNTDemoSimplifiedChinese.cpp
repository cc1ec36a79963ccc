#include "ZNTDemoLanguages.h"

namespace
{

class SimplifiedChinese final : public ZNTDemoTexts
{
public:
    [[nodiscard]] std::u16string_view phrase(ZNTDemoPhrase phrase) const override;
    [[nodiscard]] std::u16string_view roomName(ZNTDemoRoom room) const override;
    [[nodiscard]] std::u16string_view roomDescription(ZNTDemoRoom room) const override;
    [[nodiscard]] std::u16string_view direction(ZNTDemoDirection direction) const override;
    [[nodiscard]] std::u16string_view thing(ZNTDemoThing thing) const override;
    [[nodiscard]] std::u16string_view thingDescription(ZNTDemoThing thing) const override;
};

std::u16string_view SimplifiedChinese::roomName(ZNTDemoRoom room) const
{
    switch (room) {
    case ZNTDemoRoom::Square:
        return u"灯笼广场";
    case ZNTDemoRoom::Harbour:
        return u"码头";
    case ZNTDemoRoom::Market:
        return u"集市小巷";
    case ZNTDemoRoom::Library:
        return u"藏书楼";
    case ZNTDemoRoom::Bridge:
        return u"石桥";
    case ZNTDemoRoom::LighthouseFoot:
        return u"灯塔脚下";
    case ZNTDemoRoom::LanternRoom:
        return u"灯室";
    case ZNTDemoRoom::Garden:
        return u"药草园";
    case ZNTDemoRoom::GoblinDitch:
        return u"妖精的水沟";
    case ZNTDemoRoom::Churchyard:
        return u"墓园";
    case ZNTDemoRoom::Crypt:
        return u"地下墓室";
    case ZNTDemoRoom::Passage:
        return u"滴水的通道";
    case ZNTDemoRoom::Cellar:
        return u"走私者的地窖";
    }
    return {};
}

std::u16string_view SimplifiedChinese::roomDescription(ZNTDemoRoom room) const
{
    switch (room) {
    case ZNTDemoRoom::Square:
        return u"屋檐之间挂着一串串纸灯笼，在风里轻轻碰响。村里的小路都通到这里，通到这口长满青苔的老井边。";
    case ZNTDemoRoom::Harbour:
        return u"缆绳吱吱作响，海鸥吵个不停，潮水拍打着石岸。这里停着三条船，没有一条是干的。";
    case ZNTDemoRoom::Market:
        return u"布棚下面摆满了苹果和鳗鱼。人人都在喊价，却没有人照价付钱。两个摊子之间，一扇地板门敞开着。";
    case ZNTDemoRoom::Library:
        return u"暖暖的灰尘，皮革的气味，还有时钟慢慢的滴答声。书架比梯子还要高。";
    case ZNTDemoRoom::Bridge:
        return u"桥面的石头被车轮磨出了凹痕。溪水在下面低语，旁边有铁梯通向黑暗的地下。";
    case ZNTDemoRoom::LighthouseFoot:
        return u"高塔在风中嗡嗡地响，像一只瓶子。门开着，楼梯盘旋而上，一共一百零八级。";
    case ZNTDemoRoom::LanternRoom:
        return u"四面都是玻璃，大灯不慌不忙地转着。除了一面，到处都听得见大海。";
    case ZNTDemoRoom::Garden:
        return u"脚下是百里香，墙边是薄荷，到处是蜜蜂。连杂草也有人挂上了名牌。";
    case ZNTDemoRoom::GoblinDitch:
        return u"烂泥、骨头，还有一堆湿柴生的火。这不是个好地方，不过要练习挨踢，倒是正好。";
    case ZNTDemoRoom::Churchyard:
        return u"紫杉站在四周，像一群忘了为什么来的人。最大的一棵下面，有台阶通到地下。";
    case ZNTDemoRoom::Crypt:
        return u"这里又冷又静，只有不知是谁在呻吟。风从东边吹来。";
    case ZNTDemoRoom::Passage:
        return u"水滴数着时间。铁梯向上通往亮处，一条低矮的地道向东北方爬升。";
    case ZNTDemoRoom::Cellar:
        return u"酒桶一直堆到屋顶，头上有脚步声。梯子通向一方亮光，那里有苹果的香味。";
    }
    return {};
}

std::u16string_view SimplifiedChinese::direction(ZNTDemoDirection direction) const
{
    switch (direction) {
    case ZNTDemoDirection::North:
        return u"北";
    case ZNTDemoDirection::South:
        return u"南";
    case ZNTDemoDirection::East:
        return u"东";
    case ZNTDemoDirection::West:
        return u"西";
    case ZNTDemoDirection::NorthEast:
        return u"东北";
    case ZNTDemoDirection::NorthWest:
        return u"西北";
    case ZNTDemoDirection::SouthEast:
        return u"东南";
    case ZNTDemoDirection::SouthWest:
        return u"西南";
    case ZNTDemoDirection::Up:
        return u"上";
    case ZNTDemoDirection::Down:
        return u"下";
    }
    return {};
}

std::u16string_view SimplifiedChinese::thing(ZNTDemoThing thing) const
{
    switch (thing) {
    case ZNTDemoThing::Apple:
        return u"一个红苹果";
    case ZNTDemoThing::Book:
        return u"一本薄书";
    case ZNTDemoThing::Shell:
        return u"一个海螺";
    case ZNTDemoThing::Lamp:
        return u"一盏铜灯";
    case ZNTDemoThing::Coin:
        return u"一枚银币";
    }
    return {};
}

std::u16string_view SimplifiedChinese::thingDescription(ZNTDemoThing thing) const
{
    switch (thing) {
    case ZNTDemoThing::Apple:
        return u"很红，被咬过一小口。";
    case ZNTDemoThing::Book:
        return u"书名是《旅人助手》。上面写着：“录制器会记下你打的每一行，录好以后就成了宏。”";
    case ZNTDemoThing::Shell:
        return u"你把它放到耳边。它唱的歌和码头一样，只是小声一点。";
    case ZNTDemoThing::Lamp:
        return u"没有点亮。擦它也没有用，有人试过了。";
    case ZNTDemoThing::Coin:
        return u"一面是国王，另一面还是那位国王，不过是背影。";
    }
    return {};
}

std::u16string_view SimplifiedChinese::phrase(ZNTDemoPhrase phrase) const
{
    switch (phrase) {
    case ZNTDemoPhrase::Welcome:
        return u"欢迎来到灯笼湾，这个村子一个下午就能走熟。你叫%1。";
    case ZNTDemoPhrase::WelcomeHint:
        return u"打 help 看命令，或者打 look guide 向向导请教。";
    case ZNTDemoPhrase::Prompt:
        return u"> ";
    case ZNTDemoPhrase::Exits:
        return u"出口：%1。";
    case ZNTDemoPhrase::ListSeparator:
        return u"、";
    case ZNTDemoPhrase::ListLast:
        return u"和";
    case ZNTDemoPhrase::SomeoneIsHere:
        return u"%1在这里。";
    case ZNTDemoPhrase::ThingIsHere:
        return u"地上有%1。";
    case ZNTDemoPhrase::GuideIsHere:
        return u"向导（guide）坐在井沿上。";
    case ZNTDemoPhrase::BobIsHere:
        return u"鲍勃（Bob）在这里，一身鱼腥味。";
    case ZNTDemoPhrase::GoblinIsHere:
        return u"妖精（goblin）在这里，盯着你的小腿。";
    case ZNTDemoPhrase::NoWay:
        return u"这里没有往%1的路。";
    case ZNTDemoPhrase::SomeoneArrives:
        return u"%1来了。";
    case ZNTDemoPhrase::SomeoneLeaves:
        return u"%1往%2走了。";
    case ZNTDemoPhrase::SomeoneVanishes:
        return u"%1回家了。";
    case ZNTDemoPhrase::Bob:
        return u"鲍勃";
    case ZNTDemoPhrase::Goblin:
        return u"妖精";
    case ZNTDemoPhrase::Guide:
        return u"向导";
    case ZNTDemoPhrase::YouSay:
        return u"你说：%1";
    case ZNTDemoPhrase::SomeoneSays:
        return u"%1说：%2";
    case ZNTDemoPhrase::SayWhat:
        return u"说什么？";
    case ZNTDemoPhrase::WhoIsThere:
        return u"村里有：%1。";
    case ZNTDemoPhrase::You:
        return u"%1（就是你）";
    case ZNTDemoPhrase::Help:
        return u"走路：north south east west northeast northwest southeast southwest up down，或者 n s e w "
               u"ne nw se sw u d，也可以打北、南、东、西等等。\n"
               u"观看：look，look 东西，exits，who，inventory。\n"
               u"行动：say 话，get 东西，drop 东西，kick 某人，poke goblin，call bob，name 新名字。\n"
               u"试试客户端：colours，sound，compress，flood 行数。\n"
               u"离开：quit。";
    case ZNTDemoPhrase::CarryNothing:
        return u"你什么也没带。";
    case ZNTDemoPhrase::Carry:
        return u"你带着%1。";
    case ZNTDemoPhrase::Take:
        return u"你拿起%1。";
    case ZNTDemoPhrase::SomeoneTakes:
        return u"%1拿起%2。";
    case ZNTDemoPhrase::Drop:
        return u"你放下%1。";
    case ZNTDemoPhrase::SomeoneDrops:
        return u"%1放下%2。";
    case ZNTDemoPhrase::NotHere:
        return u"这里没有这样的东西。";
    case ZNTDemoPhrase::NotCarried:
        return u"你没带这样的东西。";
    case ZNTDemoPhrase::GoblinKicksYou:
        return u"一只妖精狠狠地踢了你一脚！";
    case ZNTDemoPhrase::GoblinKicksSomeone:
        return u"妖精踢了%1一脚。";
    case ZNTDemoPhrase::YouKickGoblin:
        return u"你踢了妖精一脚。它抱着一条腿跳来跳去，骂个不停。";
    case ZNTDemoPhrase::YouPokeGoblin:
        return u"你戳了戳妖精。";
    case ZNTDemoPhrase::SomeoneTeasesGoblin:
        return u"%1在跟妖精找麻烦。";
    case ZNTDemoPhrase::YouKickSomeone:
        return u"你踢了%1一脚，不重。";
    case ZNTDemoPhrase::SomeoneKicksYou:
        return u"%1友好地踢了你一脚。";
    case ZNTDemoPhrase::NobodyToKick:
        return u"够得着的地方没有这个人。";
    case ZNTDemoPhrase::YouCallBob:
        return u"你大声叫鲍勃。";
    case ZNTDemoPhrase::BobIsHereAlready:
        return u"鲍勃已经在这里了。";
    case ZNTDemoPhrase::GoblinText:
        return u"只有膝盖高，满身疙瘩，动作很快。谁站着不动它就踢谁，等不及就戳它（poke goblin）。";
    case ZNTDemoPhrase::BobText:
        return u"一个渔夫，走来走去，又走回来。叫他（call bob）他就来。";
    case ZNTDemoPhrase::GuideText:
        return u"向导笑着说：\n"
               u"“速行会自己走熟路：打 !nesw 就能绕过灯塔走一圈再回到这里，一秒一步；数字表示重复，比如 "
               u"!3n2e，打 !stop 就停下。\n"
               u"宏是取了名字的一行命令：加一个叫 greet 的宏，内容是 say 你好 %1，以后打 ~greet 鲍勃 "
               u"就是向鲍勃问好。\n"
               u"触发器替你回答：模式写 一只%1狠狠地踢了你一脚！ 动作写 kick "
               u"%1，别人一踢你就踢回去，东南边的妖精会陪你练习。\n"
               u"它也能播放声音，比如有人来的时候；鲍勃隔一会儿就会路过。\n"
               u"打开游戏声音，往西南再往下，到地下墓室去听一听；打开压缩，除了字节变少，什么都不会变。”";
    case ZNTDemoPhrase::ColoursTitle:
        return u"所有的颜色：";
    case ZNTDemoPhrase::FloodLine:
        return u"第 %1 行，共 %2 行：潮水涨上来，潮水又退下去。";
    case ZNTDemoPhrase::FloodHow:
        return u"打 flood 和行数，最多 100000 行。";
    case ZNTDemoPhrase::NameIs:
        return u"从现在起你叫%1。";
    case ZNTDemoPhrase::NameHow:
        return u"打 name 和一个名字，最多 20 个字。";
    case ZNTDemoPhrase::NameTaken:
        return u"已经有人叫这个名字了。";
    case ZNTDemoPhrase::SomeoneIsNowCalled:
        return u"从现在起%1叫%2。";
    case ZNTDemoPhrase::Names:
        return u"小白 小桦 小松 小榛 小柏 小菩 小枫 小楠 小杉 小柳";
    case ZNTDemoPhrase::CompressionOn:
        return u"你读到的字是压缩以后送来的。打 compress end 就结束压缩。";
    case ZNTDemoPhrase::CompressionOff:
        return u"现在没有压缩。你的客户端可以要求压缩。";
    case ZNTDemoPhrase::CompressionEnds:
        return u"这是压缩的最后一行。";
    case ZNTDemoPhrase::SoundOn:
        return u"这就是墓室里的呻吟。";
    case ZNTDemoPhrase::SoundOff:
        return u"你的客户端没有要求声音。";
    case ZNTDemoPhrase::UnknownWord:
        return u"这里没人懂“%1”。打 help 看命令。";
    case ZNTDemoPhrase::LineTooLong:
        return u"这一行太长了，没人听得完。";
    case ZNTDemoPhrase::VillageIsFull:
        return u"村里住满了，请以后再来。";
    case ZNTDemoPhrase::Farewell:
        return u"灯笼向你点头。再见！";
    }
    return {};
}

} // namespace

const ZNTDemoTexts& znt::demo::simplifiedChinese()
{
    static const SimplifiedChinese texts;
    return texts;
}
