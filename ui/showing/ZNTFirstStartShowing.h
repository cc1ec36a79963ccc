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
    /// The caller owns what it passes; all of it outlives this. `remember` gets each choice of whether
    /// settings are remembered.
    ZNTFirstStartShowing(ZNTMainWindow& window, ZNTMainMenu& menu, const ZNTSettingsKeeper& settings,
                         bool isFirstStart, std::function<void(bool on)> remember);

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
    const ZNTSettingsKeeper& settings;
    bool isFirstStart;
    bool isOffered = false;
    QObject connections; ///< the window lives longer than this; they end with it
};
