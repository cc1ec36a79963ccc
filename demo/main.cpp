#include "UvRunLoop.h"
#include "ZNTDemoServer.h"

#include <CLI/CLI.hpp>
#include <cstdint>
#include <iostream>
#include <map>
#include <string>

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
    CLI::App program("A small game on this machine, to learn and to try a MUD client with.", "zantor-demo");
    program.add_option("--port", options.port, "Port of 127.0.0.1 to listen on; 0 takes any free one");
    std::map<std::string, ZNTStringEncoding> encodings;
    for (const auto& row : ZNTStringEncodings)
        encodings.emplace(row.name, row.encoding);
    program
        .add_option("--encoding", options.encoding,
                    "ascii, utf-8: English; euc-cn, big5: the two kinds of Chinese")
        ->transform(CLI::CheckedTransformer(encodings, CLI::ignore_case))
        ->option_text(znt::encodingNames("|", "|"));
    program.add_flag("--once", options.endsAfterFirstPlayer, "End when the first player has left");
    try {
        program.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return program.exit(error) == 0 ? 0 : 2;
    }
    return play(options);
}
