#pragma once

#include "ZNTSettings.h"
#include "ZNTWindowPlaces.h"

#include <QObject>
#include <QTimer>
#include <string>

class ZNTMainMenu;
class ZNTMainWindow;
class ZNTPlatformLog;
class ZNTServerConnectController;
class ZNTSettingsKeeper;

/// What the windows come back with at the next start, besides the settings: places, panels, font, sizes and
/// colours. Only while the player wants the settings remembered.
///
/// A value that the player never changed is not written, so a later version may have another default.
class ZNTKeptLooks final : public QObject
{
public:
    struct Parts {
        ZNTMainWindow& window;
        ZNTMainMenu& menu;
        ZNTServerConnectController& session;
        ZNTSettingsKeeper& keeper;
        ZNTPlatformLog& log;
    };

    /// All of `parts` outlives this. Made when the menu is joined to what it does.
    explicit ZNTKeptLooks(const Parts& parts);
    /// Writes what has changed last.
    ~ZNTKeptLooks() override;

    /// Gives the windows what an earlier run has left. Call it once, when the main window has its usual size.
    void restore();

private:
    void watchChoices();
    void noteChange();
    void save();
    [[nodiscard]] ZNTSettingValues now() const;
    void usePlaces(const ZNTSettingValues& kept);

    Parts parts;
    ZNTWindowPlaces places;
    QTimer saveTimer;
    ZNTSettingValues chosen; ///< by the player, in the menus
    ZNTSettingValues usual;  ///< what the windows have before anything is restored
    ZNTSettingValues stored; ///< that or what the file has
};
