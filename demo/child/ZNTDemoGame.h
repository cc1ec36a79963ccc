#pragma once

#include "RunLoop.h"
#include "ZNTResult.h"
#include "ZNTStringEncoding.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <sys/types.h>

/// The demo game as a child process of the client that shows it, on a free port of 127.0.0.1. It ends
/// together with this object; if the client crashes, the kernel ends it.
///
/// It belongs to the run loop's thread, which must be the one that lives as long as the program (the kernel
/// watches the thread that started the child).
class ZNTDemoGame
{
public:
    /// Called once, on the loop, with the port to connect to, or with a sentence that says why there is no
    /// game.
    using StartedHandler = std::function<void(ZNTResult<std::uint16_t>)>;

    /// `runLoop` outlives this. `executable` is the path of the program to start.
    explicit ZNTDemoGame(RunLoop& runLoop, std::string executable = executableBesideThisProgram());
    /// Ends the game. A handler that has not been called is not called any more.
    ~ZNTDemoGame();
    ZNTDemoGame(const ZNTDemoGame&) = delete;
    ZNTDemoGame& operator=(const ZNTDemoGame&) = delete;

    /// Starts the game in the given language; returns at once. Meant to be called once.
    void start(ZNTStringEncoding encoding, StartedHandler started);

    /// "zantor-demo" in the folder of the running executable.
    static std::string executableBesideThisProgram();

private:
    ZNTResult<int> launch(ZNTStringEncoding encoding);
    void failAfter(double seconds, ZNTError error);
    void readAnnouncement();
    void finish(ZNTResult<std::uint16_t> outcome);
    void end();

    RunLoop& runLoop;
    std::string executable;
    StartedHandler started;
    std::string announcement;
    int output = -1;
    pid_t child = -1;
    std::unique_ptr<RunLoopWatch> watch;
    std::unique_ptr<RunLoopTimer> timeLimit;
};
