#include "ZNTNetworkAddress.h"
#include "ZNTSoundDownloads.h"
#include "ZNTSoundServer.h"
#include "ZNTTemporaryFolder.h"
#include "ZNTWavFile.h"

#include "VirtualRunLoop.h"

#include <gmock/gmock.h>

#include <arpa/inet.h>
#include <filesystem>
#include <fstream>
#include <netinet/in.h>
#include <sstream>
#include <sys/stat.h>

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

std::map<std::string, ZNTSoundServer::Answer> answers()
{
    using Reply = ZNTSoundServer::Reply;
    std::map<std::string, ZNTSoundServer::Answer> answers;
    for (const auto* name : {"/rain.wav", "/a.wav", "/b.wav"})
        answers[name] = [](Reply& reply) { reply.sendContent(rain); };
    for (int number = 0; number < 8; ++number)
        answers["/slow" + std::to_string(number)] = [](Reply& reply) {
            reply.waitForRelease();
            reply.sendContent(rain);
        };
    answers["/page"] = [](Reply& reply) { reply.sendContent("<html>There is no such sound here.</html>"); };
    answers["/half"] = [](Reply& reply) {
        reply.send("HTTP/1.1 200 OK\r\nContent-Length: " + std::to_string(rain.size()) + "\r\n\r\n");
        reply.send(rain.substr(0, rain.size() / 2));
    };
    const std::pair<const char*, const char*> gigabytes[] = {{"/endless", "Connection: close"},
                                                             {"/announced", "Content-Length: 1073741824"}};
    for (const auto& [path, header] : gigabytes)
        answers[path] = [start = "HTTP/1.1 200 OK\r\n" + std::string(header) + "\r\n\r\n"](Reply& reply) {
            reply.send(start + rain.substr(0, 44));
            const std::string piece(1 << 20, '\0');
            for (int number = 0; number < 1'024 && reply.send(piece); ++number) {
            }
        };
    return answers;
}

struct SoundDownloads : testing::Test {
    VirtualRunLoop loop;
    ZNTTemporaryFolder home;
    std::string cache = home.path(".cache/zantor/sounds");
    ZNTSoundServer server{answers()};
    std::uint64_t lastNumber = 0;

    struct Outcome {
        bool hasCome = false;
        ZNTSoundDownloads::Content content;
    };
    std::shared_ptr<Outcome> start(ZNTSoundDownloads& downloads, const std::string& url,
                                   const std::string& gameAddress)
    {
        auto outcome = std::make_shared<Outcome>();
        downloads.fetch(++lastNumber, url, gameAddress, [outcome](const ZNTSoundDownloads::Content& content) {
            EXPECT_FALSE(outcome->hasCome);
            *outcome = {true, content};
        });
        return outcome;
    }
    /// Empty where it cannot be fetched.
    std::string fetch(ZNTSoundDownloads& downloads, const std::string& url,
                      const std::string& gameAddress = ownHost)
    {
        const auto outcome = start(downloads, url, gameAddress);
        EXPECT_TRUE(loop.runUntil([&] { return outcome->hasCome; }));
        return outcome->content ? *outcome->content : "";
    }
};

TEST_F(SoundDownloads, AGameOnALocalAddressMayNameItsOwnHostAndNoOtherOfItsNetwork)
{
    ZNTSoundServer neighbour(answers(), "127.0.0.2");
    ZNTSoundServer redirecting({{"/away", [&](auto& reply) { reply.redirectTo(neighbour.url("/a.wav")); }}});
    ZNTSoundDownloads downloads(loop, cache);
    for (const auto* host : {"127.0.0.1", "localhost", "2130706433", "0x7f.1", "0", "[::ffff:127.0.0.1]"})
        EXPECT_EQ(fetch(downloads, server.url("/rain.wav", host), noHost), "") << host;
    EXPECT_EQ(server.connections(), 0) << "asked for a game of the public network";
    for (const auto* game : {"127.0.0.1", "::ffff:127.0.0.1"}) {
        SCOPED_TRACE(game);
        EXPECT_EQ(fetch(downloads, server.url("/rain.wav"), game), rain);
        EXPECT_EQ(fetch(downloads, server.url("/rain.wav", "localhost"), game), rain);
        EXPECT_EQ(fetch(downloads, neighbour.url("/rain.wav"), game), "");
        EXPECT_EQ(fetch(downloads, redirecting.url("/away"), game), "");
    }
    EXPECT_EQ(neighbour.connections(), 0);
    EXPECT_EQ(fetch(downloads, neighbour.url("/rain.wav"), "127.0.0.2"), rain);
    EXPECT_EQ(fetch(downloads, neighbour.url("/rain.wav"), "127.0.0.1"), "") << "kept for another game";
}

TEST_F(SoundDownloads, AProxyOfTheEnvironmentIsNotAsked)
{
    setenv("http_proxy", server.url("").c_str(), /*replace=*/1);
    ZNTSoundDownloads downloads(loop, cache);
    EXPECT_EQ(fetch(downloads, "http://192.0.2.1/rain.wav", noHost), "");
    unsetenv("http_proxy");
    EXPECT_EQ(server.connections(), 0);
}

TEST_F(SoundDownloads, ARedirectLeadsNowhereThatTheGameMayNotGo)
{
    home.write("private.wav", rain);
    ZNTSoundServer neighbour(answers(), "127.0.0.2");
    ZNTSoundServer redirecting({
        {"/away", [&](auto& reply) { reply.redirectTo(server.url("/rain.wav")); }},
        {"/private", [&](auto& reply) { reply.redirectTo(neighbour.url("/rain.wav")); }},
        {"/file", [&](auto& reply) { reply.redirectTo("file://" + home.path("private.wav")); }},
        {"/ftp", [&](auto& reply) { reply.redirectTo("ftp" + server.url("/rain.wav").substr(4)); }},
        {"/round", [](auto& reply) { reply.redirectTo("/round"); }},
    });
    ZNTSoundDownloads downloads(loop, cache, {.isPublicAddress = isFirstOfLoopback});
    EXPECT_EQ(fetch(downloads, redirecting.url("/away"), noHost), rain);
    const auto connections = server.connections();
    for (const auto* path : {"/private", "/file", "/ftp", "/round"}) {
        SCOPED_TRACE(path);
        EXPECT_EQ(fetch(downloads, redirecting.url(path), noHost), "");
        if (path != std::string_view("/private")) {
            EXPECT_EQ(fetch(downloads, redirecting.url(path), ownHost), "");
        }
    }
    EXPECT_EQ(server.connections() + neighbour.connections(), connections);
    EXPECT_LE(redirecting.requests(), 20);
}

TEST_F(SoundDownloads, PartialDownloadsAndWebPagesAreRejected)
{
    ZNTSoundDownloads downloads(loop, cache);
    for (const auto* path : {"/page", "/half", "/missing"})
        EXPECT_EQ(fetch(downloads, server.url(path)), "") << path;
    EXPECT_EQ(fetch(downloads, "http://127.0.0.1:1/nobody.wav"), "");
    EXPECT_FALSE(fs::exists(cache));
}

TEST_F(SoundDownloads, AnEndlessBodyIsCutOffAtTheCap)
{
    ZNTSoundDownloads downloads(loop, cache);
    EXPECT_EQ(fetch(downloads, server.url("/endless")), "");
    ASSERT_TRUE(loop.runUntil([&] { return server.openNow() == 0; }));
    EXPECT_GE(server.bytesSent(), 16U << 20);
    EXPECT_LT(server.bytesSent(), 32U << 20);
    const auto before = server.bytesSent();
    EXPECT_EQ(fetch(downloads, server.url("/announced")), "");
    ASSERT_TRUE(loop.runUntil([&] { return server.openNow() == 0; }));
    EXPECT_LT(server.bytesSent() - before, 16U << 20);
}

TEST_F(SoundDownloads, ASilentServerIsGivenUpAfterTheTimeLimit)
{
    ZNTSoundDownloads downloads(loop, cache, {.seconds = 0.2});
    EXPECT_EQ(fetch(downloads, server.url("/slow0")), "");
    EXPECT_TRUE(loop.runUntil([&] { return server.openNow() == 0; }));
}

TEST_F(SoundDownloads, FourRunAtOnceAndTheRestWaitForThem)
{
    ZNTSoundDownloads downloads(loop, cache);
    std::vector<std::shared_ptr<Outcome>> outcomes(8);
    for (std::size_t number = 0; number < outcomes.size(); ++number)
        outcomes[number] = start(downloads, server.url("/slow" + std::to_string(number)), ownHost);
    ASSERT_TRUE(loop.runUntil([&] { return server.requests() == 4; }));
    downloads.cancel(1);
    ASSERT_TRUE(loop.runUntil([&] { return server.requests() == 5; }));
    server.release();
    ASSERT_TRUE(loop.runUntil([&] {
        return std::all_of(outcomes.begin() + 1, outcomes.end(),
                           [](const auto& outcome) { return outcome->hasCome; });
    }));
    EXPECT_FALSE(outcomes.front()->hasCome);
    EXPECT_TRUE(std::all_of(outcomes.begin() + 1, outcomes.end(),
                            [](const auto& outcome) { return outcome->content; }));
    EXPECT_LE(server.mostAtOnce(), 5); // the server may notice a bit late that one was cancelled
}

TEST_F(SoundDownloads, AFloodOfRequestsFailsInsteadOfPilingUp)
{
    ZNTSoundDownloads downloads(loop, cache, {.mostWaiting = 5});
    std::vector<std::shared_ptr<Outcome>> outcomes(500);
    for (auto& outcome : outcomes)
        outcome = start(downloads, server.url("/slow0"), ownHost);
    const auto stillWaiting = [&] {
        return std::count_if(outcomes.begin(), outcomes.end(),
                             [](const auto& outcome) { return !outcome->hasCome; });
    };
    EXPECT_TRUE(loop.runUntil([&] { return stillWaiting() == 9; }));
}

TEST_F(SoundDownloads, TheEndDoesNotWaitForAServer)
{
    const auto start = std::chrono::steady_clock::now();
    for (int round = 0; round < 5; ++round) {
        ZNTSoundDownloads downloads(loop, cache);
        this->start(downloads, server.url("/slow0"), ownHost);
        ASSERT_TRUE(loop.runUntil([&] { return round % 2 == 0 || server.openNow() > 0; }));
    }
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10));
    server.release();
    loop.runPosted();
}

TEST_F(SoundDownloads, AreKeptByUrlUpToASizeReadableByThePlayerAlone)
{
    const auto url = server.url("/rain.wav");
    for (int round = 0; round < 2; ++round) {
        ZNTSoundDownloads downloads(loop, cache);
        EXPECT_EQ(fetch(downloads, url), rain);
        EXPECT_EQ(fetch(downloads, url), rain);
        EXPECT_EQ(server.requests(), 1);
        EXPECT_EQ(fetch(downloads, url, noHost), "") << "kept for a local game only";
    }
    const auto permissions = [](const fs::path& path) {
        return fs::status(path).permissions() & fs::perms(0777);
    };
    EXPECT_EQ(permissions(cache), fs::perms(0700));
    const auto kept = fs::directory_iterator(cache)->path();
    EXPECT_EQ(permissions(kept), fs::perms(0600));

    // Another URL of the same hash, then a folder in which nothing can be kept.
    std::ofstream(kept) << "127.0.0.1 http://other.example/\nOggS of another";
    ZNTSoundDownloads downloads(loop, cache, {.cacheBytes = rain.size() * 5 / 2});
    EXPECT_EQ(fetch(downloads, url), rain);
    EXPECT_EQ(server.requests(), 2);

    for (const auto* path : {"/a.wav", "/rain.wav", "/b.wav"})
        EXPECT_EQ(fetch(downloads, server.url(path)), rain);
    EXPECT_EQ(server.requests(), 4);
    EXPECT_EQ(std::distance(fs::directory_iterator(cache), {}), 2);
    EXPECT_EQ(fetch(downloads, url), rain);
    EXPECT_EQ(server.requests(), 4) << "what was used last is kept";

    fs::remove_all(cache);
    home.write(".cache/zantor/sounds", "a file in the way");
    EXPECT_EQ(fetch(downloads, url), rain);
}

/// Calls `check` with each of the words.
void forEachWord(const char* words, const std::function<void(const std::string&)>& check)
{
    std::istringstream all(words);
    for (std::string word; all >> word;)
        check(word);
}

TEST(NetworkAddress, TellsThePublicNetworkFromAllOthers)
{
    forEachWord(
        "8.8.8.8 1.1.1.1 100.63.255.255 100.128.0.0 172.15.255.255 172.32.0.0 11.0.0.0 126.255.255.255 "
        "128.0.0.0 169.253.0.1 192.167.1.1 223.255.255.255 2606:4700::1111 2001:4860::8888 2a00::1 "
        "::ffff:8.8.8.8 64:ff9b::8.8.8.8 2002:808:808::1 64:ff9b:2::1 3fff:1000::1 5eff::1 5f01::1 "
        "192.88.98.1",
        [](const auto& address) { EXPECT_TRUE(znt::isPublicAddress(address)) << address; });
    forEachWord(
        "0.0.0.0 0.1.2.3 10.0.0.0 10.255.255.255 100.64.0.0 100.127.255.255 127.0.0.1 127.255.0.1 "
        "169.254.169.254 172.16.0.0 172.31.255.255 192.168.0.1 192.0.0.8 192.0.2.1 198.18.0.1 "
        "198.19.255.255 224.0.0.1 240.0.0.1 255.255.255.255 :: ::1 fe80::1%eth0 febf::1 fec0::1 fc00::1 "
        "fdff::1 ff02::1 ::ffff:127.0.0.1 ::ffff:10.1.1.1 ::10.1.1.1 64:ff9b::192.168.0.1 2002:7f00:1::1 "
        "2001:db8::1 2001::1 64:ff9b:1::8.8.8.8 3fff::1 3fff:fff::1 5f00::1 192.88.99.1",
        [](const auto& address) { EXPECT_FALSE(znt::isPublicAddress(address)) << address; });
}

TEST(SoundUrl, OnlyTheWebIsAsked)
{
    for (const auto* url : {"http://a", "HTTPS://a/b.wav"})
        EXPECT_TRUE(ZNTSoundDownloads::canFetch(url)) << url;
    for (const auto* url : {"", "http://", "file:///etc/passwd", "ftp://a/b.wav", "scp://a/b", "httpx://a",
                            "a.example/b.wav", "http://a/\nb", "//a/b.wav"})
        EXPECT_FALSE(ZNTSoundDownloads::canFetch(url)) << url;
    EXPECT_FALSE(ZNTSoundDownloads::canFetch("http://a/" + std::string(5'000, 'x')));
}

} // namespace
