#pragma once

#include "ZNTConsoleClient.h"
#include "ZNTMemoryStream.h"
#include "ZNTNotedOutput.h"
#include "ZNTRecordedSounds.h"
#include "ZNTSpeechEngine.h"
#include "ZNTTestPlatform.h"

#include <gmock/gmock.h>
#include <optional>

/// Lines that a test types.
struct ZNTTypedInput final : ZNTConsoleInput {
    explicit ZNTTypedInput(std::string& transcript) : transcript(transcript) {}
    bool start(Handlers given) override
    {
        handlers = std::move(given);
        return canBeRead;
    }
    void setPaused(bool paused) override { isPaused = paused; }
    void writeAside(std::string_view line) override { transcript += line; }
    Handlers handlers;
    std::string& transcript;
    bool isPaused = false, canBeRead = true;
};

/// Notes alerts, and writes their titles among the text in their order.
struct ZNTAlertInTranscript final : ZNTAlert {
    ZNTAlertInTranscript(ZNTAlert& remembered, ZNTConsoleOutput& output)
        : remembered(remembered),
          output(output)
    {
    }
    void showMessage(std::u16string_view title, std::u16string_view text) override
    {
        output.writeAside("[" + znt::utf8FromText(title) + "]");
        remembered.showMessage(title, text);
    }
    void askForConfirmation(std::u16string_view title, std::u16string_view text,
                            std::function<void(bool)> answered) override
    {
        remembered.askForConfirmation(title, text, std::move(answered));
    }
    ZNTAlert& remembered;
    ZNTConsoleOutput& output;
};

/// The terminal client on a machine of its own, with a game in memory at the far end. Time is virtual.
class ZNTConsoleFixture : public testing::Test
{
protected:
    enum class From { Script, Terminal };

    void start(From from = From::Script, ZNTConsoleOptions options = {})
    {
        client.emplace(
            ZNTConsoleClient::Surroundings{.platform = platform,
                                           .input = input,
                                           .inputIsTerminal = from == From::Terminal,
                                           .sounds = sounds,
                                           .speechEngine = speech,
                                           .streams = server.streams(),
                                           .output = consoleOutput,
                                           .outputIsTerminal = outputIsTerminal,
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
    /// What a command of the client's own answers: on stdout, in the log and as alerts, in that order.
    std::vector<std::string> answerTo(const std::string& command)
    {
        consoleOutput.catchUp();
        output.clear();
        machine.log.lines.clear();
        machine.alert.shown.clear();
        type(command);
        consoleOutput.catchUp();
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
    ZNTMemoryGame server{machine.loop};
    ZNTNotedSink sink;
    std::string& output = sink.output;
    std::string& transcript = sink.transcript;
    ZNTTypedInput input{sink.transcript};
    ZNTConsoleOutput consoleOutput{machine.loop, input, sink};
    ZNTAlertInTranscript alertInTranscript{machine.alert, consoleOutput};
    ZNTPlatform platform{machine.loop,          machine.loop,      machine.log,
                         machine.notifications, alertInTranscript, machine.platform.places};
    ZNTRecordedSounds sounds;
    ZNTSilentSpeech speech;
    bool outputIsTerminal = false;
    std::vector<int> exitCodes;
    std::optional<ZNTConsoleClient> client;
};
