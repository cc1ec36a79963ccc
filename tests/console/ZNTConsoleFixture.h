#pragma once

#include "ZNTConsoleClient.h"
#include "ZNTScriptedPeer.h"
#include "ZNTSilentSounds.h"
#include "ZNTTestPlatform.h"

#include <gmock/gmock.h>
#include <optional>

/// Lines that a test types.
struct ZNTTypedInput final : ZNTConsoleInput {
    void start(Handlers given) override { handlers = std::move(given); }
    void setPaused(bool paused) override { isPaused = paused; }
    Handlers handlers;
    bool isPaused = false;
};

/// Speech that only remembers.
struct ZNTNotedSpeech final : ZNTSpeechEngine {
    [[nodiscard]] bool isSpeaking() const override { return false; }
    void startSpeaking(std::u16string_view text) override { spoken.push_back(znt::utf8FromText(text)); }
    void stopSpeaking() override {}
    std::vector<std::string> spoken; ///< UTF-8
};

/// The terminal client on a machine of its own, with a server at the other end of loopback. Time is virtual.
class ZNTConsoleFixture : public testing::Test
{
protected:
    enum class From { Script, Terminal };

    void start(From from = From::Script, ZNTConsoleOptions options = {})
    {
        client.emplace(
            ZNTConsoleClient::Surroundings{.platform = machine.platform,
                                           .input = input,
                                           .inputIsTerminal = from == From::Terminal,
                                           .sounds = sounds,
                                           .speechEngine = speech,
                                           .writeOutput = [this](std::string_view text) { output += text; },
                                           .exit = [this](int code) { exitCodes.push_back(code); }},
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
        ASSERT_TRUE(
            machine.loop.runUntil([this] { return client->session().isConnected() && server.hasClient(); }));
        settle();
    }

    void type(std::string line) { input.handlers.line(std::move(line)); }
    void endInput() { input.handlers.end(); }
    /// Turns the loop until both ends have nothing more to say; its time stands still.
    void settle()
    {
        machine.loop.runUntil([this] { return server.hasSentAll(); });
        for (int quietTurns = 0; quietTurns < 5; ++quietTurns)
            machine.loop.runUntil([turns = 0]() mutable { return ++turns > 2; });
        machine.loop.runPosted();
    }
    void silence()
    {
        machine.loop.advance(0.5);
        settle();
    }
    /// What the game says, up to a prompt's go-ahead.
    void receive(std::string text)
    {
        server.send(std::move(text) + "\xFF\xF9");
        settle();
    }
    /// What a command of the client's own answers: on stdout, in the log and as alerts, in that order.
    std::vector<std::string> answerTo(const std::string& command)
    {
        output.clear();
        machine.log.lines.clear();
        machine.alert.shown.clear();
        type(command);
        std::vector<std::string> answer;
        for (std::size_t at = 0; at < output.size();) {
            const auto end = std::min(output.find('\n', at), output.size());
            answer.push_back(output.substr(at, end - at));
            at = end + 1;
        }
        for (const auto& line : machine.log.lines)
            answer.push_back("! " + line);
        for (const auto& [title, text] : machine.alert.shown)
            answer.push_back(znt::utf8FromText(title) + ": " + znt::utf8FromText(text));
        return answer;
    }

    ZNTTestPlatform machine;
    ZNTScriptedPeer server{machine.loop};
    ZNTTypedInput input;
    ZNTSilentSounds sounds;
    ZNTNotedSpeech speech;
    std::string output;
    std::vector<int> exitCodes;
    std::optional<ZNTConsoleClient> client;
};
