#include "ZNTControlHelp.h"

#include "ZNTClientActions.h"
#include "ZNTQtText.h"
#include "ZNTSettings.h"

#include <QWidget>
#include <algorithm>
#include <array>
#include <string_view>

namespace
{

/// One of the three says what the control does.
struct ControlHelpRow {
    std::string_view control; ///< its object name
    std::string_view words = {};
    std::string_view action = {};  ///< of znt::clientActions, with a sentence of help
    std::string_view setting = {}; ///< of ZNTSettingsTable
};

constexpr auto controlHelp = std::to_array<ControlHelpRow>({
    // The main window
    {"mudName",
     "The name of the game. If your list of games has it, the address and the port are filled in."},
    {"ipAddress", "The address of the game, such as mud.example.org."},
    {"port", "The port of the game, a number up to 65535."},
    {"textFromServer", "The game's text. The arrows read it; what you type goes to the command line."},
    {"findText", "The words to look for in the output. Return goes to the match before."},
    {"findPrevious", "Goes to the match before this one."},
    {"findNext", "Goes to the match after this one."},
    {"findClose", "Ends the search."},
    {"findInSaidBar", "The words to look for in what was said. Return goes back, Shift+Return forward."},
    {"textToServer", "What you type here goes to the game with Return. Up brings back the last command."},
    {"macroComboBoxGroup", "The group of macros. Type a new name and press Return, or New, to make a group."},
    {"macroTable", "The macros of the group. Return runs the selected one, Alt+1 the first one."},
    {"statusText", "The state of the connection, the recorder, speech and sounds."},
    {"firstStartRemember", "Keeps your settings for the next start, as the mark in the preferences does."},
    // The preferences
    {"tabView", "The pages of the preferences. Ctrl+Tab goes to the next one."},
    {"triggerTableView", "Your triggers. F2 edits a cell, the space bar sets a mark."},
    {"addTriggerButton", "Makes a trigger that you can change. It is not active yet."},
    {"removeTriggerButton", "Removes the selected trigger for good."},
    {"triggerTextView", "The pattern and the command of the selected trigger, to be changed here."},
    {"saveTriggerButton", "Stores the pattern and the command that stand here as the selected trigger."},
    {.control = "reloadTriggersButton", .action = "reloadTriggers"},
    {"preferencesMacroGroupComboBox",
     "The group of macros. Type a new name and press Return, or New group, to make one."},
    {"createMacroGroupButton", "Makes a group with the name that is typed above."},
    {"deleteMacroGroupButton", "Deletes the group with all of its macros."},
    {"preferencesMacroTable", "The macros of the group."},
    {"addMacroButton", "Makes a macro in the group."},
    {"editMacroButton", "Changes the selected macro."},
    {"removeMacroButton", "Removes the selected macro for good."},
    {"encodingAscii", "Reads and writes the game's text as ASCII."},
    {"encodingEucCn", "Reads and writes the game's text as simplified Chinese."},
    {"encodingBig5", "Reads and writes the game's text as traditional Chinese."},
    {"encodingUtf8", "Reads and writes the game's text as UTF-8, in place of the choice above."},
    {.control = "speechOnOffCheckBox", .setting = "speech"},
    {.control = "speechInterruptCheckBox", .setting = "interruption"},
    {.control = "useSystemVoiceCheckBox", .setting = "system-voice"},
    {.control = "useTimerCheckBox", .setting = "pacing"},
    {.control = "speechRate", .setting = "rate"},
    {.control = "replayButton", .action = "replayLastText"},
    {"stopSpeakingButton", "Stops what is being spoken."},
    {.control = "_mspCheckBox", .setting = "sounds"},
    {.control = "_mccpCheckBox", .setting = "compression"},
    {.control = "masterVolume", .action = "volume"},
    {.control = "muteCheckBox", .action = "mute"},
    {"rememberBox",
     "Keeps the settings for the next start, and the places, sizes and colours of the windows."},
    {"closeButton", "Closes this window. Your choices are in use already."},
    // The sheets
    {"filterField", "Shows only the games that match each word. The down arrow goes to them."},
    {"tableView", "The games. Return uses one, F2 edits a cell, the space bar sets a mark."},
    {"addButton", "Adds a row for a game of yours."},
    {"editButton", "Edits the selected cell."},
    {"deleteButton", "Hides the selected game. It can be restored."},
    {"restoreButton", "Shows the hidden games again."},
    {"gameSettingsButton", "Chooses encoding, telnet, compression and sounds for the selected game."},
    {"webPageButton", "Opens the page of the selected game in the browser, after a question."},
    {"newWindowButton", "Plays the selected game in a further window of Zantor."},
    {"connectButton", "Fills the connection fields with the selected game."},
    {"closeGamesButton", "Closes this window. What you changed counts already."},
    {"closeSettingsButton", "Closes this window. What you chose counts already."},
    {"channel", "Whose lines are listed: those of one channel, or of all."},
    {"linesTable", "The lines, the newest last."},
    {"takeButton", "Copies the selected line into the command line."},
    {"macroNameTF", "The name of the macro. Type ~ and the name on the command line to run it."},
    {"commandText",
     "What the macro sends, line by line. %1, %2 and so on stand for words that follow its name."},
    {"macroKeyField",
     "Takes the next key that you press: it will run the macro. Delete empties it, Tab leaves it."},
    {"clearMacroKeyButton", "Takes the key away from the macro."},
    {"doneButton", "Stores the macro and closes this window."},
    {"cancelButton", "Closes this window and changes nothing."},
    {"_theTableView", "The recorded commands. F2 edits one."},
    {"_addButton", "Adds an empty command at the end."},
    {"_deleteButton", "Removes the selected command."},
    {"_clearList", "Removes all commands."},
    {"_aliasName", "The name under which \"Keep this recording\" keeps the commands."},
    {"_secondsBetweenSendingCommands", "How many seconds pass between two commands."},
    {"keepButton", "Keeps a copy of the commands under the name, for Kept recordings."},
    {"_saveButton", "Writes the commands to the log and empties the list. Nothing is kept."},
    {"_cancelButton", "Closes this window. The recording stays."},
    {"recordingsTable", "The recordings that are kept. F2 edits the name or the seconds."},
    {"runRecordingButton", "Sends the commands of the selected recording once."},
    {"runRecordingAgainButton", "Sends the commands of the selected recording again and again."},
    {.control = "stopRecordingButton", .action = "stopWalking"},
    {"renameRecordingButton", "Edits the name of the selected recording."},
    {"removeRecordingButton", "Removes the selected recording for good, after a question."},
    {"commandsTable", "The commands of the selected recording. F2 edits one."},
    {"addCommandButton", "Adds a command at the end, which you can change."},
    {"deleteCommandButton", "Removes the selected command."},
    {"closeKeptButton", "Closes this window. A recording that runs goes on."},
});

QString sentenceOf(std::string_view utf8)
{
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

QString sentenceOfSetting(std::string_view name)
{
    const ZNTSettingRow* row = znt::settingNamed(name);
    return row ? sentenceOf(row->sentence) : QString();
}

QString helpFor(std::string_view control)
{
    const auto* row = std::ranges::find(controlHelp, control, &ControlHelpRow::control);
    if (row == controlHelp.end()) // the controls that are made from the settings bear their names
        return sentenceOfSetting(control);
    if (!row->setting.empty())
        return sentenceOfSetting(row->setting);
    const auto* action = std::ranges::find(znt::clientActions, row->action, &ZNTClientAction::name);
    return action == znt::clientActions.end() ? sentenceOf(row->words) : znt::qtText(action->help);
}

} // namespace

void znt::explainControls(QWidget& window)
{
    for (auto* control : window.findChildren<QWidget*>()) {
        if (!control->whatsThis().isEmpty())
            continue;
        QString words = helpFor(control->objectName().toStdString());
        if (control->focusPolicy() != Qt::NoFocus) // a field without a name is a part of what has one
            for (const QWidget* whole = control; words.isEmpty() && whole; whole = whole->parentWidget())
                words = helpFor(whole->objectName().toStdString());
        control->setWhatsThis(words);
    }
}
