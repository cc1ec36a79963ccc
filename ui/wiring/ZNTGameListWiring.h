#pragma once

#include "ZNTMudListHost.h"

#include <QString>
#include <memory>

class ZNTMainScreen;
class ZNTMainWindow;
class ZNTMudAppController;
class ZNTMudListSheet;
class ZNTWebAddressDialogs;

/// Joins the list of games to the rest of the window. The sheet is made when it is first asked for, and kept.
class ZNTGameListWiring final : public ZNTMudListHost
{
public:
    /// All outlive this.
    ZNTGameListWiring(ZNTMainWindow& window, ZNTMainScreen& screen, ZNTMudAppController& controller);
    ~ZNTGameListWiring() override;

    void showWindow();
    /// The sheet says that this game goes on; empty while none is played.
    void setGameBeingPlayed(const QString& name);
    /// Shows the games as they are stored now.
    void reload();

    void gamePicked() override;
    void openWebPage(QWidget& sheet, const ZNTMudList& game) override;
    void playInNewWindow(const ZNTMudList& game) override;
    [[nodiscard]] const ZNTSettingsKeeper& settings() const override;
    void chooseSettingForGame(const std::string& game, std::string_view name,
                              const std::string& text) override;

private:
    ZNTMainWindow& window;
    ZNTMainScreen& screen;
    ZNTMudAppController& controller;
    QString gameBeingPlayed;
    std::unique_ptr<ZNTMudListSheet> sheet;
    std::unique_ptr<ZNTWebAddressDialogs> webPages; ///< in front of the sheet
};
