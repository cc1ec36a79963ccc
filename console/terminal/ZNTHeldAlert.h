#pragma once

#include "RunLoop.h"
#include "ZNTAlert.h"

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

/// Alerts that wait until the player can read what they are about: the game's last words, which the session
/// holds back until half a second of silence. While one alert waits, later ones wait behind it.
class ZNTHeldAlert final : public ZNTAlert
{
public:
    /// `shown` shows the alerts in the end. `mustWait` is asked at each alert, and again after each wait of
    /// `secondsOfWait`. Both objects outlive this.
    ZNTHeldAlert(RunLoop& runLoop, ZNTAlert& shown, double secondsOfWait, std::function<bool()> mustWait)
        : runLoop(runLoop),
          shown(shown),
          secondsOfWait(secondsOfWait),
          mustWait(std::move(mustWait))
    {
    }

    void showMessage(std::u16string_view title, std::u16string_view text) override;
    void askForConfirmation(std::u16string_view title, std::u16string_view text,
                            std::function<void(bool)> answered) override;
    /// Shows now what waits.
    void showWaiting();

private:
    void startToWait();

    RunLoop& runLoop;
    ZNTAlert& shown;
    double secondsOfWait;
    std::function<bool()> mustWait;
    std::vector<std::pair<std::u16string, std::u16string>> waiting;
    std::unique_ptr<RunLoopTimer> timer;
};
