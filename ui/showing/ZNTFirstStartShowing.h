#pragma once

#include <QObject>

class QString;
class ZNTMainMenu;
class ZNTMainWindow;
class ZNTSettingsKeeper;

/// Joins the card of the first start, and shows it: until a newcomer has played a game, and while the output
/// is empty. A newcomer is a player at the first start, or one without a game in the fields at a later start.
class ZNTFirstStartShowing
{
public:
    /// The caller owns what it passes; all of it outlives this.
    ZNTFirstStartShowing(ZNTMainWindow& window, ZNTMainMenu& menu, ZNTSettingsKeeper& settings,
                         bool isFirstStart);

    /// What stands above the buttons.
    void setWords(const QString& words);
    /// A game was played in this run, so the card does not come again.
    void notePlayed();
    /// Looks again at whether settings are remembered.
    void showSettings();
    /// To be called once, when the fields are filled as at the start.
    void begin();

private:
    void showCard();

    ZNTMainWindow& window;
    ZNTSettingsKeeper& settings;
    bool isFirstStart;
    bool isOffered = false;
    QObject connections; ///< the window lives longer than this; they end with it
};
