#include "ZNTNetworkAddress.h"
#include "ZNTSoundDownloads.h"
#include "ZNTSoundServer.h"
#include "ZNTTemporaryFolder.h"
#include "ZNTWavFile.h"

#include "VirtualRunLoop.h"

#include <arpa/inet.h>
#include <filesystem>
#include <netinet/in.h>
#include <sstream>

namespace fs = std::filesystem;

namespace
{

const std::string rain = wavFile(1'000, 8'000);
/// What a game is on: the server's address, or one of the public network.
const std::string ownHost = "127.0.0.1", noHost = "8.8.8.8";

/// 127.0.0.1 stands for the public network here, the rest of loopback for a private one.
bool isFirstOfLoopback(const sockaddr& address)
{
    return address.sa_family == AF_INET &&
           reinterpret_cast<const sockaddr_in&>(address).sin_addr.s_addr == htonl(INADDR_LOOPBACK);
}

std::map<std::string, ZNTSoundAnswer> answers()
{
    const auto whole = soundAnswer(rain), slow = soundAnswer(rain, /*waits=*/true);
    return {{"/rain.wav", whole},
            {"/a.wav", whole},
            {"/b.wav", whole},
            {"/slow", slow},
            {"/page", soundAnswer("<html>There is no such sound here.</html>")},
            {"/refused", {"HTTP/1.1 404 Not Found\r\n" + whole.bytes.substr(whole.bytes.find("Content"))}},
            {"/half", {whole.bytes.substr(0, whole.bytes.size() - rain.size() / 2)}}};
}

struct SoundDownloads : testing::Test {
    VirtualRunLoop loop;
    ZNTTemporaryFolder home;
    std::string cache = home.path(".cache/zantor/sounds");
    ZNTSoundServer server{answers()};
    std::uint64_t lastNumber = 0;

    /// Nothing can be fetched if the proxy of the environment is asked.
    SoundDownloads() { setenv("http_proxy", "http://127.0.0.1:1", /*replace=*/1); }

    using Outcome = std::optional<ZNTSoundDownloads::Content>; ///< none until it has come
    std::shared_ptr<Outcome> start(ZNTSoundDownloads& downloads, const std::string& url,
                                   const std::string& gameAddress)
    {
        auto outcome = std::make_shared<Outcome>();
        downloads.fetch(++lastNumber, url, gameAddress, [outcome](const ZNTSoundDownloads::Content& content) {
            EXPECT_FALSE(outcome->has_value());
            *outcome = content;
        });
        return outcome;
    }
    /// Empty where it cannot be fetched.
    std::string fetch(ZNTSoundDownloads& downloads, const std::string& url,
                      const std::string& gameAddress = ownHost)
    {
        const auto outcome = start(downloads, url, gameAddress);
        EXPECT_TRUE(loop.runUntil([&] { return outcome->has_value(); }));
        const auto content = outcome->value_or(nullptr);
        return content ? *content : "";
    }
};

TEST_F(SoundDownloads, AGameOnALocalAddressMayNameItsOwnHostAndNoOtherOfItsNetwork)
{
    ZNTSoundServer neighbour(answers(), "127.0.0.2");
    ZNTSoundDownloads downloads(loop, cache);
    for (const auto* host : {"127.0.0.1", "localhost", "2130706433", "0x7f.1", "0", "[::ffff:127.0.0.1]"})
        EXPECT_EQ(fetch(downloads, server.url("/rain.wav", host), noHost), "") << host;
    EXPECT_EQ(server.connections, 0) << "asked for a game of the public network";
    for (const auto* game : {"127.0.0.1", "::ffff:127.0.0.1"}) {
        EXPECT_EQ(fetch(downloads, server.url("/rain.wav", "localhost"), game), rain) << game;
        EXPECT_EQ(fetch(downloads, neighbour.url("/rain.wav"), game), "");
    }
    EXPECT_EQ(neighbour.connections, 0);
    EXPECT_EQ(fetch(downloads, neighbour.url("/rain.wav"), "127.0.0.2"), rain);
    EXPECT_EQ(fetch(downloads, neighbour.url("/rain.wav"), "127.0.0.1"), "") << "kept for another game";
}

TEST_F(SoundDownloads, ARedirectLeadsNowhereThatTheGameMayNotGo)
{
    home.write("private.wav", rain);
    ZNTSoundServer neighbour(answers(), "127.0.0.2");
    ZNTSoundServer redirecting({{"/away", redirection(server.url("/rain.wav"))},
                                {"/private", redirection(neighbour.url("/rain.wav"))},
                                {"/file", redirection("file://" + home.path("private.wav"))},
                                {"/ftp", redirection("ftp" + server.url("/rain.wav").substr(4))},
                                {"/round", redirection("/round")}});
    ZNTSoundDownloads downloads(loop, cache, {.isPublicAddress = isFirstOfLoopback});
    EXPECT_EQ(fetch(downloads, redirecting.url("/away"), noHost), rain);
    for (const auto* path : {"/private", "/file", "/ftp", "/round"})
        EXPECT_EQ(fetch(downloads, redirecting.url(path), noHost), "") << path;
    EXPECT_EQ(server.connections + neighbour.connections, 1);
    EXPECT_LE(redirecting.requests, 10);
}

TEST_F(SoundDownloads, OnlyAWholeWebAddressOfReasonableLengthIsFetched)
{
    const std::string game = "http://mud.example/";
    const std::pair<std::string, bool> rows[] = {{game, true},
                                                 {"HTTPS://mud.example/a.wav", true},
                                                 {game + std::string(2'048 - game.size(), 'a'), true},
                                                 {game + std::string(2'049 - game.size(), 'a'), false},
                                                 {"http://", false},
                                                 {"https:/mud.example", false},
                                                 {"ftp://mud.example/a.wav", false},
                                                 {game + "a b.wav", false},
                                                 {game + "a\r\nHost: x", false}};
    for (const auto& [url, canFetch] : rows)
        EXPECT_EQ(ZNTSoundDownloads::canFetch(url), canFetch) << url;
}

TEST_F(SoundDownloads, PartialDownloadsWebPagesAndSilentServersAreGivenUp)
{
    ZNTSoundDownloads downloads(loop, cache, {.seconds = 0.5});
    for (const auto* path : {"/page", "/refused", "/half", "/missing", "/slow"})
        EXPECT_EQ(fetch(downloads, server.url(path)), "") << path;
    EXPECT_EQ(fetch(downloads, "http://127.0.0.1:1/nobody.wav"), "");
    EXPECT_EQ(fetch(downloads, std::string(9'000'000, 'a')), "") << "more than curl takes";
    EXPECT_FALSE(fs::exists(cache));
}

TEST_F(SoundDownloads, AnEndlessBodyIsCutOffAtTheCap)
{
    ZNTSoundServer endless({{"/", {"HTTP/1.1 200 OK\r\n\r\n" + rain + std::string(64U << 20, '\0')}}});
    ZNTSoundDownloads downloads(loop, cache);
    EXPECT_EQ(fetch(downloads, endless.url("/")), "");
    EXPECT_TRUE(loop.runUntil([&] { return endless.bytesSent >= 16U << 20; }))
        << "or is it cut off too soon?";
    EXPECT_LT(endless.bytesSent, 32U << 20);
}

TEST_F(SoundDownloads, FourRunAtOnceSomeWaitForThemAndAFloodFails)
{
    ZNTSoundDownloads downloads(loop, cache, {.mostWaiting = 5});
    std::vector<std::shared_ptr<Outcome>> outcomes(500);
    for (auto& outcome : outcomes)
        outcome = start(downloads, server.url("/slow"), ownHost);
    const auto count = [&](auto isMeant) { return std::count_if(outcomes.begin(), outcomes.end(), isMeant); };
    const auto hasCome = [](const auto& outcome) { return outcome->has_value(); };
    ASSERT_TRUE(loop.runUntil([&] { return server.requests == 4 && count(hasCome) == 491; }));
    downloads.cancel(1);
    ASSERT_TRUE(loop.runUntil([&] { return server.requests == 5; }));
    server.release();
    ASSERT_TRUE(loop.runUntil([&] { return count(hasCome) == 499; }));
    EXPECT_EQ(count([](const auto& outcome) { return outcome->value_or(nullptr) != nullptr; }), 8);
    EXPECT_FALSE(outcomes.front()->has_value());
}

TEST_F(SoundDownloads, TheEndDoesNotWaitForAServer)
{
    const auto begin = std::chrono::steady_clock::now();
    {
        ZNTSoundDownloads downloads(loop, cache);
        start(downloads, server.url("/slow"), ownHost);
        ASSERT_TRUE(loop.runUntil([&] { return server.requests == 1; }));
    }
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(5));
    loop.runPosted();
}

TEST_F(SoundDownloads, AreKeptByUrlUpToASizeReadableByThePlayerAlone)
{
    const auto url = server.url("/rain.wav");
    for (int round = 0; round < 2; ++round) {
        ZNTSoundDownloads downloads(loop, cache);
        EXPECT_EQ(fetch(downloads, url), rain);
        EXPECT_EQ(server.requests, 1);
        EXPECT_EQ(fetch(downloads, url, noHost), "") << "kept for a local game only";
    }
    EXPECT_EQ(fs::status(cache).permissions(), fs::perms(0700));
    EXPECT_EQ(fs::status(fs::directory_iterator(cache)->path()).permissions(), fs::perms(0600));

    ZNTSoundDownloads downloads(loop, cache, {.cacheBytes = rain.size() * 5 / 2});
    for (const auto* path : {"/rain.wav", "/a.wav", "/rain.wav", "/b.wav"})
        EXPECT_EQ(fetch(downloads, server.url(path)), rain);
    EXPECT_EQ(std::distance(fs::directory_iterator(cache), {}), 2);
    EXPECT_EQ(fetch(downloads, url), rain);
    EXPECT_EQ(server.requests, 3) << "what was used last is kept";
}

TEST(NetworkAddress, TellsThePublicNetworkFromAllOthers)
{
    const std::pair<const char*, bool> rows[] = {
        {"8.8.8.8 1.1.1.1 100.63.255.255 100.128.0.0 172.15.255.255 172.32.0.0 11.0.0.0 126.255.255.255 "
         "128.0.0.0 169.253.0.1 192.167.1.1 223.255.255.255 2606:4700::1111 2001:4860::8888 2a00::1 "
         "::ffff:8.8.8.8 64:ff9b::8.8.8.8 2002:808:808::1 64:ff9b:2::1 3fff:1000::1 5eff::1 5f01::1 "
         "192.88.98.1",
         true},
        {"0.0.0.0 0.1.2.3 10.0.0.0 10.255.255.255 100.64.0.0 100.127.255.255 127.0.0.1 127.255.0.1 "
         "169.254.169.254 172.16.0.0 172.31.255.255 192.168.0.1 192.0.0.8 192.0.2.1 198.18.0.1 "
         "198.19.255.255 224.0.0.1 240.0.0.1 255.255.255.255 :: ::1 fe80::1%eth0 febf::1 fec0::1 fc00::1 "
         "fdff::1 ff02::1 ::ffff:127.0.0.1 ::ffff:10.1.1.1 ::10.1.1.1 64:ff9b::192.168.0.1 2002:7f00:1::1 "
         "2001:db8::1 2001::1 64:ff9b:1::8.8.8.8 3fff::1 3fff:fff::1 5f00::1 192.88.99.1",
         false}};
    for (const auto& [addresses, isPublic] : rows) {
        std::istringstream all(addresses);
        for (std::string address; all >> address;)
            EXPECT_EQ(znt::isPublicAddress(address), isPublic) << address;
    }
}

} // namespace
