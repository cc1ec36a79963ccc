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
    ZNTProgramArguments program("zantor-demo",
                                "A small game on this machine, to learn and to try a MUD client with.");
    program.app.add_option("--port", options.port, "port of 127.0.0.1 to listen on; 0 takes any free one")
        ->type_name("PORT");
    std::vector<std::pair<std::string, ZNTStringEncoding>> encodings;
    for (const auto& row : ZNTStringEncodings)
        encodings.emplace_back(row.name, row.encoding);
    program.addChoice("--encoding", options.encoding, encodings,
                      "ascii, utf-8: English; euc-cn, big5: the two kinds of Chinese");
    program.app.add_flag("--once", options.endsAfterFirstPlayer, "end when the first player has left");
    if (const auto exitCode = program.parse(argc, argv))
        return *exitCode;
    return play(options);
}
