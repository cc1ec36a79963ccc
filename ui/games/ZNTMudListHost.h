#pragma once

#include <string>
#include <string_view>

class QWidget;
class ZNTSettingsKeeper;
struct ZNTMudList;

/// What the list of games asks of the rest of the window.
class ZNTMudListHost
{
public:
    virtual ~ZNTMudListHost() = default;

    /// A game has filled the connection fields.
    virtual void gamePicked() = 0;
    /// Opens the game's page in the browser, if the player agrees. `sheet` is in front.
    virtual void openWebPage(QWidget& sheet, const ZNTMudList& game) = 0;
    /// Plays the game in a window of its own. If that cannot be, an alert says why.
    virtual void playInNewWindow(const ZNTMudList& game) = 0;

    /// For looking only.
    [[nodiscard]] virtual const ZNTSettingsKeeper& settings() const = 0;
    /// As `ZNTSettingsKeeper::chooseForGame`. It is in force at once, if that game is played.
    virtual void chooseSettingForGame(const std::string& game, std::string_view name,
                                      const std::string& text) = 0;
};
