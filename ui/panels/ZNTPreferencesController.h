#pragma once

#include "ZNTPreferencesHost.h"
#include "ZNTQtElements.h"
#include "ZNTQtTableView.h"
#include "ZNTSessionChange.h"
#include "ZNTSettingControls.h"
#include "ZNTTriggersDataSource.h"
#include "ui_PreferencesView.h"

class QDialog;

/// The preferences window: five tabs whose controls act at once on the running session, which keeps the
/// values. One window, made when first asked for and reused. The boxes for speech and its interruption follow
/// the session; each other control keeps the state in which the player left it.
///
/// The macros tab shows the main window's own selector and list, so that what is selected in one is selected
/// in the other.
class ZNTPreferencesController
{
public:
    /// A child of `window`; all else outlives this.
    ZNTPreferencesController(QWidget& window, ZNTPreferencesHost& mudAppController);

    /// Selects the triggers tab and brings the window to the front.
    void showWindow();
    /// Looks again at that kind of thing: the speech boxes follow the session, and the words beside encoding
    /// and protocols say what is in force. Those controls themselves stay as they were left.
    void sessionChanged(ZNTSessionChange what);
    /// Sets the controls of the settings to what is in force, for a game that has settings of its own.
    void showSettings();
    /// The same for the controls that are made from the table alone.
    void showMadeControls();

    void mudClientCompressionProtocolOnOff();
    void mudSoundProtocolOnOff();
    void textToSpeechOnAndOff();
    void encodingChanged();
    void reloadTriggers();
    /// Adds triggers that an import has stored to the table.
    void showNewTriggers(const std::vector<ZNTTrigger>& newTriggers);
    void showZNTAddMacroViewController();
    void showZNTEditMacroViewController();
    // Kept as part of the interface: each tab by an operation of its own. The window calls the first.
    void selectTriggerTab();
    void selectMacroTab();
    void selectEncodingTab();
    void selectSpeechTab();
    void selectProtocolTab();

private:
    void wireTriggers();
    void wireMacros();
    void wireEncoding();
    void wireSpeech();
    void wireProtocols();
    void wireSettings();
    void refresh();
    void saveTrigger();
    void announceTab();
    void showSpeech();
    void showEncoding();
    void showProtocols();

    QDialog* dialog;
    Ui::PreferencesView layout;
    ZNTPreferencesHost& mudAppController;
    ZNTServerConnectController& serverConnectController;
    ZNTQtTabView tabView;
    ZNTRowModel triggerRows;
    ZNTQtTableView triggerTableView;
    ZNTQtTextArea triggerTextView;
    ZNTTriggersDataSource triggers;
    ZNTSettingControls madeControls;
};
