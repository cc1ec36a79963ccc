#pragma once

#include "ZNTMacroGroupDropDownController.h"
#include "ZNTMainScreen.h"
#include "ZNTMudMacroTableViewController.h"
#include "ZNTServerConnectController.h"

#include <memory>

class ZNTAddMacroSheet;
class ZNTCommandRecorderSheet;
class ZNTEditMacroSheet;
class ZNTMudListSheet;
class ZNTPreferencesController;

/// What the window needs of the rest of the program, made at start-up; all of it outlives the window.
struct ZNTWindowServices {
    const ZNTPlatform& platform;
    ZNTDatabaseHelper& database;
    ZNTSoundFactory& sounds;
    ZNTSpeechEngine& speechEngine;
    ZNTScreenReader& screenReader;
};

/// The main window's controller: it holds the session, the macro group selector and the macro list, and opens
/// the sheets and the preferences, which it makes when they are first asked for and keeps.
class ZNTMudAppController
{
public:
    ZNTMudAppController(ZNTMainWindow& window, const ZNTWindowServices& services);
    ~ZNTMudAppController();

    /// To be called once, when everything is wired.
    void awakeFromNib();

    void showZNTMudListController();
    void showZNTAddMacroViewController();
    void showZNTEditMacroViewController();
    void showPreferencesView();
    /// Starts a further, independent instance of the program.
    void newApp();

    [[nodiscard]] ZNTServerConnectController& serverConnectController() { return zntServerConnectController; }
    [[nodiscard]] ZNTMacroGroupDropDownController& macroGroupDropDownController()
    {
        return zntMacroGroupDropDownController;
    }
    [[nodiscard]] ZNTMudMacroTableViewController& mudMacroTableViewController()
    {
        return zntMudMacroTableViewController;
    }
    [[nodiscard]] ZNTMainScreen& screen() { return mainScreen; }
    [[nodiscard]] const ZNTWindowServices& services() const { return windowServices; }
    /// Silences all sounds, or lets them be heard again.
    void setSoundsMuted(bool muted);

    /// Hears that something which the session or the sounds answer has changed.
    std::function<void()> whenSessionChanges;

private:
    void changed();
    void showZNTCommandRecorderView(ZNTCommandRecorderDataSource& commands);
    /// Has the list of macros say why it is empty.
    void explainNoMacros();

    ZNTMainWindow& mainWindow;
    ZNTWindowServices windowServices;
    ZNTMainScreen mainScreen;
    ZNTMacroGroupDropDownController zntMacroGroupDropDownController;
    ZNTMudMacroTableViewController zntMudMacroTableViewController;
    ZNTServerConnectController zntServerConnectController;
    std::unique_ptr<ZNTNotificationCenter::Observation> comboBoxChanged;

    std::unique_ptr<ZNTAddMacroSheet> zntAddMacroViewController;
    std::unique_ptr<ZNTEditMacroSheet> zntEditMacroViewController;
    std::unique_ptr<ZNTMudListSheet> zntMudListController;
    std::unique_ptr<ZNTPreferencesController> preferencesController;
    std::unique_ptr<ZNTCommandRecorderSheet> _zntCommandRecorderView;
};
