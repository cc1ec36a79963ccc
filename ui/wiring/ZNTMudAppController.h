#pragma once

#include "ZNTKeptRecordings.h"
#include "ZNTMacroGroupDropDownController.h"
#include "ZNTMacroShortcuts.h"
#include "ZNTMainScreen.h"
#include "ZNTMudMacroTableViewController.h"
#include "ZNTPreferencesHost.h"
#include "ZNTServerConnectController.h"
#include "ZNTSettingsKeeper.h"
#include "ZNTWindowServices.h"

#include <QDateTime>
#include <memory>
#include <optional>
#include <vector>

class ZNTAddMacroSheet;
class ZNTCommandRecorderSheet;
class ZNTEditMacroSheet;
class ZNTGameListWiring;
class ZNTKeptRecordingsSheet;
class ZNTPreferencesController;
struct ZNTTrigger;

/// The main window's controller: it holds the session, the macro group selector and the macro list, and opens
/// the sheets and the preferences, which it makes when they are first asked for and keeps.
class ZNTMudAppController final : public ZNTPreferencesHost
{
public:
    ZNTMudAppController(ZNTMainWindow& window, const ZNTWindowServices& services);
    ~ZNTMudAppController() override;

    /// To be called once, when everything is wired.
    void awakeFromNib();

    void showZNTMudListController();
    void showZNTAddMacroViewController() override;
    void showZNTEditMacroViewController() override;
    void showPreferencesView();
    /// Opens the recorder's sheet, to keep what was recorded under a name.
    void keepRecording();
    void showKeptRecordings();
    /// Shows what an import has stored: `newTriggers` and all stored macros, groups and games.
    void showImported(const std::vector<ZNTTrigger>& newTriggers);
    /// Starts a further, independent instance of the program.
    void newApp();
    /// The same with arguments for it. If it could not be started, an alert says so.
    void startInstance(const QStringList& arguments);
    /// Kept as part of the interface: the window's and the application's end. Nothing has to be done at
    /// either.
    void windowClosing() {}
    void appTerminated() {}

    [[nodiscard]] ZNTServerConnectController& serverConnectController() override
    {
        return zntServerConnectController;
    }
    [[nodiscard]] ZNTMacroGroupDropDownController& macroGroupDropDownController() override
    {
        return zntMacroGroupDropDownController;
    }
    [[nodiscard]] ZNTMudMacroTableViewController& mudMacroTableViewController() override
    {
        return zntMudMacroTableViewController;
    }
    [[nodiscard]] MacroElements macroElements() override;
    [[nodiscard]] const ZNTWindowServices& services() const override { return windowServices; }
    /// The name under which the player connects or connected last. Later changes of the fields do not matter.
    void setPlayedGame(const QString& name) { playedGame_ = name; }
    [[nodiscard]] const QString& playedGame() const { return playedGame_; }
    [[nodiscard]] const std::optional<QDateTime>& compressedSince() const override
    {
        return compressedSince_;
    }
    void setSoundsMuted(bool muted) override;
    void setRemembering(bool on) override;
    [[nodiscard]] ZNTSettingsKeeper& settings() override { return keeper; }
    void chooseSetting(std::string_view name, const std::string& text) override;
    void chooseSettingForAllGames(std::string_view name, const std::string& text) override;
    /// As `ZNTSettingsKeeper::chooseForGame`; what is in force changes at once.
    void chooseSettingForGame(const std::string& game, std::string_view name, const std::string& text);

    /// Called when something of that kind has changed in the session or in the sounds.
    std::function<void(ZNTSessionChange what)> whenSessionChanges;
    std::function<void(const ZNTSessionNotice& notice)> whenNoticed;
    /// Called when other values of settings are in force: a choice of the player, or a game's own.
    std::function<void()> whenSettingsChange;
    /// Called with game text when the output shows it.
    std::function<void(std::u16string_view text)> whenTextShown;
    /// Called after each half second of a connection without a byte.
    std::function<void()> whenSilencePassed;
    /// Called when the list of games has filled the connection fields.
    std::function<void()> whenGamePicked;
    /// Starts a program that goes on without this one. Answers whether it runs.
    std::function<bool(const QString& program, const QStringList& arguments)> startProgram;

private:
    void changed(ZNTSessionChange what);
    void noteCompression();
    void useSettingsOfGame();
    void take(const std::function<ZNTResult<void>()>& choice);
    [[nodiscard]] QString gameBeingPlayed() const;
    void showZNTCommandRecorderView(ZNTCommandRecorderDataSource& commands);
    [[nodiscard]] ZNTCommandRecorderSheet& recorderSheet();
    /// Makes the empty list of macros say why it is empty.
    void explainNoMacros();
    void takeAddedMacro();
    /// Gives the macro the key of its sheet, or says in an alert why it cannot.
    void giveKey(std::int64_t macro, const QKeySequence& key);
    /// "Alt+1, Ctrl+K"
    [[nodiscard]] QString keysOfMacro(long row) const;
    [[nodiscard]] ZNTMacroShortcuts makeMacroShortcuts();

    ZNTMainWindow& mainWindow;
    ZNTWindowServices windowServices;
    ZNTMainScreen mainScreen;
    ZNTSettingsKeeper keeper;
    ZNTKeptRecordings kept;
    ZNTMacroGroupDropDownController zntMacroGroupDropDownController;
    ZNTMudMacroTableViewController zntMudMacroTableViewController;
    ZNTServerConnectController zntServerConnectController;
    ZNTMacroShortcuts macroShortcuts;
    std::unique_ptr<ZNTNotificationCenter::Observation> comboBoxChanged;
    QString playedGame_;
    std::optional<QDateTime> compressedSince_;
    std::int64_t editedMacro = 0; ///< whose sheet is shown; 0 for one that is not stored

    std::unique_ptr<ZNTAddMacroSheet> zntAddMacroViewController;
    std::unique_ptr<ZNTEditMacroSheet> zntEditMacroViewController;
    std::unique_ptr<ZNTGameListWiring> zntMudListController;
    std::unique_ptr<ZNTPreferencesController> preferencesController;
    std::unique_ptr<ZNTCommandRecorderSheet> _zntCommandRecorderView;
    std::unique_ptr<ZNTKeptRecordingsSheet> keptRecordingsSheet;
};
