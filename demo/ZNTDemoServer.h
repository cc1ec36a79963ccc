#pragma once

#include "RunLoop.h"
#include "ZNTDemoCommands.h"
#include "ZNTDemoConnection.h"
#include "ZNTDemoVillage.h"
#include "ZNTResult.h"
#include "ZNTStringEncoding.h"

#include <cstdint>
#include <functional>
#include <list>
#include <memory>

/// The demo game on a port of 127.0.0.1, and on no other address.
class ZNTDemoServer
{
public:
    static constexpr std::size_t mostPlayers = 64;

    /// `runLoop` outlives the server. Port 0 takes any free one.
    static ZNTResult<std::unique_ptr<ZNTDemoServer>> onPort(std::uint16_t port, ZNTStringEncoding encoding,
                                                            RunLoop& runLoop);
    ~ZNTDemoServer();
    ZNTDemoServer(const ZNTDemoServer&) = delete;
    ZNTDemoServer& operator=(const ZNTDemoServer&) = delete;

    [[nodiscard]] std::uint16_t port() const;

    /// Called on the loop each time a player has left.
    std::function<void()> whenPlayerLeft;

private:
    ZNTDemoServer(int listener, ZNTStringEncoding encoding, RunLoop& runLoop);
    void acceptPlayers();
    void admit(int descriptor);
    void remove(const ZNTDemoConnection& over);
    void restAwhile();

    int listener;
    ZNTStringEncoding encoding;
    RunLoop& runLoop;
    const ZNTDemoTexts& texts;
    ZNTDemoVillage village;
    ZNTDemoCommands commands;
    std::list<ZNTDemoConnection> connections;
    std::unique_ptr<RunLoopWatch> watch;
    std::unique_ptr<RunLoopTimer> rest;
    /// Posted tasks hold this weakly, to know whether the server still exists.
    std::shared_ptr<bool> isAlive = std::make_shared<bool>(true);
};
