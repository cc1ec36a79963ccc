#include "AsyncSocketConnector.h"
#include "AsyncSocketTestSupport.h"

#include <arpa/inet.h>
#include <array>
#include <cstring>
#include <netdb.h>
#include <sys/socket.h>
#include <system_error>
#include <tuple>
#include <unistd.h>

namespace
{

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

/// Neither accepts nor refuses: its queue of two is full, and Linux drops what else knocks.
class SilentServer
{
public:
    SilentServer()
    {
        auto* generic = reinterpret_cast<sockaddr*>(&address.storage);
        for (auto& each : descriptors)
            each = ::socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
        EXPECT_EQ(::bind(descriptors[0], generic, address.length), 0);
        EXPECT_EQ(::listen(descriptors[0], 0), 0);
        EXPECT_EQ(::getsockname(descriptors[0], generic, &address.length), 0);
        for (std::size_t at = 1; at < descriptors.size(); ++at)
            static_cast<void>(::connect(descriptors[at], generic, address.length));
    }
    ~SilentServer()
    {
        for (const int each : descriptors)
            ::close(each);
    }
    SilentServer(const SilentServer&) = delete;
    SilentServer& operator=(const SilentServer&) = delete;

    AsyncSocketAddress address = addressOf("127.0.0.1", 0);

private:
    std::array<int, 3> descriptors{};
};

/// None on a machine without it.
std::unique_ptr<ZNTScriptedPeer> peerOverIPv6(RunLoop& loop)
{
    try {
        return std::make_unique<ZNTScriptedPeer>(loop, "::1");
    } catch (const std::system_error&) {
        return {};
    }
}

} // namespace

TEST_F(AsyncSocketTest, ConnectsByAddressAndByName)
{
    const auto peer6 = peerOverIPv6(loop);
    const std::tuple<std::string, ZNTScriptedPeer*, std::string> rows[] = {
        {"127.0.0.1", &peer, "127.0.0.1"}, {"localhost", &peer, "127.0.0.1"}, {"::1", peer6.get(), "::1"}};
    for (const auto& [host, server, address] : rows) {
        SCOPED_TRACE(host);
        if (!server)
            continue; // no IPv6 here
        heard.events.clear();
        ASSERT_TRUE(socket->connectToHost(host, server->port()));
        EXPECT_THROW(static_cast<void>(socket->connectToHost(host, 1)), AsyncSocketException) << "busy";
        ASSERT_TRUE(loop.runUntil([this] { return socket->isConnected(); }));
        EXPECT_EQ(heard.events, Events{"connected " + address});
        EXPECT_EQ(socket->connectedPort(), server->port());
        EXPECT_EQ(socket->localHost(), address);
        EXPECT_EQ(socket->isIPv6(), server != &peer);
        socket->disconnect();
    }
}

TEST_F(AsyncSocketTest, TheLastRunLoopModeStays)
{
    EXPECT_FALSE(socket->removeRunLoopMode(std::string(AsyncSocket::DefaultRunLoopMode)));
    EXPECT_TRUE(socket->addRunLoopMode("next") && socket->addRunLoopMode("next"));
    EXPECT_TRUE(socket->removeRunLoopMode(std::string(AsyncSocket::DefaultRunLoopMode)));
    EXPECT_FALSE(socket->setRunLoopModes({}));
    EXPECT_EQ(socket->runLoopModes(), Events{"next"});
    EXPECT_TRUE(socket->setRunLoopModes({"one", "other"}));
    EXPECT_EQ(socket->runLoopModes(), (Events{"one", "other"}));
}

TEST_F(AsyncSocketTest, AnUnknownNameFailsWithTheResolversMessage)
{
    ASSERT_TRUE(socket->connectToHost("no-such-host.invalid", 4000));
    ASSERT_TRUE(awaitEnd());
    EXPECT_EQ(heard.lastError.description, gai_strerror(static_cast<int>(heard.lastError.code)));
    EXPECT_EQ(heard.events.size(), 2u);
}

TEST_F(AsyncSocketTest, AnAttemptThatMeetsSilenceEndsAtItsTimeout)
{
    const SilentServer silence;
    const auto port = ntohs(reinterpret_cast<const sockaddr_in&>(silence.address.storage).sin_port);
    ASSERT_TRUE(socket->connectToHost("127.0.0.1", port, 10));
    loop.advance(9.9);
    EXPECT_EQ(heard.events, Events{});
    loop.advance(0.1);
    EXPECT_EQ(heard.events, (Events{"ending: Attempt to connect to host timed out", "disconnected"}));
    EXPECT_EQ(loop.pendingTimers(), 0u);
}

TEST_F(AsyncSocketTest, AnAttemptThatWasEndedHasNoFurtherCallbacks)
{
    for (const std::string host : {"no-such-host.invalid", "localhost"}) {
        auto doomed = std::make_unique<AsyncSocket>(loop, &heard);
        ASSERT_TRUE(doomed->connectToHost(host, peer.port()));
        ASSERT_TRUE(socket->connectToHost(host, peer.port(), 10));
        heard.events.clear();
        doomed.reset(); // destroyed: not a word
        socket->disconnect();
        EXPECT_EQ(loop.pendingTimers(), 0u);

        // By when a third attempt has its answer, those to the first two have come.
        RecordingSocketDelegate third;
        AsyncSocket later(loop, &third);
        ASSERT_TRUE(later.connectToHost(host, peer.port()));
        ASSERT_TRUE(loop.runUntil([&] { return !third.events.empty(); }));
        EXPECT_EQ(heard.events, Events{"disconnected"});
        EXPECT_LE(peer.clientsAccepted(), 1) << "more than the third connected";
    }
}

TEST_F(AsyncSocketTest, FamiliesAlternateAQuarterOfASecondApartAndAtOnceAfterARefusal)
{
    const auto peer6 = peerOverIPv6(loop);
    if (!peer6)
        GTEST_SKIP() << "no IPv6 loopback here";
    const SilentServer silent, alsoSilent;
    peer.stopListening();
    const auto refusal = addressOf("127.0.0.1", peer.port());
    const auto open = addressOf("::1", peer6->port());

    const std::pair<std::vector<AsyncSocketAddress>, double> rows[] = {
        {{silent.address, alsoSilent.address, refusal, open}, 0.25},
        {{refusal, silent.address, alsoSilent.address, open}, 0}};
    for (const auto& [addresses, seconds] : rows) {
        SCOPED_TRACE(seconds);
        double connectedAt = -1;
        AsyncSocketConnector connector(loop, [&](const ZNTResult<AsyncSocketDescriptor>& connected) {
            EXPECT_TRUE(connected.succeeded());
            connectedAt = loop.now();
        });
        const double begun = loop.now();
        connector.connectToOneOf(addresses);
        loop.advance(seconds);
        ASSERT_TRUE(loop.runUntil([&] { return connectedAt >= 0; }));
        EXPECT_EQ(connectedAt - begun, seconds);
        EXPECT_EQ(loop.pendingTimers(), 0u);
    }
}
