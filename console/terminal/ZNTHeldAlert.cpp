#include "ZNTHeldAlert.h"

void ZNTHeldAlert::showMessage(std::u16string_view title, std::u16string_view text)
{
    if (waiting.empty() && !mustWait()) {
        shown.showMessage(title, text);
        return;
    }
    waiting.emplace_back(title, text);
    // The session's own wait for silence may begin in this very turn. This wait, which is as long, begins on
    // the next turn, and so ends after it.
    if (waiting.size() == 1)
        runLoop.post([this] { startToWait(); });
}

void ZNTHeldAlert::askForConfirmation(std::u16string_view title, std::u16string_view text,
                                      std::function<void(bool)> answered)
{
    shown.askForConfirmation(title, text, std::move(answered));
}

void ZNTHeldAlert::startToWait()
{
    // The session's wait begins again if triggers have a long chunk to answer first.
    timer = runLoop.startTimer(secondsOfWait, RunLoopRepeat::Once, [this] {
        if (mustWait())
            startToWait();
        else
            showWaiting();
    });
}

void ZNTHeldAlert::showWaiting()
{
    for (const auto& [title, text] : std::exchange(waiting, {}))
        shown.showMessage(title, text);
}
