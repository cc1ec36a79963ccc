#pragma once

#include "ZNTConsoleClient.h"
#include "ZNTMemoryStream.h"
#include "ZNTNotedOutput.h"
#include "ZNTRecordedSounds.h"
#include "ZNTRecordedSpeech.h"
#include "ZNTTestPlatform.h"

#include <gmock/gmock.h>
#include <optional>
#include <sstream>

/// The terminal client on a machine of its own, with a game in memory at the far end. Time is virtual.
class ZNTConsoleFixture : public testing::Test
{
protected:
    enum class From { Script, Terminal };

    void start(From from = From::Script, ZNTConsoleOptions options = {})
    {
        client.emplace(ZNTConsoleClient::Surroundings{.platform = machine.platform,
                                                      .input = input,
                                                      .inputIsTerminal = from == From::Terminal,
                                                      .sounds = sounds,
                                                      .speechEngine = speech,
                                                      .streams = server.streams(),
                                                      .output = consoleOutput,
                                                      .outputIsTerminal = false,
                                                      .errorIsTerminal = from == From::Terminal,
                                                      .confirmsChanges = confirmsChanges,
                                                      .exit =
                                                          [this](int code) {
                                                              exitCodes.push_back(code);
                                                              outputAtExit = output;
                                                          },
                                                      .demoProgram = machine.home.path("demo")},
                       options);
        client->start();
    }
    void startConnected(From from = From::Script)
    {
        ZNTConsoleOptions options;
        options.host = server.host();
        options.port = server.port();
        start(from, options);
        waitForConnection();
    }
    void waitForConnection()
    {
        settle();
        ASSERT_TRUE(client->session().isConnected());
    }

    void type(std::string line) { input.handlers.line(std::move(line)); }
    void endInput() { input.handlers.end(); }
    /// Turns the loop within one moment, until both ends have nothing more to say.
    void settle() { machine.loop.advance(0); }
    const std::string& received()
    {
        settle();
        return server.received();
    }
    void silence() { machine.loop.advance(0.5); }
    /// What the game says, up to a prompt's go-ahead.
    void receive(std::string text)
    {
        server.send(std::move(text) + "\xFF\xF9");
        settle();
    }
    /// What a command of the client's own answers: the lines on stdout, then those in the log.
    std::vector<std::string> answerTo(const std::string& command)
    {
        consoleOutput.catchUp();
        output.clear();
        machine.log.lines.clear();
        type(command);
        consoleOutput.catchUp();
        std::vector<std::string> answer;
        std::istringstream lines(output);
        for (std::string line; std::getline(lines, line);)
            answer.push_back(line);
        for (const auto& line : machine.log.lines)
            answer.push_back("! " + line);
        return answer;
    }

    ZNTTestPlatform machine;
    ZNTMemoryGame server{machine.loop};
    ZNTNotedSink sink;
    std::string& output = sink.output;
    ZNTNotedInput input;
    ZNTConsoleOutput consoleOutput{machine.loop, input, sink};
    ZNTRecordedSounds sounds;
    ZNTRecordedSpeech speech;
    std::vector<int> exitCodes;
    std::string outputAtExit;
    bool confirmsChanges = false;
    std::optional<ZNTConsoleClient> client;
};
