#include "ZNTDemoLanguages.h"

namespace
{

class TraditionalChinese final : public ZNTDemoTexts
{
public:
    [[nodiscard]] std::u16string_view phrase(ZNTDemoPhrase phrase) const override;
    [[nodiscard]] std::u16string_view roomName(ZNTDemoRoom room) const override;
    [[nodiscard]] std::u16string_view roomDescription(ZNTDemoRoom room) const override;
    [[nodiscard]] std::u16string_view direction(ZNTDemoDirection direction) const override;
    [[nodiscard]] std::u16string_view thing(ZNTDemoThing thing) const override;
    [[nodiscard]] std::u16string_view thingDescription(ZNTDemoThing thing) const override;
};

std::u16string_view TraditionalChinese::roomName(ZNTDemoRoom room) const
{
    switch (room) {
    case ZNTDemoRoom::Square:
        return u"燈籠廣場";
    case ZNTDemoRoom::Harbour:
        return u"碼頭";
    case ZNTDemoRoom::Market:
        return u"市集小巷";
    case ZNTDemoRoom::Library:
        return u"藏書樓";
    case ZNTDemoRoom::Bridge:
        return u"石橋";
    case ZNTDemoRoom::LighthouseFoot:
        return u"燈塔腳下";
    case ZNTDemoRoom::LanternRoom:
        return u"燈室";
    case ZNTDemoRoom::Garden:
        return u"藥草園";
    case ZNTDemoRoom::GoblinDitch:
        return u"妖精的水溝";
    case ZNTDemoRoom::Churchyard:
        return u"墓園";
    case ZNTDemoRoom::Crypt:
        return u"地下墓室";
    case ZNTDemoRoom::Passage:
        return u"滴水的通道";
    case ZNTDemoRoom::Cellar:
        return u"走私者的地窖";
    }
    return {};
}

std::u16string_view TraditionalChinese::roomDescription(ZNTDemoRoom room) const
{
    switch (room) {
    case ZNTDemoRoom::Square:
        return u"屋簷之間掛著一串串紙燈籠，在風裡輕輕碰響。村裡的小路都通到這裡，通到這口長滿青苔的老井邊。";
    case ZNTDemoRoom::Harbour:
        return u"纜繩吱吱作響，海鷗吵個不停，潮水拍打著石岸。這裡停著三條船，沒有一條是乾的。";
    case ZNTDemoRoom::Market:
        return u"布棚下面擺滿了蘋果和鰻魚。人人都在喊價，卻沒有人照價付錢。兩個攤子之間，一扇地板門敞開著。";
    case ZNTDemoRoom::Library:
        return u"暖暖的灰塵，皮革的氣味，還有時鐘慢慢的滴答聲。書架比梯子還要高。";
    case ZNTDemoRoom::Bridge:
        return u"橋面的石頭被車輪磨出了凹痕。溪水在下面低語，旁邊有鐵梯通向黑暗的地下。";
    case ZNTDemoRoom::LighthouseFoot:
        return u"高塔在風中嗡嗡地響，像一隻瓶子。門開著，樓梯盤旋而上，一共一百零八級。";
    case ZNTDemoRoom::LanternRoom:
        return u"四面都是玻璃，大燈不慌不忙地轉著。除了一面，到處都聽得見大海。";
    case ZNTDemoRoom::Garden:
        return u"腳下是百里香，牆邊是薄荷，到處是蜜蜂。連雜草也有人掛上了名牌。";
    case ZNTDemoRoom::GoblinDitch:
        return u"爛泥、骨頭，還有一堆濕柴生的火。這不是個好地方，不過要練習挨踢，倒是正好。";
    case ZNTDemoRoom::Churchyard:
        return u"紫杉站在四周，像一群忘了為什麼來的人。最大的一棵下面，有臺階通到地下。";
    case ZNTDemoRoom::Crypt:
        return u"這裡又冷又靜，只有不知是誰在呻吟。風從東邊吹來。";
    case ZNTDemoRoom::Passage:
        return u"水滴數著時間。鐵梯向上通往亮處，一條低矮的地道向東北方爬升。";
    case ZNTDemoRoom::Cellar:
        return u"酒桶一直堆到屋頂，頭上有腳步聲。梯子通向一方亮光，那裡有蘋果的香味。";
    }
    return {};
}

std::u16string_view TraditionalChinese::direction(ZNTDemoDirection direction) const
{
    switch (direction) {
    case ZNTDemoDirection::North:
        return u"北";
    case ZNTDemoDirection::South:
        return u"南";
    case ZNTDemoDirection::East:
        return u"東";
    case ZNTDemoDirection::West:
        return u"西";
    case ZNTDemoDirection::NorthEast:
        return u"東北";
    case ZNTDemoDirection::NorthWest:
        return u"西北";
    case ZNTDemoDirection::SouthEast:
        return u"東南";
    case ZNTDemoDirection::SouthWest:
        return u"西南";
    case ZNTDemoDirection::Up:
        return u"上";
    case ZNTDemoDirection::Down:
        return u"下";
    }
    return {};
}

std::u16string_view TraditionalChinese::thing(ZNTDemoThing thing) const
{
    switch (thing) {
    case ZNTDemoThing::Apple:
        return u"一個紅蘋果";
    case ZNTDemoThing::Book:
        return u"一本薄書";
    case ZNTDemoThing::Shell:
        return u"一個海螺";
    case ZNTDemoThing::Lamp:
        return u"一盞銅燈";
    case ZNTDemoThing::Coin:
        return u"一枚銀幣";
    }
    return {};
}

std::u16string_view TraditionalChinese::thingDescription(ZNTDemoThing thing) const
{
    switch (thing) {
    case ZNTDemoThing::Apple:
        return u"很紅，被咬過一小口。";
    case ZNTDemoThing::Book:
        return u"書名是《旅人助手》。上面寫著：「錄製器會記下你打的每一行，錄好以後就成了巨集。」";
    case ZNTDemoThing::Shell:
        return u"你把它放到耳邊。它唱的歌和碼頭一樣，只是小聲一點。";
    case ZNTDemoThing::Lamp:
        return u"沒有點亮。擦它也沒有用，有人試過了。";
    case ZNTDemoThing::Coin:
        return u"一面是國王，另一面還是那位國王，不過是背影。";
    }
    return {};
}

std::u16string_view TraditionalChinese::phrase(ZNTDemoPhrase phrase) const
{
    switch (phrase) {
    case ZNTDemoPhrase::Welcome:
        return u"歡迎來到燈籠灣，這個村子一個下午就能走熟。你叫%1。";
    case ZNTDemoPhrase::WelcomeHint:
        return u"打 help 看指令，或者打 look guide 向嚮導請教。";
    case ZNTDemoPhrase::Prompt:
        return u"> ";
    case ZNTDemoPhrase::Exits:
        return u"出口：%1。";
    case ZNTDemoPhrase::ListSeparator:
        return u"、";
    case ZNTDemoPhrase::ListLast:
        return u"和";
    case ZNTDemoPhrase::SomeoneIsHere:
        return u"%1在這裡。";
    case ZNTDemoPhrase::ThingIsHere:
        return u"地上有%1。";
    case ZNTDemoPhrase::GuideIsHere:
        return u"嚮導（guide）坐在井沿上。";
    case ZNTDemoPhrase::BobIsHere:
        return u"鮑伯（Bob）在這裡，一身魚腥味。";
    case ZNTDemoPhrase::GoblinIsHere:
        return u"妖精（goblin）在這裡，盯著你的小腿。";
    case ZNTDemoPhrase::NoWay:
        return u"這裡沒有往%1的路。";
    case ZNTDemoPhrase::SomeoneArrives:
        return u"%1來了。";
    case ZNTDemoPhrase::SomeoneLeaves:
        return u"%1往%2走了。";
    case ZNTDemoPhrase::SomeoneVanishes:
        return u"%1回家了。";
    case ZNTDemoPhrase::Bob:
        return u"鮑伯";
    case ZNTDemoPhrase::Goblin:
        return u"妖精";
    case ZNTDemoPhrase::Guide:
        return u"嚮導";
    case ZNTDemoPhrase::YouSay:
        return u"你說：%1";
    case ZNTDemoPhrase::SomeoneSays:
        return u"%1說：%2";
    case ZNTDemoPhrase::SayWhat:
        return u"說什麼？";
    case ZNTDemoPhrase::WhoIsThere:
        return u"村裡有：%1。";
    case ZNTDemoPhrase::You:
        return u"%1（就是你）";
    case ZNTDemoPhrase::Help:
        return u"走路：north south east west northeast northwest southeast southwest up down，或者 n s e w "
               u"ne nw se sw u d，也可以打北、南、東、西等等。\n"
               u"觀看：look，look 東西，exits，who，inventory。\n"
               u"行動：say 話，get 東西，drop 東西，kick 某人，poke goblin，call bob，name 新名字。\n"
               u"試試用戶端：colours，sound，compress，flood 行數。\n"
               u"離開：quit。";
    case ZNTDemoPhrase::CarryNothing:
        return u"你什麼也沒帶。";
    case ZNTDemoPhrase::Carry:
        return u"你帶著%1。";
    case ZNTDemoPhrase::Take:
        return u"你拿起%1。";
    case ZNTDemoPhrase::SomeoneTakes:
        return u"%1拿起%2。";
    case ZNTDemoPhrase::Drop:
        return u"你放下%1。";
    case ZNTDemoPhrase::SomeoneDrops:
        return u"%1放下%2。";
    case ZNTDemoPhrase::NotHere:
        return u"這裡沒有這樣的東西。";
    case ZNTDemoPhrase::NotCarried:
        return u"你沒帶這樣的東西。";
    case ZNTDemoPhrase::GoblinKicksYou:
        return u"一隻妖精狠狠地踢了你一腳！";
    case ZNTDemoPhrase::GoblinKicksSomeone:
        return u"妖精踢了%1一腳。";
    case ZNTDemoPhrase::YouKickGoblin:
        return u"你踢了妖精一腳。牠抱著一條腿跳來跳去，罵個不停。";
    case ZNTDemoPhrase::YouPokeGoblin:
        return u"你戳了戳妖精。";
    case ZNTDemoPhrase::SomeoneTeasesGoblin:
        return u"%1在跟妖精找麻煩。";
    case ZNTDemoPhrase::YouKickSomeone:
        return u"你踢了%1一腳，不重。";
    case ZNTDemoPhrase::SomeoneKicksYou:
        return u"%1友好地踢了你一腳。";
    case ZNTDemoPhrase::NobodyToKick:
        return u"搆得著的地方沒有這個人。";
    case ZNTDemoPhrase::YouCallBob:
        return u"你大聲叫鮑伯。";
    case ZNTDemoPhrase::BobIsHereAlready:
        return u"鮑伯已經在這裡了。";
    case ZNTDemoPhrase::GoblinText:
        return u"只有膝蓋高，滿身疙瘩，動作很快。誰站著不動牠就踢誰，等不及就戳牠（poke goblin）。";
    case ZNTDemoPhrase::BobText:
        return u"一個漁夫，走來走去，又走回來。叫他（call bob）他就來。";
    case ZNTDemoPhrase::GuideText:
        return u"嚮導笑著說：\n"
               u"「速行會自己走熟路：打 !nesw 就能繞過燈塔走一圈再回到這裡，一秒一步；數字表示重複，比如 "
               u"!3n2e，打 !stop 就停下。\n"
               u"巨集是取了名字的一行指令：加一個叫 greet 的巨集，內容是 say 你好 %1，以後打 ~greet 鮑伯 "
               u"就是向鮑伯問好。\n"
               u"觸發器替你回答：樣式寫 一隻%1狠狠地踢了你一腳！ 動作寫 kick "
               u"%1，別人一踢你就踢回去，東南邊的妖精會陪你練習。\n"
               u"它也能播放聲音，比如有人來的時候；鮑伯隔一會兒就會路過。\n"
               u"打開遊戲聲音，往西南再往下，到地下墓室去聽一聽；打開壓縮，除了位元組變少，什麼都不會變。」";
    case ZNTDemoPhrase::ColoursTitle:
        return u"所有的顏色：";
    case ZNTDemoPhrase::FloodLine:
        return u"第 %1 行，共 %2 行：潮水漲上來，潮水又退下去。";
    case ZNTDemoPhrase::FloodHow:
        return u"打 flood 和行數，最多 100000 行。";
    case ZNTDemoPhrase::NameIs:
        return u"從現在起你叫%1。";
    case ZNTDemoPhrase::NameHow:
        return u"打 name 和一個名字，最多 20 個字。";
    case ZNTDemoPhrase::NameTaken:
        return u"已經有人叫這個名字了。";
    case ZNTDemoPhrase::SomeoneIsNowCalled:
        return u"從現在起%1叫%2。";
    case ZNTDemoPhrase::Names:
        return u"小白 小樺 小松 小榛 小柏 小菩 小楓 小楠 小杉 小柳";
    case ZNTDemoPhrase::CompressionOn:
        return u"你讀到的字是壓縮以後送來的。打 compress end 就結束壓縮。";
    case ZNTDemoPhrase::CompressionOff:
        return u"現在沒有壓縮。你的用戶端可以要求壓縮。";
    case ZNTDemoPhrase::CompressionEnds:
        return u"這是壓縮的最後一行。";
    case ZNTDemoPhrase::SoundOn:
        return u"這就是墓室裡的呻吟。";
    case ZNTDemoPhrase::SoundOff:
        return u"你的用戶端沒有要求聲音。";
    case ZNTDemoPhrase::UnknownWord:
        return u"這裡沒人懂「%1」。打 help 看指令。";
    case ZNTDemoPhrase::LineTooLong:
        return u"這一行太長了，沒人聽得完。";
    case ZNTDemoPhrase::VillageIsFull:
        return u"村裡住滿了，請以後再來。";
    case ZNTDemoPhrase::Farewell:
        return u"燈籠向你點頭。再見！";
    }
    return {};
}

} // namespace

const ZNTDemoTexts& znt::demo::traditionalChinese()
{
    static const TraditionalChinese texts;
    return texts;
}
