#include "UvRunLoop.h"
#include "ZNTDemoServer.h"
#include "ZNTProgramArguments.h"

#include <cstdint>
#include <iostream>
#include <string>
#include <utility>
#include <vector>

namespace
{

struct Options {
    std::uint16_t port = 0;
    ZNTStringEncoding encoding = ZNTStringEncoding::Ascii;
    bool endsAfterFirstPlayer = false;
};

int play(const Options& options)
{
    auto opened = UvRunLoop::open();
    if (!opened) {
        std::cerr << "zantor-demo: cannot run: " << opened.error().description << '\n';
        return 1;
    }
    auto& runLoop = *opened.value();
    auto server = ZNTDemoServer::onPort(options.port, options.encoding, runLoop);
    if (!server) {
        std::cerr << "zantor-demo: cannot listen on 127.0.0.1 " << options.port << ": "
                  << server.error().description << '\n';
        return 1;
    }
    if (options.endsAfterFirstPlayer)
        server.value()->whenPlayerLeft = [&runLoop] { runLoop.stop(); };
    // The program that started the game reads the port here.
    std::cout << "listening on 127.0.0.1 " << server.value()->port() << std::endl;
    runLoop.run();
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    Options options;
    ZNTProgramArguments program(
        "zantor-demo", "A small game that runs on this computer, for learning and for trying a MUD client.");
    program.addPort("--port", options.port, ZNTProgramArguments::Zero::Allowed,
                    "the port of 127.0.0.1 on which players connect; 0 takes a free one");
    std::vector<std::pair<std::string, ZNTStringEncoding>> encodings;
    for (const auto& row : ZNTStringEncodings)
        encodings.emplace_back(row.name, row.encoding);
    program.addChoice("--encoding", options.encoding, encodings,
                      "the encoding of the game's text: ascii and utf-8 are English, euc-cn is simplified "
                      "Chinese, big5 is traditional Chinese");
    program.addFlag("--once", options.endsAfterFirstPlayer, "stop when the first player has left");
    if (const auto exitCode = program.parse(argc, argv))
        return *exitCode;
    return play(options);
}
