#include "ZNTConsoleScript.h"

#include "ZNTConsoleInput.h"
#include "ZNTServerConnectController.h"

#include <utility>

ZNTConsoleScript::ZNTConsoleScript(RunLoop& runLoop, ZNTConsoleInput& input,
                                   const ZNTServerConnectController& session, Pace pace, Handlers handlers)
    : runLoop(runLoop),
      input(input),
      session(session),
      pace(pace),
      handlers(std::move(handlers))
{
}

bool ZNTConsoleScript::mustWait() const
{
    return isHeld || session.state() == ZNTSessionState::Connecting ||
           (isAnswerAwaited && session.isConnected());
}

void ZNTConsoleScript::add(const std::string& utf8)
{
    waitingLines.push_back(utf8);
    sendWaitingLines();
}

void ZNTConsoleScript::sendWaitingLines()
{
    while (!waitingLines.empty() && !mustWait() && !hasStopped) {
        const auto line = std::move(waitingLines.front());
        waitingLines.pop_front();
        handlers.carryOut(line);
    }
    input.setPaused(waitingLines.size() >= mostWaitingLines);
}

void ZNTConsoleScript::reportIfDone()
{
    const bool isOnItsWay = session.isConnected() && session.isWalking();
    if (hasInputEnded && waitingLines.empty() && !mustWait() && !isOnItsWay)
        handlers.done();
}

void ZNTConsoleScript::inputEnded()
{
    hasInputEnded = true;
    // With a connection the last answer is awaited first.
    if (!isHeld && session.state() == ZNTSessionState::Idle)
        reportIfDone();
}

void ZNTConsoleScript::lineSent()
{
    isAnswerAwaited = pace == Pace::AnswerByAnswer;
    lastSent = runLoop.now();
}

void ZNTConsoleScript::connected()
{
    lineSent(); // a script reads the greeting first
    runLoop.post([this] { sendWaitingLines(); });
}

void ZNTConsoleScript::disconnected()
{
    isAnswerAwaited = false;
    runLoop.post([this] {
        sendWaitingLines();
        reportIfDone();
    });
}

/// A line that left before the prompt would answer the wrong question, and a password would be shown, since
/// the game hides it only with its prompt.
void ZNTConsoleScript::textShown(bool mayGoOn)
{
    if (mayGoOn && runLoop.now() - lastSent < secondsOfAnswer)
        return;
    isAnswerAwaited = false;
    runLoop.post([this] { sendWaitingLines(); });
}

void ZNTConsoleScript::silencePassed()
{
    if (runLoop.now() - lastSent < secondsOfSilence)
        return; // the silence began before the last line was sent
    isAnswerAwaited = false;
    sendWaitingLines();
    reportIfDone();
}
