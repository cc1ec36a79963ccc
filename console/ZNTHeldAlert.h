#pragma once

#include "ZNTAlert.h"

#include <functional>
#include <string>
#include <utility>
#include <vector>

/// Alerts that can wait for what the player is to read first. While one waits, later ones wait behind it.
class ZNTHeldAlert final : public ZNTAlert
{
public:
    /// `shown`, which outlives this, shows the alerts in the end. `mustWait` decides for each.
    /// `beginsToWait` is called when the first of them waits; its owner calls `showWaiting` some time later.
    ZNTHeldAlert(ZNTAlert& shown, std::function<bool()> mustWait, std::function<void()> beginsToWait)
        : shown(shown),
          mustWait(std::move(mustWait)),
          beginsToWait(std::move(beginsToWait))
    {
    }

    void showMessage(std::u16string_view title, std::u16string_view text) override
    {
        if (!isHeld && waiting.empty() && !mustWait()) {
            shown.showMessage(title, text);
            return;
        }
        waiting.emplace_back(title, text);
        if (!isHeld && waiting.size() == 1)
            beginsToWait();
    }
    void askForConfirmation(std::u16string_view title, std::u16string_view text,
                            std::function<void(bool)> answered) override
    {
        shown.askForConfirmation(title, text, std::move(answered));
    }

    [[nodiscard]] bool isWaiting() const { return !waiting.empty(); }
    void showWaiting()
    {
        for (const auto& [title, text] : std::exchange(waiting, {}))
            shown.showMessage(title, text);
    }

    /// Holds back what comes now until `release`, which shows it, or drops it if it turned out to be untrue.
    void hold()
    {
        isHeld = true;
        firstHeld = waiting.size();
    }
    void release(bool isShown)
    {
        isHeld = false;
        if (!isShown)
            waiting.resize(firstHeld);
        if (firstHeld == 0) // else earlier ones wait for something else
            showWaiting();
    }

private:
    ZNTAlert& shown;
    std::function<bool()> mustWait;
    std::function<void()> beginsToWait;
    std::vector<std::pair<std::u16string, std::u16string>> waiting;
    std::size_t firstHeld = 0;
    bool isHeld = false;
};
