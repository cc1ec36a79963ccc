#pragma once

#include "RunLoop.h"
#include "ZNTDemoClientTraits.h"
#include "ZNTDemoCommands.h"
#include "ZNTDemoOptions.h"
#include "ZNTDemoOutput.h"
#include "ZNTDemoPlayer.h"
#include "ZNTDemoTelnet.h"
#include "ZNTDemoVillage.h"

#include <functional>
#include <memory>
#include <string>

/// One player's connection: his socket, his telnet, and his place in the village.
///
/// While a player does not read, his lines wait; if too much waits for him, he is dropped. A flood is made
/// only as fast as it is read. So no player costs more than a few MiB.
class ZNTDemoConnection final : public ZNTDemoAudience,
                                private ZNTDemoTelnetListener,
                                private ZNTDemoOptionsListener
{
public:
    struct Game {
        RunLoop& runLoop;
        const ZNTDemoTexts& texts;
        ZNTStringEncoding encoding;
        ZNTDemoVillage& village;
        ZNTDemoCommands& commands;
    };

    /// Owns `descriptor`, a connected socket that does not block. `whenOver` is called once, when nothing
    /// more can come of the connection; it must not destroy it before its caller has returned.
    ZNTDemoConnection(const Game& game, int descriptor, std::function<void(ZNTDemoConnection&)> whenOver);
    /// Takes the player out of the village.
    ~ZNTDemoConnection() override;

    void showParagraph(std::u16string_view text) override;
    void showFlood(int lines) override;
    [[nodiscard]] ZNTDemoScreen screen() const override;
    void hideTyping(bool hide) override;
    [[nodiscard]] bool wantsSounds() const override;
    [[nodiscard]] bool isCompressed() const override { return output.isCompressing(); }
    void endCompression() override;
    void hangUp(std::u16string_view farewell) override;

private:
    void onLine(std::string_view bytes) override;
    void onLineTooLong() override;
    void onOption(unsigned char verb, unsigned char option) override;
    void onSubnegotiation(unsigned char option, std::string_view content) override;
    void sendCommand(unsigned char verb, unsigned char option) override;
    void onOptionSwitched(const ZNTDemoOption& option, unsigned char verb) override;

    void onReady(RunLoopInterest ready);
    void receive();
    void answer();
    void handleInput();
    void send();
    void continueFlood();
    void finish();

    void switchCompression(unsigned char verb);
    void announceCompression();
    void beginCompression();
    void refuseCompression(unsigned char verb);
    void write(std::string_view bytes);
    void writeText(std::u16string_view text);
    [[nodiscard]] ZNTStringEncoding encoding() const;
    [[nodiscard]] std::string encoded(std::u16string_view text) const;
    [[nodiscard]] std::string encodedPrompt(std::u16string_view before) const;
    void watchForWhatMatters();

    Game game;
    int descriptor;
    std::function<void(ZNTDemoConnection&)> whenOver;
    ZNTDemoPlayer* player = nullptr;

    ZNTDemoTelnetInput telnetInput;
    ZNTDemoOptions options;
    ZNTDemoClientTraits traits;
    std::string unhandled;
    ZNTDemoOutput output;
    /// Bytes that were written while the start of compression must travel alone.
    std::string held;
    std::unique_ptr<RunLoopTimer> compressionDelay;

    bool isHangingUp = false;
    bool isOver = false;
    bool isShutDown = false;
    int floodLine = 0, floodLines = 0;
    std::unique_ptr<RunLoopTimer> lastWait;
    std::unique_ptr<RunLoopWatch> watch;
};
