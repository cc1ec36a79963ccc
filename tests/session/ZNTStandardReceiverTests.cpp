#include "ZNTDeflated.h"
#include "ZNTStandardClient.h"
#include "ZNTTelnetMessages.h"

namespace
{

using namespace znt::telnet;
using namespace std::string_literals;

const std::string startOfCompression = subnegotiation(option::CompressionV2, "");
const std::string willCompress = offer(WILL, option::CompressionV2);
const std::string goAheadMark{static_cast<char>(IAC), static_cast<char>(GA)};
const std::string endOfRecordMark{static_cast<char>(IAC), static_cast<char>(EOR)};
const std::string askForType = subnegotiation(option::TerminalType, "\1");
const std::string usualSize = subnegotiation(option::WindowSize, "\0P\0\x18"s);

std::string acceptedCharset(const std::string& name) { return subnegotiation(option::Charset, "\2" + name); }
std::string typeAnswer(const std::string& answer)
{
    return subnegotiation(option::TerminalType, "\0"s + answer);
}

} // namespace

TEST(StandardReceiver, ReadsTheSameHoweverTheNetworkCutsTheBytes)
{
    const auto whole = "Hello.\r\nName: "s + goAheadMark + askForType + offer(DO, option::TerminalType) +
                       askForType + offer(DO, option::WindowSize) + willCompress + "caf\xE9 \xFF\xFF\r\0|"s +
                       offer(WILL, option::Charset) + subnegotiation(option::Charset, "\1;KOI8;UTF-8") +
                       "\n\r" + startOfCompression +
                       deflated("packed \u4F60\u597D\n\r" + offer(WILL, option::EndOfRecord) + "HP 5 > " +
                                endOfRecordMark + "\xE2\x82") +
                       "\xAC plain\r\n\xFF\xFA\x18\1" + offer(WILL, option::Echo) +
                       offer(WILL, option::Sound) + startOfCompression +
                       deflated("again\r\nunfinished \xE4\xBD", Z_SYNC_FLUSH);
    const auto shown =
        "Hello.\r\nName: caf\u00E9 \u00FF\r|\n\rpacked \u4F60\u597D\n\rHP 5 > \u20AC plain\r\nagain\r\n";
    const auto replies = offer(WILL, option::TerminalType) + typeAnswer("ZANTOR") + typeAnswer("ANSI") +
                         offer(WILL, option::WindowSize) + usualSize + offer(DO, option::CompressionV2) +
                         offer(DO, option::Charset) + subnegotiation(option::Charset, "\2UTF-8") +
                         offer(DO, option::EndOfRecord) + offer(DO, option::Echo) + offer(DO, option::Sound);
    // Cut once at each place, then everywhere.
    for (std::size_t cut = 0; cut <= whole.size() && !HasFailure(); ++cut) {
        SCOPED_TRACE(cut);
        ZNTStandardClient client;
        client.receive(whole.substr(0, cut < whole.size() ? cut : 0));
        client.receiveCut(std::string_view(whole).substr(cut % whole.size()),
                          cut < whole.size() ? whole.size() : 1);
        EXPECT_EQ(client.shown, shown);
        EXPECT_EQ(client.replies, replies);
        EXPECT_TRUE(client.receiver.isInflating() && client.receiver.isEchoedByServer());
        client.quiet();
        EXPECT_EQ(client.pieces.back(), "unfinished ");
    }
}

TEST(StandardReceiver, ReleasesWhatNeedNotWaitAndNothingTwice)
{
    const struct {
        std::vector<std::string> blocks; ///< "(quiet)" is a time of quiet
        std::vector<std::string> pieces;
    } rows[] = {
        {{"one\r\ntwo\r\nthr", "ee\r\n"}, {"one\r\ntwo\r\n", "three\r\n"}},
        {{" Name:  " + goAheadMark, "next"}, {" Name:  "}},
        {{"Na", "me: ", "\xFF\xF1", endOfRecordMark + "next"}, {"Name: "}}, // a block without text
        {{"line\r\nHP" + goAheadMark + "x\r\ny"}, {"line\r\nHPx\r\n"}},
        {{"one\r", "\ntwo"}, {"one\r\n"}},
        {{"one\r", "two", "(quiet)"}, {"one\r", "two"}},
        {{"one\r", "\r", "\n"}, {"one\r", "\r\n"}},
        {{"one\n", "\rtwo\n\r\n\r"}, {"one\n", "\rtwo\n\r\n\r"}},
        {{"one\n", "\r"}, {"one\n", "\r"}},
        {{"one\r\n\r", "\ntwo"}, {"one\r\n", "\r\n"}},
        {{"one\r", "(quiet)", "two", "\n"}, {"one\r", "two\n"}},
        {{"one\r" + goAheadMark, "two", goAheadMark + goAheadMark, goAheadMark}, {"one\r", "two"}},
        {{"half", "(quiet)", " a line", "(quiet)", "(quiet)"}, {"half", " a line"}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.blocks.front());
        ZNTStandardClient client;
        for (const auto& block : row.blocks)
            block == "(quiet)" ? client.quiet() : client.receive(block);
        EXPECT_EQ(client.pieces, row.pieces);
    }
}

TEST(StandardReceiver, InflatesExactlyTheStreamAndEndsABrokenOne)
{
    const auto stream = deflated("packed\n"), unended = deflated("packed\n", Z_SYNC_FLUSH);
    const auto head = stream.substr(0, 4), tail = stream.substr(4);
    auto damaged = stream;
    damaged.back() ^= 1; // all of the text inflates, and the checksum does not fit
    std::string lines(std::size_t{17} << 20, 'x');
    for (auto at = lines.size(); at > 0; at -= std::min<std::size_t>(at, 1000))
        lines[at - 1] = '\n';
    const auto bomb = deflated(lines);
    const auto half = bomb.size() / 2;
    const auto begin = startOfCompression, start = willCompress + begin;
    const auto wont = offer(WONT, option::CompressionV2);
    const auto on = "(on)"s, off = "(off)"s; // the player's switch
    const struct {
        const char* name;
        std::vector<std::string> blocks;
        std::string said; ///< each DO as D, each DONT as d
        std::string shown;
        bool isBroken = false;
    } rows[] = {
        {"no DO was sent", {begin + "plain\n"}, "", "plain\n"},
        {"with content it is no start", {willCompress + subnegotiation(86, "x") + "plain\n"}, "D", "plain\n"},
        {"a start within the stream", {start + deflated(begin + "a\n") + "b\n"}, "D", "a\nb\n"},
        {"damage", {"before\n" + start + damaged, "after\n"}, "D", "before\n", true},
        {"no stream at all", {start + "plain\n"}, "D", "", true},
        {"too much in one block", {"before\n" + start + bomb}, "D", "before\n", true},
        {"as much in two", {start + bomb.substr(0, half), bomb.substr(half)}, "D", lines},
        {"off, ended", {start, off, stream + "plain\n"}, "Dd", "packed\nplain\n"},
        {"off, goes on", {start, off, deflated(wont + "a\n", Z_SYNC_FLUSH)}, "Dd", "a\n"},
        {"off, broken off", {start + unended, off, wont + "plain\n"}, "Dd", "packed\nplain\n"},
        {"off, in a block", {start, off, unended + wont + "plain\n"}, "Dd", "packed\nplain\n"},
        {"off, no WONT", {start, off, unended + "a", "nd ", "plain\n"}, "Dd", "packed\nand plain\n"},
        {"off before it begins", {willCompress, off, begin + "plain\n"}, "Dd", "plain\n"},
        {"off, damage", {start, off, damaged}, "Dd", "", true},
        {"refused while off, then asked for", {off, willCompress, on, start + stream}, "dD", "packed\n"},
        {"taken back before the answers", {on, off, willCompress, wont}, "Dd", ""},
        {"refused by the server", {on, wont, on}, "DD", ""},
        {"a server that never answers", {on, begin + head, off, tail, on}, "DdD", "packed\n"},
        {"on before the answer to off", {willCompress, off, on, wont, begin + stream}, "DdD", "packed\n"},
        {"a WONT after the end",
         {start + head, off, on, tail, wont, begin + stream, off},
         "DdDd",
         "packed\npacked\n"},
        {"the last wish counts", {willCompress, off, on, off, wont, on, off, wont}, "DdDd", ""},
        {"and counts once", {willCompress, off, on, wont, off, wont}, "DdDd", ""},
        {"taken back and offered again", {start + stream + wont + start + stream}, "DdD", "packed\npacked\n"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        ZNTStandardClient client;
        for (const auto& block : row.blocks)
            if (block == on || block == off)
                client.replies += client.receiver.switchCompression(block == on);
            else
                client.receive(block);
        std::string said;
        for (std::size_t at = 1; at < client.replies.size(); at += 3)
            said += static_cast<unsigned char>(client.replies[at]) == DO ? 'D' : 'd';
        EXPECT_EQ(said, row.said);
        EXPECT_TRUE(client.shown == row.shown) << client.shown.substr(0, 99);
        EXPECT_EQ(client.isBroken, row.isBroken);
        EXPECT_FALSE(client.isBroken && client.receiver.isInflating());
    }
}

TEST(StandardReceiver, SaysWhatItIsAsked)
{
    ZNTStandardClient client({.fullColours = true, .tellsScreenReader = true});
    client.encoding = ZNTStringEncoding::Utf8;
    EXPECT_EQ(client.repliesTo(askForType + askForType), "");
    EXPECT_EQ(client.repliesTo(offer(DO, option::TerminalType)),
              offer(WILL, option::TerminalType) + typeAnswer("ZANTOR"));
    for (const auto* answer : {"ANSI-TRUECOLOR", "MTTS 333", "MTTS 333", "ZANTOR"})
        EXPECT_EQ(client.repliesTo(askForType), typeAnswer(answer));

    EXPECT_EQ(client.receiver.windowSizeChanged(255, 70'000), "");
    EXPECT_EQ(client.repliesTo(offer(DO, option::WindowSize)),
              offer(WILL, option::WindowSize) + "\xFF\xFA\x1F\0\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xF0"s);
    EXPECT_EQ(client.receiver.windowSizeChanged(0, 0), usualSize);
    EXPECT_EQ(client.receiver.windowSizeChanged(80, 24), "");
    EXPECT_EQ(client.repliesTo(offer(DONT, option::WindowSize) + offer(DO, option::WindowSize)),
              offer(WONT, option::WindowSize) + offer(WILL, option::WindowSize) + usualSize);
    EXPECT_EQ(client.receiver.encodedLine(u"\u00FFy\r\n", ZNTStringEncoding::Ascii), "\xFF\xFFy\r\n");

    client.receive("\xE4\xBD");
    client.receiver.startStream(); // a new connection knows nothing of the one before
    EXPECT_EQ(client.repliesTo(askForType + "new\n"), "");
    EXPECT_EQ(client.shown, "new\n");
    EXPECT_EQ(client.receiver.windowSizeChanged(90, 24), "");
}

TEST(StandardReceiver, AgreesOnAnEncodingThatBothSidesHave)
{
    const auto rejected = subnegotiation(option::Charset, "\3");
    const auto ascii = ZNTStringEncoding::Ascii, gbk = ZNTStringEncoding::EucCn,
               utf8 = ZNTStringEncoding::Utf8;
    const struct {
        std::string proposal, answer;
        ZNTStringEncoding agreed;
        bool isNamed = false; ///< the player named ASCII
    } rows[] = {
        {"\1 UTF-8", acceptedCharset("UTF-8"), utf8},
        {"\1;gbk;utf-8", acceptedCharset("utf-8"), utf8},
        {"\1;KOI8-R;;GBK;Big5;", acceptedCharset("GBK"), gbk},
        {"\1[TTABLE ]\1,GB2312", acceptedCharset("GB2312"), gbk},
        {"\1[TTABLE ] GBK", acceptedCharset("GBK"), gbk}, // without the version
        {"\1", rejected, ascii},
        {"\1;x-gbk", rejected, ascii}, // it has one separator
        {"\1;UTF-8;GBK", rejected, ascii, true},
        {"\1;UTF-8;us-ascii", acceptedCharset("us-ascii"), ascii, true},
        {"\4\1;UTF-8;1", subnegotiation(option::Charset, "\5"), ascii},
        {"\2UTF-8", "", ascii}, // nothing was proposed
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.proposal);
        ZNTStandardClient client({.isEncodingNamed = row.isNamed});
        const auto proposal = subnegotiation(option::Charset, row.proposal);
        EXPECT_EQ(client.repliesTo(proposal + offer(WILL, option::Charset) + proposal),
                  offer(DO, option::Charset) + row.answer);
        EXPECT_EQ(client.encoding, row.agreed);
    }

    ZNTStandardClient client; // we propose, and the server does so, too
    client.receive(offer(DO, option::Charset) + subnegotiation(option::Charset, "\1 BIG5"));
    const auto proposed = offer(WILL, option::Charset) + "\xFF\xFA\x2A\1;UTF-8;GB18030;"s;
    EXPECT_TRUE(client.replies.starts_with(proposed) && client.replies.ends_with(acceptedCharset("BIG5")));
    EXPECT_EQ(client.encoding, ZNTStringEncoding::Big5Hkscs);
    client.receive("\xA7" + acceptedCharset("gb18030") + "\xC4\xE3\n");
    EXPECT_EQ(client.shown, "\uFFFD\u4F60\n");
}

TEST(StandardReceiver, IsBoundedWhateverTheServerSends)
{
    std::string allOffers;
    for (int option = 0; option < 256; ++option)
        for (const auto verb : {WILL, DO, WONT, DONT})
            allOffers += offer(verb, static_cast<unsigned char>(option));
    const struct {
        std::string first, flood;
        int count;
        std::size_t mostReplies; ///< bytes
    } rows[] = {
        {"", allOffers, 1'000, 120'000},
        {offer(DO, option::TerminalType), askForType, 20'000, 20'000},
        {offer(WILL, option::Charset), subnegotiation(option::Charset, "\1 GBK"), 20'000, 10'000},
        {offer(WILL, option::Charset) + "\xFF\xFA\x2A\1", std::string(1'000'000, ';'), 8, 3},
    };
    for (const auto& row : rows) {
        ZNTStandardClient client;
        client.receive(row.first);
        for (int at = 0; at < row.count; ++at)
            client.receive(row.flood);
        client.receive("\xFF\xF0 text\n");
        EXPECT_LE(client.replies.size(), row.mostReplies);
        EXPECT_EQ(client.shown, " text\n");
    }
}
