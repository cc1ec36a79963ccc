#include "AsyncHostLookupThreads.h"
#include "AsyncSocketConnector.h"
#include "AsyncSocketTestSupport.h"
#include "ZNTFewDescriptors.h"

#include <arpa/inet.h>
#include <array>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <netdb.h>
#include <semaphore>
#include <sys/socket.h>
#include <system_error>
#include <thread>
#include <unistd.h>

namespace
{

/// Neither accepts nor refuses: its queue of two is full, and Linux drops what else knocks.
class SilentServer
{
public:
    SilentServer()
    {
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        auto* generic = reinterpret_cast<sockaddr*>(&address);
        socklen_t length = sizeof address;
        for (auto& each : descriptors)
            each = ::socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
        EXPECT_EQ(::bind(descriptors[0], generic, length), 0);
        EXPECT_EQ(::listen(descriptors[0], 0), 0);
        EXPECT_EQ(::getsockname(descriptors[0], generic, &length), 0);
        for (std::size_t at = 1; at < descriptors.size(); ++at)
            static_cast<void>(::connect(descriptors[at], generic, length));
    }
    ~SilentServer()
    {
        for (const int each : descriptors)
            ::close(each);
    }
    SilentServer(const SilentServer&) = delete;
    SilentServer& operator=(const SilentServer&) = delete;
    [[nodiscard]] std::uint16_t port() const { return ntohs(address.sin_port); }

private:
    sockaddr_in address{};
    std::array<int, 3> descriptors{};
};

/// A name for 127.0.0.1 to look up; the address itself on a machine so bare that it has no hosts file.
std::string loopbackName()
{
    addrinfo* found = nullptr;
    if (::getaddrinfo("localhost", nullptr, nullptr, &found) != 0)
        return "127.0.0.1";
    ::freeaddrinfo(found);
    return "localhost";
}

/// None on a machine without it.
std::unique_ptr<ZNTScriptedPeer> peerOverIPv6(RunLoop& loop)
{
    try {
        return std::make_unique<ZNTScriptedPeer>(loop, ZNTScriptedPeer::Family::IPv6);
    } catch (const std::system_error&) {
        return {};
    }
}

AsyncSocketAddress addressOf(const char* host, std::uint16_t port)
{
    addrinfo hints{};
    hints.ai_flags = AI_NUMERICHOST | AI_NUMERICSERV;
    hints.ai_socktype = SOCK_STREAM;
    addrinfo* found = nullptr;
    EXPECT_EQ(::getaddrinfo(host, std::to_string(port).c_str(), &hints, &found), 0);
    AsyncSocketAddress address;
    std::memcpy(&address.storage, found->ai_addr, found->ai_addrlen);
    address.length = found->ai_addrlen;
    ::freeaddrinfo(found);
    return address;
}

} // namespace

TEST_F(AsyncSocketTest, ConnectsByAddressAndByNameAndTellsBothEnds)
{
    for (const auto& host : {std::string("127.0.0.1"), loopbackName()}) {
        SCOPED_TRACE(host);
        heard.events.clear();
        ASSERT_TRUE(socket->connectToHost(host, peer.port()));
        EXPECT_FALSE(socket->isConnected());
        EXPECT_FALSE(socket->isDisconnected());
        ASSERT_TRUE(loop.runUntil([this] { return socket->isConnected(); }));
        EXPECT_EQ(heard.events, (Events{"will connect", "connected 127.0.0.1"}));
        EXPECT_EQ(socket->connectedHost(), "127.0.0.1");
        EXPECT_EQ(socket->connectedPort(), peer.port());
        EXPECT_EQ(socket->localHost(), "127.0.0.1");
        EXPECT_NE(socket->localPort(), 0);
        EXPECT_TRUE(socket->isIPv4());
        EXPECT_FALSE(socket->isIPv6());
        socket->disconnect();
        EXPECT_EQ(heard.events.back(), "disconnected");
        EXPECT_EQ(socket->connectedHost(), "");
    }
}

TEST_F(AsyncSocketTest, ConnectsOverIPv6WhereTheMachineHasIt)
{
    const auto peer6 = peerOverIPv6(loop);
    if (!peer6)
        GTEST_SKIP() << "no IPv6 loopback here";
    ASSERT_TRUE(socket->connectToHost(peer6->host(), peer6->port()));
    ASSERT_TRUE(loop.runUntil([this] { return socket->isConnected(); }));
    EXPECT_TRUE(socket->isIPv6());
    EXPECT_EQ(socket->connectedHost(), "::1");
}

TEST_F(AsyncSocketTest, APortThatNobodyListensOnIsRefusedOnce)
{
    peer.stopListening();
    ASSERT_TRUE(socket->connectToHost(loopbackName(), peer.port()));
    ASSERT_TRUE(awaitEnd());
    EXPECT_EQ(heard.events, (Events{"will connect", "ending: Connection refused", "disconnected"}));
    EXPECT_EQ(heard.lastError, posixError(ECONNREFUSED));
    EXPECT_TRUE(socket->isDisconnected());
}

TEST_F(AsyncSocketTest, ANameThatDoesNotResolveCarriesTheResolversWords)
{
    for (const auto& host : {std::string("no-such-host.invalid"), std::string("127.0.0.1\0x", 11)}) {
        heard.events.clear();
        ASSERT_TRUE(socket->connectToHost(host, 4000));
        ASSERT_TRUE(awaitEnd());
        EXPECT_EQ(heard.lastError.domain, "kCFStreamErrorDomainNetDB");
        EXPECT_EQ(heard.lastError.description, gai_strerror(static_cast<int>(heard.lastError.code)));
        EXPECT_EQ(heard.events.size(), 3u);
    }
}

TEST_F(AsyncSocketTest, AnAttemptThatMeetsSilenceEndsAtItsTimeout)
{
    const SilentServer silence;
    ASSERT_TRUE(socket->connectToHost("127.0.0.1", silence.port(), 10));
    loop.advance(9.9);
    EXPECT_EQ(heard.events, (Events{"will connect"}));
    loop.advance(0.1);
    EXPECT_EQ(heard.events,
              (Events{"will connect", "ending: Attempt to connect to host timed out", "disconnected"}));
    EXPECT_EQ(heard.lastError.code, 2);
    EXPECT_EQ(loop.pendingTimers(), 0u);
}

TEST_F(AsyncSocketTest, AnAttemptGivenUpIsNotHeardOfAgain)
{
    for (const std::string host : {"no-such-host.invalid", "localhost"}) {
        heard.events.clear();
        auto doomed = std::make_unique<AsyncSocket>(loop, &heard);
        ASSERT_TRUE(doomed->connectToHost(host, peer.port()));
        ASSERT_TRUE(socket->connectToHost(host, peer.port(), 10));
        heard.events.clear();
        doomed.reset(); // destroyed: not a word
        socket->disconnect();
        EXPECT_EQ(heard.events, (Events{"disconnected"}));
        EXPECT_EQ(loop.pendingTimers(), 0u);

        // By when a third attempt has its answer, those to the first two have come.
        RecordingSocketDelegate third;
        AsyncSocket later(loop, &third);
        ASSERT_TRUE(later.connectToHost(host, peer.port()));
        ASSERT_TRUE(
            loop.runUntil([&] { return !third.events.empty() && third.events.back() != "will connect"; }));
        EXPECT_EQ(heard.events, (Events{"disconnected"}));
        EXPECT_LE(peer.clientsAccepted(), 1) << "more than the third connected";
    }
}

TEST_F(AsyncSocketTest, FamiliesAreTriedByTurnsAQuarterOfASecondApartAndAtOnceAfterARefusal)
{
    const auto peer6 = peerOverIPv6(loop);
    if (!peer6)
        GTEST_SKIP() << "no IPv6 loopback here";
    const SilentServer silent, alsoSilent;
    peer.stopListening();
    const auto silence = addressOf("127.0.0.1", silent.port());
    const auto moreSilence = addressOf("127.0.0.1", alsoSilent.port());
    const auto refusal = addressOf("127.0.0.1", peer.port());
    const auto open = addressOf("::1", peer6->port());

    struct {
        std::vector<AsyncSocketAddress> addresses;
        double seconds; ///< after which the one that is open has been reached
    } const rows[] = {
        {{silence, moreSilence, refusal, open}, 0.25},
        {{refusal, silence, moreSilence, open}, 0},
        {{open, silence}, 0},
        {{addressOf("::1", peer.port()), addressOf("::1", peer.port()), refusal, open}, 0},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(&row - rows);
        const int reached = peer6->clientsAccepted();
        const double begun = loop.now();
        bool isConnected = false;
        double connectedAt = -1;
        AsyncSocketConnector connector(loop, [&](const ZNTResult<AsyncSocketDescriptor>& connected) {
            isConnected = connected.succeeded();
            connectedAt = loop.now();
        });
        connector.connectToOneOf(row.addresses);
        if (row.seconds > 0) {
            loop.advance(row.seconds - 0.01);
            EXPECT_EQ(peer6->clientsAccepted(), reached);
            loop.advance(0.01);
        }
        ASSERT_TRUE(loop.runUntil([&] { return connectedAt >= 0; }));
        EXPECT_TRUE(isConnected);
        EXPECT_EQ(connectedAt - begun, row.seconds);
        EXPECT_EQ(loop.pendingTimers(), 0u);
        loop.advance(0);
        EXPECT_EQ(peer6->clientsAccepted(), reached + 1);
    }
}

TEST_F(AsyncSocketTest, AMachineThatHasNothingLeftFailsTheAttempt)
{
    if (sanitizerNeedsDescriptors)
        GTEST_SKIP() << "the sanitizer itself needs descriptors";
    {
        ASSERT_TRUE(socket->connectToHost(peer.host(), peer.port()));
        const ZNTFewDescriptors none(0);
        ASSERT_TRUE(awaitEnd());
        EXPECT_EQ(heard.lastError, posixError(EMFILE));
    }
    for (const bool attemptIsWatched : {false, true}) {
        SCOPED_TRACE(attemptIsWatched);
        loop.hasRoomForWatches = true;
        heard.events.clear();
        ASSERT_TRUE(socket->connectToHost(peer.host(), peer.port()));
        if (attemptIsWatched)
            loop.runPosted();
        loop.hasRoomForWatches = false;
        ASSERT_TRUE(awaitEnd());
        EXPECT_EQ(heard.lastError, (ZNTError{"AsyncSocketErrorDomain", -1, "General CFSocket error"}));
    }
}

TEST(AsyncHostLookupThreads, FourLookUpsThatHangMakeTheNextOnesWait)
{
    struct HangingJob final : AsyncHostLookupThreads::Job {
        HangingJob(std::counting_semaphore<>& mayEnd, std::counting_semaphore<>& hasEnded)
            : mayEnd(mayEnd),
              hasEnded(hasEnded)
        {
        }
        std::counting_semaphore<>&mayEnd, &hasEnded;
        void run() override
        {
            mayEnd.acquire();
            hasEnded.release();
        }
    };
    std::counting_semaphore<> mayEnd(0), hasEnded(0);
    AsyncHostLookupThreads threads;
    std::vector<std::shared_ptr<HangingJob>> jobs;
    for (std::size_t count = 0; count < AsyncHostLookupThreads::mostThreads + 3; ++count) {
        jobs.push_back(std::make_shared<HangingJob>(mayEnd, hasEnded));
        ASSERT_TRUE(threads.add(jobs.back()));
    }
    EXPECT_EQ(threads.running(), AsyncHostLookupThreads::mostThreads);
    jobs[AsyncHostLookupThreads::mostThreads + 1].reset(); // given up before its turn
    for (std::size_t count = 0; count + 1 < jobs.size(); ++count) {
        mayEnd.release();
        ASSERT_TRUE(hasEnded.try_acquire_for(std::chrono::seconds(20)));
    }
    while (threads.running() > 0)
        std::this_thread::yield();
    const auto another = std::make_shared<HangingJob>(mayEnd, hasEnded);
    mayEnd.release();
    ASSERT_TRUE(threads.add(another));
    EXPECT_TRUE(hasEnded.try_acquire_for(std::chrono::seconds(20)));
    while (threads.running() > 0)
        std::this_thread::yield();
}

TEST_F(AsyncSocketTest, ADelegateMayCancelTheAttempt)
{
    heard.welcomesConnection = false;
    const auto refused = socket->connectToHost(peer.host(), peer.port());
    ASSERT_FALSE(refused);
    EXPECT_EQ(refused.error(), (ZNTError{"AsyncSocketErrorDomain", 1, "Connection canceled"}));
    EXPECT_TRUE(socket->isDisconnected());
    loop.advance(1);
    EXPECT_EQ(heard.events, (Events{"will connect"})) << "what never began does not end";
}

TEST_F(AsyncSocketTest, MisuseIsThrown)
{
    const auto messageOf = [](AsyncSocket& misused) -> std::string {
        try {
            static_cast<void>(misused.connectToHost("127.0.0.1", 1));
        } catch (const AsyncSocketException& exception) {
            return exception.what();
        }
        return {};
    };
    AsyncSocket orphan(loop);
    EXPECT_EQ(messageOf(orphan), "Attempting to connect without a delegate. Set a delegate first.");
    const std::string busy =
        "Attempting to connect while connected or accepting connections. Disconnect first.";
    ASSERT_TRUE(socket->connectToHost(peer.host(), peer.port()));
    EXPECT_EQ(messageOf(*socket), busy);
    ASSERT_TRUE(loop.runUntil([this] { return socket->isConnected(); }));
    EXPECT_EQ(messageOf(*socket), busy);
}

TEST_F(AsyncSocketTest, RequestsMadeWhileConnectingAreServedAfterwards)
{
    ASSERT_TRUE(socket->connectToHost(peer.host(), peer.port()));
    socket->writeData("name\r\n", -1, 7);
    socket->readDataToLength(3, -1, 8);
    EXPECT_FALSE(socket->canSafelySetDelegate());
    peer.send("abc");
    ASSERT_TRUE(loop.runUntil([this] { return peer.received() == "name\r\n" && !heard.reads.empty(); }));
    EXPECT_EQ(heard.events[1], "connected 127.0.0.1");
    EXPECT_EQ(heard.reads.front(), "abc");
    loop.runPosted();
    EXPECT_TRUE(socket->canSafelySetDelegate());
}

TEST_F(AsyncSocketTest, RequestsMadeBeforeTheAttemptAreForgotten)
{
    socket->writeData("early\r\n", -1, 1);
    socket->readDataToLength(1, 0.5, 2);
    connect();
    socket->writeData("in time\r\n", -1, 3);
    ASSERT_TRUE(loop.runUntil([this] { return !peer.received().empty(); }));
    loop.advance(1);
    EXPECT_EQ(peer.received(), "in time\r\n");
    EXPECT_TRUE(socket->isConnected()) << "the read that was asked for before would have timed out";
}

TEST_F(AsyncSocketTest, APeerThatClosesYieldsNoError)
{
    connect();
    socket->readDataWithTimeout(-1, 1);
    peer.send("bye");
    peer.closeWhenSent();
    ASSERT_TRUE(awaitEnd());
    EXPECT_EQ(heard.events, (Events{"read 1", "ending", "disconnected"})) << "also with no read waiting";
}

TEST_F(AsyncSocketTest, APeerThatBreaksOffYieldsThePosixError)
{
    connect();
    socket->readDataWithTimeout(-1, 1);
    loop.advance(0);
    peer.reset();
    ASSERT_TRUE(awaitEnd());
    EXPECT_EQ(heard.lastError, posixError(ECONNRESET));
}

TEST_F(AsyncSocketTest, TheEndIsHeardOnceWhoeverAsksForItAgain)
{
    connect();
    heard.whenEnding = [](AsyncSocket& ending) { ending.disconnect(); };
    peer.closeWhenSent();
    ASSERT_TRUE(awaitEnd());
    socket->disconnect();
    loop.advance(1);
    EXPECT_EQ(heard.events, (Events{"ending", "disconnected"}));
}

TEST_F(AsyncSocketTest, ADelegateMayConnectAgainWhileItHearsOfTheEnd)
{
    connect();
    heard.whenEnding = [this](AsyncSocket& ending) {
        heard.whenEnding = nullptr;
        ending.disconnect();
        EXPECT_TRUE(ending.connectToHost(peer.host(), peer.port()));
    };
    peer.closeWhenSent();
    ASSERT_TRUE(loop.runUntil([this] { return peer.clientsAccepted() == 2 && socket->isConnected(); }));
    EXPECT_EQ(heard.events, (Events{"ending", "disconnected", "will connect", "connected 127.0.0.1"}));
}

TEST_F(AsyncSocketTest, TheSocketMayBeDestroyedInsideAnyCallback)
{
    using Hook = std::function<void(AsyncSocket&)> RecordingSocketDelegate::*;
    for (const Hook hook :
         {&RecordingSocketDelegate::whenConnected, &RecordingSocketDelegate::whenRead,
          &RecordingSocketDelegate::whenWritten, &RecordingSocketDelegate::whenEnding,
          &RecordingSocketDelegate::whenDisconnected, &RecordingSocketDelegate::whenReadTimesOut}) {
        RecordingSocketDelegate listener;
        listener.readExtension = 1;
        auto doomed = std::make_unique<AsyncSocket>(loop, &listener);
        listener.*hook = [&doomed](AsyncSocket&) { doomed.reset(); };
        ZNTScriptedPeer other(loop);
        ASSERT_TRUE(doomed->connectToHost(other.host(), other.port()));
        doomed->writeData("hello", -1, 0);
        doomed->readDataToLength(5, 0.5, 0);
        doomed->readDataToLength(5, 0.5, 0);
        ASSERT_TRUE(loop.runUntil([&] { return !doomed || other.received() == "hello"; }));
        loop.advance(1);
        other.send("world");
        other.closeWhenSent();
        EXPECT_TRUE(loop.runUntil([&] { return !doomed; }, 5));
        EXPECT_EQ(loop.pendingTimers(), 0u);
    }
}
