#include "ZNTDeflated.h"
#include "ZNTHeldBackText.h"
#include "ZNTInflater.h"
#include "ZNTStandardReceiver.h"
#include "ZNTTelnetMessages.h"
#include "ZNTText.h"

#include <gtest/gtest.h>

namespace
{

using namespace znt::telnet;
using namespace std::string_literals;

constexpr ZNTStandardChoices acceptsAll{.compression = true, .sounds = true};

const std::string startOfCompression = subnegotiation(option::CompressionV2, "");
const std::string willCompress = offer(WILL, option::CompressionV2);
const std::string goAheadMark{static_cast<char>(IAC), static_cast<char>(GA)};
const std::string endOfRecordMark{static_cast<char>(IAC), static_cast<char>(EOR)};
const std::string askForType = subnegotiation(option::TerminalType, "\1");

/// A receiver, and what a session makes of its results.
struct Client {
    explicit Client(const ZNTStandardChoices& choices = acceptsAll) : receiver(choices)
    {
        receiver.startStream();
        heldBack.setBlanks(ZNTHeldBackText::Blanks::Kept);
    }

    Client& receive(std::string_view block)
    {
        const auto received = receiver.read(block, encoding);
        replies += received.replies;
        isBroken |= !received.failure.empty();
        encoding = received.agreedEncoding.value_or(encoding);
        if (const auto released = heldBack.take(received.text, received.isRelease, received.ready))
            pieces.push_back(znt::utf8FromText(released->text));
        return *this;
    }
    Client& receiveCut(std::string_view bytes, std::size_t length)
    {
        for (; !bytes.empty(); bytes.remove_prefix(std::min(length, bytes.size())))
            receive(bytes.substr(0, length));
        return *this;
    }
    Client& quiet()
    {
        receiver.readText({});
        if (!heldBack.empty())
            pieces.push_back(znt::utf8FromText(heldBack.releasedWith({})));
        return *this;
    }
    std::string takeReplies() { return std::exchange(replies, {}); }
    [[nodiscard]] std::string shown() const
    {
        std::string all;
        for (const auto& piece : pieces)
            all += piece;
        return all;
    }

    ZNTStandardReceiver receiver;
    ZNTHeldBackText heldBack;
    ZNTStringEncoding encoding = ZNTStringEncoding::Ascii;
    std::vector<std::string> pieces;
    std::string replies;
    bool isBroken = false;
};

} // namespace

TEST(StandardReceiver, ReadsTheSameHoweverTheNetworkCutsTheBytes)
{
    const auto whole = "Hello.\r\nName: "s + goAheadMark + askForType + offer(DO, option::TerminalType) +
                       askForType + offer(DO, option::WindowSize) + willCompress + "caf\xE9 \xFF\xFF\r\0|"s +
                       offer(WILL, option::Charset) + subnegotiation(option::Charset, "\1;KOI8;UTF-8") +
                       "\n\r" + startOfCompression +
                       deflated("packed \u4F60\u597D\n\r" + offer(WILL, option::EndOfRecord) + "HP 5 > " +
                                endOfRecordMark + "\xE2\x82") +
                       "\xAC plain\r\n" + offer(WILL, option::Echo) + startOfCompression +
                       deflated("again\r\nunfinished \xE4\xBD", Z_SYNC_FLUSH);
    const auto expect = [](Client& client) {
        EXPECT_EQ(
            client.shown(),
            "Hello.\r\nName: caf\u00E9 \u00FF\r|\n\rpacked \u4F60\u597D\n\rHP 5 > \u20AC plain\r\nagain\r\n");
        EXPECT_EQ(client.replies,
                  offer(WILL, option::TerminalType) + subnegotiation(option::TerminalType, "\0ZANTOR"s) +
                      subnegotiation(option::TerminalType, "\0ANSI"s) + offer(WILL, option::WindowSize) +
                      subnegotiation(option::WindowSize, "\0P\0\x18"s) + offer(DO, option::CompressionV2) +
                      offer(DO, option::Charset) + subnegotiation(option::Charset, "\2UTF-8") +
                      offer(DO, option::EndOfRecord) + offer(DO, option::Echo));
        EXPECT_TRUE(client.receiver.isInflating() && client.receiver.isEchoedByServer());
        EXPECT_EQ(client.encoding, ZNTStringEncoding::Utf8);
        client.quiet();
        EXPECT_EQ(client.pieces.back(), "unfinished ");
    };
    for (std::size_t cut = 0; cut < whole.size() && !testing::Test::HasFailure(); ++cut) {
        SCOPED_TRACE(cut);
        Client client;
        client.receive(whole.substr(0, cut)).receive(whole.substr(cut));
        expect(client);
    }
    for (const std::size_t length : {1, 2, 3, 7}) {
        SCOPED_TRACE(length);
        Client client;
        client.receiveCut(whole, length);
        expect(client);
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
        {{"Na", "me: ", endOfRecordMark + "next"}, {"Name: "}},
        {{"line\r\nHP" + goAheadMark + "x\r\ny"}, {"line\r\nHPx\r\n"}},
        {{"one\r", "\ntwo"}, {"one\r\n"}},
        {{"one\r", "two", "(quiet)"}, {"one\r", "two"}},
        {{"one\r", "\r", "\n"}, {"one\r", "\r\n"}},
        {{"one\n", "\rtwo\n\r\n\r"}, {"one\n", "\rtwo\n\r\n\r"}},
        {{"one\r\n\r", "\ntwo"}, {"one\r\n", "\r\n"}},
        {{"one\r", "(quiet)", "two", "\n"}, {"one\r", "two\n"}},
        {{"one\r" + goAheadMark, "two", goAheadMark + goAheadMark, goAheadMark}, {"one\r", "two"}},
        {{"half", "(quiet)", " a line", "(quiet)", "(quiet)"}, {"half", " a line"}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.blocks.front());
        Client client;
        for (const auto& block : row.blocks)
            block == "(quiet)" ? client.quiet() : client.receive(block);
        EXPECT_EQ(client.pieces, row.pieces);
    }
}

TEST(StandardReceiver, InflatesExactlyTheStreamAndEndsABrokenOne)
{
    std::string text;
    for (int line = 0; line < 300; ++line)
        text += "You see goblin number " + std::to_string(line * 7919 % 1000) + " here.\r\n";
    const auto stream = deflated(text), unended = deflated("packed\n", Z_SYNC_FLUSH);
    auto damaged = stream;
    damaged[damaged.size() / 2] ^= 0x55;
    const auto bomb = deflated(std::string(std::size_t{17} << 20, 'x'));
    const auto start = willCompress + startOfCompression;
    const auto wont = offer(WONT, option::CompressionV2);
    const auto off = "(off)"s; // the player switches compression off
    const struct {
        const char* name;
        std::vector<std::string> blocks;
        std::string shown;
        bool isBroken = false;
    } rows[] = {
        {"no DO was sent", {startOfCompression + "plain\n"}, "plain\n"},
        {"with content it is no start", {willCompress + subnegotiation(86, "x") + "plain\n"}, "plain\n"},
        {"a start within the stream", {start + deflated(startOfCompression + "a\n") + "b\n"}, "a\nb\n"},
        {"damage", {"before\n" + start + damaged, "after\n"}, "before\n", true},
        {"no stream at all", {start + "plain\n"}, "", true},
        {"it never stops growing", {"before\n" + start + bomb}, "before\n", true},
        {"off, ended", {start, off, stream + "plain\n"}, text + "plain\n"},
        {"off, goes on", {start, off, deflated(wont + "a\n", Z_SYNC_FLUSH)}, "a\n"},
        {"off, broken off", {start + unended, off, wont + "plain\n"}, "packed\nplain\n"},
        {"off, broken off in a block", {start, off, unended + wont + "plain\n"}, "packed\nplain\n"},
        {"off, broken off with a letter",
         {start, off, unended + "a", "nd ", "plain\n"},
         "packed\nand plain\n"},
        {"off before it begins", {willCompress, off, startOfCompression + "plain\n"}, "plain\n"},
        {"off, damage", {start, off, damaged}, "", true},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        Client client;
        for (const auto& block : row.blocks)
            if (block == off)
                EXPECT_EQ(client.receiver.switchCompression(false), offer(DONT, option::CompressionV2));
            else
                client.receive(block);
        EXPECT_TRUE(client.shown() == row.shown) << client.shown().substr(0, 200);
        EXPECT_EQ(client.isBroken, row.isBroken);
    }
}

TEST(StandardReceiver, SaysWhatItIsAsked)
{
    const auto type = [](const std::string& answer) {
        return subnegotiation(option::TerminalType, "\0"s + answer);
    };
    Client client({.fullColours = true, .tellsScreenReader = true});
    client.encoding = ZNTStringEncoding::Utf8;
    client.receive(askForType + askForType);
    EXPECT_EQ(client.takeReplies(), "");
    client.receive(offer(DO, option::TerminalType));
    EXPECT_EQ(client.takeReplies(), offer(WILL, option::TerminalType) + type("ZANTOR"));
    for (const auto* answer : {"ANSI-TRUECOLOR", "MTTS 333", "MTTS 333", "ZANTOR"})
        EXPECT_EQ(client.receive(askForType).takeReplies(), type(answer));

    EXPECT_EQ(client.receiver.windowSizeChanged(255, 70'000), "");
    EXPECT_EQ(client.receive(offer(DO, option::WindowSize)).takeReplies(),
              offer(WILL, option::WindowSize) + "\xFF\xFA\x1F\0\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xF0"s);
    EXPECT_EQ(client.receiver.windowSizeChanged(0, 0), subnegotiation(option::WindowSize, "\0P\0\x18"s));
    EXPECT_EQ(client.receiver.windowSizeChanged(80, 24), "");
    EXPECT_EQ(client.receiver.encodedLine(u"\u00FFy\r\n", ZNTStringEncoding::Ascii), "\xFF\xFFy\r\n");

    client.receiver.startStream(); // a new connection knows nothing of the one before
    EXPECT_EQ(client.receive(askForType).takeReplies(), "");
    EXPECT_EQ(client.receiver.windowSizeChanged(90, 24), "");
}

TEST(StandardReceiver, AgreesOnAnEncodingThatBothSidesHave)
{
    const auto accepted = [](const std::string& name) {
        return subnegotiation(option::Charset, "\2" + name);
    };
    const auto rejected = subnegotiation(option::Charset, "\3");
    const auto ascii = ZNTStringEncoding::Ascii, gbk = ZNTStringEncoding::EucCn,
               utf8 = ZNTStringEncoding::Utf8;
    const struct {
        std::string proposal, answer;
        ZNTStringEncoding agreed;
        bool isNamed = false; ///< the player named ASCII
    } rows[] = {
        {"\1 UTF-8", accepted("UTF-8"), utf8},
        {"\1;gbk;utf-8", accepted("utf-8"), utf8},
        {"\1;KOI8-R;;GBK;Big5;", accepted("GBK"), gbk},
        {"\1[TTABLE ]\1,GB2312", accepted("GB2312"), gbk},
        {"\1[TTABLE ],KOI8-R", rejected, ascii},
        {"\1", rejected, ascii},
        {"\1;UTF-8;GBK", rejected, ascii, true},
        {"\1;UTF-8;us-ascii", accepted("us-ascii"), ascii, true},
        {"\4\1;UTF-8;1", subnegotiation(option::Charset, "\5"), ascii},
        {"\2UTF-8", "", ascii}, // nothing was proposed
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.proposal);
        Client client({.isEncodingNamed = row.isNamed});
        client.receive(subnegotiation(option::Charset, row.proposal) + offer(WILL, option::Charset));
        EXPECT_EQ(client.takeReplies(), offer(DO, option::Charset));
        EXPECT_EQ(client.receive(subnegotiation(option::Charset, row.proposal)).takeReplies(), row.answer);
        EXPECT_EQ(client.encoding, row.agreed);
    }

    Client client; // we propose, and the server does so, too
    client.receive(offer(DO, option::Charset) + subnegotiation(option::Charset, "\1 BIG5"));
    const auto proposed = offer(WILL, option::Charset) + "\xFF\xFA\x2A\1;UTF-8;GB18030;"s;
    EXPECT_TRUE(client.replies.starts_with(proposed) && client.replies.ends_with(accepted("BIG5")));
    EXPECT_EQ(client.encoding, ZNTStringEncoding::Big5Hkscs);
    client.receive(accepted("gb18030") + "\xC4\xE3\n");
    EXPECT_EQ(client.shown(), "\u4F60\n");
}

TEST(StandardReceiver, IsBoundedWhateverTheServerSends)
{
    const std::size_t most = 150'000; // bytes of replies in a connection
    const auto repeated = [](std::size_t count, const std::string& part) {
        std::string all;
        for (std::size_t at = 0; at < count; ++at)
            all += part;
        return all;
    };
    std::string allOffers;
    for (int option = 0; option < 256; ++option)
        for (const auto verb : {WILL, DO, WONT, DONT})
            allOffers += offer(verb, static_cast<unsigned char>(option));
    const auto options = offer(DO, option::TerminalType) + offer(WILL, option::Charset);
    for (const auto& flood : {
             repeated(1'000, allOffers),
             options + repeated(300'000, askForType),
             options + repeated(300'000, subnegotiation(option::Charset, "\1 GBK")),
             options + subnegotiation(option::Charset, "\1" + repeated(3'000'000, ";x") + ";UTF-8"),
             "\xFF\xFA\x2A"s + std::string(8'000'000, 'x') + offer(WILL, option::Gmcp),
         }) {
        Client client;
        client.receiveCut(flood, 256 * 1024).receive("\xFF\xF0 text\n");
        EXPECT_LT(client.replies.size(), most);
        EXPECT_EQ(client.shown(), " text\n");
    }
}
