#include "ZNTDemoLanguages.h"

namespace
{

using Phrase = ZNTDemoPhrase;
using Room = ZNTDemoRoom;
using Direction = ZNTDemoDirection;
using Thing = ZNTDemoThing;

constexpr ZNTDemoTexts texts{
    .phrases = {{
        {Phrase::Welcome, u"歡迎來到燈籠灣，這個村子一個下午就能走熟。你叫%1。"},
        {Phrase::WelcomeHint, u"打 help 看指令，或者打 look guide 向嚮導請教。"},
        {Phrase::Prompt, u"> "},
        {Phrase::Exits, u"出口：%1。"},
        {Phrase::ListSeparator, u"、"},
        {Phrase::ListLast, u"和"},
        {Phrase::SomeoneIsHere, u"%1在這裡。"},
        {Phrase::ThingIsHere, u"地上有%1。"},
        {Phrase::GuideIsHere, u"嚮導（guide）坐在井沿上。"},
        {Phrase::BobIsHere, u"鮑伯（Bob）在這裡，一身魚腥味。"},
        {Phrase::GoblinIsHere, u"妖精（goblin）在這裡，盯著你的小腿。"},
        {Phrase::NoWay, u"這裡沒有往%1的路。"},
        {Phrase::SomeoneArrives, u"%1來了。"},
        {Phrase::SomeoneLeaves, u"%1往%2走了。"},
        {Phrase::SomeoneVanishes, u"%1回家了。"},
        {Phrase::Bob, u"鮑伯"},
        {Phrase::Goblin, u"妖精"},
        {Phrase::Guide, u"嚮導"},
        {Phrase::YouSay, u"你說：%1"},
        {Phrase::SomeoneSays, u"%1說：%2"},
        {Phrase::SayWhat, u"說什麼？"},
        {Phrase::WhoIsThere, u"村裡有：%1。"},
        {Phrase::You, u"%1（就是你）"},
        {Phrase::Help,
         u"走路：north south east west northeast northwest southeast southwest up down，或者 n s e w "
         u"ne nw se sw u d，也可以打北、南、東、西等等。\n"
         u"觀看：look，look 東西，exits，who，inventory。\n"
         u"行動：say 話，get 東西，drop 東西，kick 某人，poke goblin，call bob，name 新名字。\n"
         u"試試用戶端：colours，sound，compress，flood 行數。\n"
         u"離開：quit。"},
        {Phrase::CarryNothing, u"你什麼也沒帶。"},
        {Phrase::Carry, u"你帶著%1。"},
        {Phrase::Take, u"你拿起%1。"},
        {Phrase::SomeoneTakes, u"%1拿起%2。"},
        {Phrase::Drop, u"你放下%1。"},
        {Phrase::SomeoneDrops, u"%1放下%2。"},
        {Phrase::NotHere, u"這裡沒有這樣的東西。"},
        {Phrase::NotCarried, u"你沒帶這樣的東西。"},
        {Phrase::GoblinKicksYou, u"一隻妖精狠狠地踢了你一腳！"},
        {Phrase::GoblinKicksSomeone, u"妖精踢了%1一腳。"},
        {Phrase::YouKickGoblin, u"你踢了妖精一腳。牠抱著一條腿跳來跳去，罵個不停。"},
        {Phrase::YouPokeGoblin, u"你戳了戳妖精。"},
        {Phrase::SomeoneTeasesGoblin, u"%1在跟妖精找麻煩。"},
        {Phrase::YouKickSomeone, u"你踢了%1一腳，不重。"},
        {Phrase::SomeoneKicksYou, u"%1友好地踢了你一腳。"},
        {Phrase::NobodyToKick, u"搆得著的地方沒有這個人。"},
        {Phrase::YouCallBob, u"你大聲叫鮑伯。"},
        {Phrase::BobIsHereAlready, u"鮑伯已經在這裡了。"},
        {Phrase::GoblinText,
         u"只有膝蓋高，滿身疙瘩，動作很快。誰站著不動牠就踢誰，等不及就戳牠（poke goblin）。"},
        {Phrase::BobText, u"一個漁夫，走來走去，又走回來。叫他（call bob）他就來。"},
        {Phrase::GuideText,
         u"嚮導笑著說：\n"
         u"「速行會自己走熟路：打 !nesw 就能繞過燈塔走一圈再回到這裡，一秒一步；數字表示重複，比如 "
         u"!3n2e，打 !stop 就停下。\n"
         u"巨集是取了名字的一行指令：加一個叫 greet 的巨集，內容是 say 你好 %1，以後打 ~greet 鮑伯 "
         u"就是向鮑伯問好。\n"
         u"觸發器替你回答：樣式寫 一隻%1狠狠地踢了你一腳！ 動作寫 kick "
         u"%1，別人一踢你就踢回去，東南邊的妖精會陪你練習。\n"
         u"它也能播放聲音，比如有人來的時候；鮑伯隔一會兒就會路過。\n"
         u"打開遊戲聲音，往西南再往下，到地下墓室去聽一聽；打開壓縮，除了位元組變少，什麼都不會變。\n"
         u"別的遊戲大多要用標準 telnet，這裡也有幾樣東西要用它：按 Ctrl+Shift+T，或者在終端機裡打 "
         u"/standard "
         u"on，然後重新連線。這樣每個名字都有別人看不見的密碼，文字會按視窗的寬度換行，從這裡往西再往上的畫廊"
         u"會有所有的顏色和外國的字。」"},
        {Phrase::GalleryRainbow,
         u"北牆上是一道彩虹，有 %1 種顏色：左邊是紅色，然後是橙、黃、綠、藍，右邊是紫色。"},
        {Phrase::GalleryDawn,
         u"南牆上是一片朝霞，有 %1 種顏色：左邊是夜藍，然後是紫、玫瑰紅、金黃，右邊是淡淡的亮光。"},
        {Phrase::GalleryHasMore, u"這兩幅畫的顏色，比你的用戶端要求的還多。"},
        {Phrase::GalleryWithoutColours,
         u"這裡掛著一道彩虹和一片朝霞，可是你的用戶端不顯示顏色，所以都是灰的。"},
        {Phrase::GallerySea, u"樓梯上面，水手們畫了一個海浪 %1 和「海」這個字：%2。"},
        {Phrase::SailorsHomes, u"俄國 希臘 以色列 日本 越南 泰國"},
        {Phrase::GalleryWithoutSea,
         u"樓梯上面，水手們用他們自己的文字寫了些什麼，用布遮著：你的用戶端和遊戲還沒有約定用 UTF-8。"},
        {Phrase::ColoursTitle, u"所有的顏色："},
        {Phrase::FloodLine, u"第 %1 行，共 %2 行：潮水漲上來，潮水又退下去。"},
        {Phrase::FloodHow, u"打 flood 和行數，最多 100000 行。"},
        {Phrase::NameIs, u"從現在起你叫%1。"},
        {Phrase::NameHow, u"打 name 和一個名字，最多 20 個字。"},
        {Phrase::NameTaken, u"已經有人叫這個名字了。"},
        {Phrase::NameStays, u"你還是叫%1。"},
        {Phrase::PasswordChoose, u"給%1這個名字選一個密碼。密碼留到遊戲結束；打一個空行，名字就不變。"},
        {Phrase::PasswordAsk, u"%1的密碼是什麼？打一個空行，名字就不變。"},
        {Phrase::PasswordWrong, u"這不是%1的密碼。你的名字沒有變。"},
        {Phrase::PasswordTooLong, u"密碼最多 64 個字。你的名字沒有變。"},
        {Phrase::PasswordCannotBeHidden, u"%1這個名字有密碼，可是你打的密碼，你的用戶端會顯示出來。請打開標準"
                                         u" telnet，重新連線，再要這個名字。"},
        {Phrase::SomeoneIsNowCalled, u"從現在起%1叫%2。"},
        {Phrase::Names, u"小白 小樺 小松 小榛 小柏 小菩 小楓 小楠 小杉 小柳"},
        {Phrase::CompressionOn, u"你讀到的字是壓縮以後送來的。打 compress end 就結束壓縮。"},
        {Phrase::CompressionOff, u"現在沒有壓縮。你的用戶端可以要求壓縮。"},
        {Phrase::CompressionEnds, u"這是壓縮的最後一行。"},
        {Phrase::SoundOn, u"這就是墓室裡的呻吟。"},
        {Phrase::SoundOff, u"你的用戶端沒有要求聲音。"},
        {Phrase::UnknownWord, u"這裡沒人懂「%1」。打 help 看指令。"},
        {Phrase::LineTooLong, u"這一行太長了，沒人聽得完。"},
        {Phrase::VillageIsFull, u"村裡住滿了，請以後再來。"},
        {Phrase::Farewell, u"燈籠向你點頭。再見！"},
    }},
    .roomNames = {{
        {Room::Square, u"燈籠廣場"},
        {Room::Harbour, u"碼頭"},
        {Room::Market, u"市集小巷"},
        {Room::Library, u"藏書樓"},
        {Room::Bridge, u"石橋"},
        {Room::LighthouseFoot, u"燈塔腳下"},
        {Room::LanternRoom, u"燈室"},
        {Room::Garden, u"藥草園"},
        {Room::GoblinDitch, u"妖精的水溝"},
        {Room::Churchyard, u"墓園"},
        {Room::Crypt, u"地下墓室"},
        {Room::Passage, u"滴水的通道"},
        {Room::Cellar, u"走私者的地窖"},
        {Room::Gallery, u"畫廊"},
    }},
    .roomDescriptions = {{
        {Room::Square,
         u"屋簷之間掛著一串串紙燈籠，在風裡輕輕碰響。村裡的小路都通到這裡，通到這口長滿青苔的老井邊。"},
        {Room::Harbour, u"纜繩吱吱作響，海鷗吵個不停，潮水拍打著石岸。這裡停著三條船，沒有一條是乾的。"},
        {Room::Market,
         u"布棚下面擺滿了蘋果和鰻魚。人人都在喊價，卻沒有人照價付錢。兩個攤子之間，一扇地板門敞開著。"},
        {Room::Library, u"暖暖的灰塵，皮革的氣味，還有時鐘慢慢的滴答聲。書架比梯子還要高。"},
        {Room::Bridge, u"橋面的石頭被車輪磨出了凹痕。溪水在下面低語，旁邊有鐵梯通向黑暗的地下。"},
        {Room::LighthouseFoot, u"高塔在風中嗡嗡地響，像一隻瓶子。門開著，樓梯盤旋而上，一共一百零八級。"},
        {Room::LanternRoom, u"四面都是玻璃，大燈不慌不忙地轉著。除了一面，到處都聽得見大海。"},
        {Room::Garden, u"腳下是百里香，牆邊是薄荷，到處是蜜蜂。連雜草也有人掛上了名牌。"},
        {Room::GoblinDitch, u"爛泥、骨頭，還有一堆濕柴生的火。這不是個好地方，不過要練習挨踢，倒是正好。"},
        {Room::Churchyard, u"紫杉站在四周，像一群忘了為什麼來的人。最大的一棵下面，有臺階通到地下。"},
        {Room::Crypt, u"這裡又冷又靜，只有不知是誰在呻吟。風從東邊吹來。"},
        {Room::Passage, u"水滴數著時間。鐵梯向上通往亮處，一條低矮的地道向東北方爬升。"},
        {Room::Cellar, u"酒桶一直堆到屋頂，頭上有腳步聲。梯子通向一方亮光，那裡有蘋果的香味。"},
        {Room::Gallery, u"梯子盡頭是屋頂下一間長長的白房間，有油漆的氣味。牆前拉著繩子，不讓人摸牆上的畫。"},
    }},
    .directions = {{
        {Direction::North, u"北"},
        {Direction::South, u"南"},
        {Direction::East, u"東"},
        {Direction::West, u"西"},
        {Direction::NorthEast, u"東北"},
        {Direction::NorthWest, u"西北"},
        {Direction::SouthEast, u"東南"},
        {Direction::SouthWest, u"西南"},
        {Direction::Up, u"上"},
        {Direction::Down, u"下"},
    }},
    .things = {{
        {Thing::Apple, u"一個紅蘋果"},
        {Thing::Book, u"一本薄書"},
        {Thing::Shell, u"一個海螺"},
        {Thing::Lamp, u"一盞銅燈"},
        {Thing::Coin, u"一枚銀幣"},
    }},
    .thingDescriptions = {{
        {Thing::Apple, u"很紅，被咬過一小口。"},
        {Thing::Book, u"書名是《旅人助手》。上面寫著：「錄製器會記下你打的每一行，錄好以後就成了巨集。」"},
        {Thing::Shell, u"你把它放到耳邊。它唱的歌和碼頭一樣，只是小聲一點。"},
        {Thing::Lamp, u"沒有點亮。擦它也沒有用，有人試過了。"},
        {Thing::Coin, u"一面是國王，另一面還是那位國王，不過是背影。"},
    }},
};
static_assert(texts.isComplete());

} // namespace

const ZNTDemoTexts& znt::demo::traditionalChinese() { return texts; }
