#pragma once

#include "ZNTCommandInterpreter.h"
#include "ZNTMSPProcessor.h"
#include "ZNTMacroSource.h"
#include "ZNTOutgoing.h"
#include "ZNTServerConnectController.h"
#include "ZNTSessionSpeech.h"
#include "ZNTSpeedWalking.h"
#include "ZNTTriggerActions.h"

// What acts on the session without the player: each through its own small interface. For the sources of the
// session controller only.

/// What a prefixed line sets going.
class ZNTServerConnectController::Commands final : public ZNTCommandActions
{
public:
    explicit Commands(ZNTServerConnectController& session) : session(session) {}

    void speedwalk(const std::shared_ptr<const ZNTSpeedWalking::Route>& route) override
    {
        session._zntSpeedwalking->speedwalk(route);
    }
    void stopSpeedwalk() override { session._zntSpeedwalking->stop(); }
    std::vector<std::u16string> getAllMacroNames() override
    {
        return session.services.macros.getAllMacroNames();
    }
    std::optional<std::u16string> getMacroByName(std::u16string_view name) override
    {
        return session.services.macros.textOfMacroNamed(name);
    }
    void insertTextIntoTheWindow(std::u16string_view text) override { session.insertTextIntoTheWindow(text); }

private:
    ZNTServerConnectController& session;
};

/// Sends the steps of speed walks, and the commands of a recording that runs.
class ZNTServerConnectController::Walks final : public ZNTLineSender
{
public:
    explicit Walks(ZNTServerConnectController& session) : session(session) {}

    void sendMessageToServer(std::u16string_view line, bool ignoreSpecials) override
    {
        const ZNTSessionSpeech::AutomaticLines automatic(*session.speech);
        session.sendMessageToServer(line, ignoreSpecials);
    }
    [[nodiscard]] bool hasRoom() const override { return session.hasRoomForAnswers(); }

private:
    ZNTServerConnectController& session;
};

/// What a trigger does.
class ZNTServerConnectController::Answers final : public ZNTTriggerActions
{
public:
    explicit Answers(ZNTServerConnectController& session) : session(session) {}

    void sendCommand(std::u16string_view command) override
    {
        const ZNTSessionSpeech::AutomaticLines automatic(*session.speech);
        session.chunk.countAnswer();
        session.sendMessageToServer(command, /*ignoreSpecials=*/false);
    }
    void playTriggerSound(std::u16string_view fileName) override
    {
        session._soundProcessor->playTriggerSound(fileName);
    }
    bool hasTimeForMore() override
    {
        return session.chunk.hasTimeForMore() && !session.outgoing->isGatheredEnough();
    }

private:
    ZNTServerConnectController& session;
};
