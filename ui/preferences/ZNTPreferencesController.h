#pragma once

#include "ZNTEncodingTab.h"
#include "ZNTMacrosTab.h"
#include "ZNTPreferencesHost.h"
#include "ZNTQtElements.h"
#include "ZNTSessionChange.h"
#include "ZNTSettingControls.h"
#include "ZNTSoundTab.h"
#include "ZNTSpeechTab.h"
#include "ZNTTriggersTab.h"

#include <QRect>
#include <memory>

class QDialog;

/// The preferences window: five tabs whose controls act at once on the running session, which keeps the
/// values. One window, made when first asked for and reused. The boxes for speech and its interruption follow
/// the session; each other control keeps the state in which the player left it.
///
/// It stands beside the game: the main window can be used, and can lie upon it. Closed and opened again, it
/// comes back where it was.
class ZNTPreferencesController
{
public:
    /// A child of `window`; all else outlives this.
    ZNTPreferencesController(QWidget& window, ZNTPreferencesHost& mudAppController);
    ~ZNTPreferencesController();

    /// Selects the triggers tab and brings the window to the front.
    void showWindow();
    /// Looks again at that kind of thing: the speech boxes follow the session, and the words beside encoding
    /// and protocols say what is in force. Those controls themselves stay as they were left.
    void sessionChanged(ZNTSessionChange what);
    /// Sets the controls of the settings to what is in force, for a game that has settings of its own.
    void showSettings();
    /// The same for the controls that are made from the table alone.
    /// Shows whether settings are remembered.
    void showRemembering();
    void showMadeControls() { madeControls.show(); }
    /// Adds triggers that an import has stored to the table.
    void showNewTriggers(const std::vector<ZNTTrigger>& newTriggers)
    {
        triggers.showNewTriggers(newTriggers);
    }

    // Kept as part of the interface: what the controls do, each by an operation of its own.
    void mudClientCompressionProtocolOnOff() { sound.mudClientCompressionProtocolOnOff(); }
    void mudSoundProtocolOnOff() { sound.mudSoundProtocolOnOff(); }
    void textToSpeechOnAndOff() { speech.textToSpeechOnAndOff(); }
    void encodingChanged() { encoding.encodingChanged(); }
    void reloadTriggers() { triggers.reloadTriggers(); }
    void showZNTAddMacroViewController() { mudAppController.showZNTAddMacroViewController(); }
    void showZNTEditMacroViewController() { mudAppController.showZNTEditMacroViewController(); }
    // The same for each tab. The window calls the first.
    void selectTriggerTab() { select(ZNTSettingTab::Triggers); }
    void selectMacroTab() { select(ZNTSettingTab::Macros); }
    void selectEncodingTab() { select(ZNTSettingTab::Encoding); }
    void selectSpeechTab() { select(ZNTSettingTab::Speech); }
    void selectProtocolTab() { select(ZNTSettingTab::Protocols); }

private:
    void select(ZNTSettingTab tab) { tabView.selectTab(static_cast<int>(tab)); }
    void finishForm();
    void drawEndOfPage();
    void standBeside(QWidget& window);
    void wireWindow(QWidget& window);
    void takeFont();
    void refresh();
    void announceTab();

    QObject life; ///< the dialog may be hidden after this has gone
    QDialog* dialog;
    std::unique_ptr<Ui::PreferencesView> layout;
    ZNTPreferencesHost& mudAppController;
    ZNTQtTabView tabView;
    ZNTTriggersTab triggers;
    ZNTMacrosTab macros;
    ZNTEncodingTab encoding;
    ZNTSpeechTab speech;
    ZNTSoundTab sound;
    ZNTSettingControls madeControls;
    QRect place; ///< where it was closed; empty before that
};
