#pragma once

#include "ZNTCompass.h"

#include <QActionGroup>
#include <QList>
#include <array>

class QAction;
class QMainWindow;
class QMenu;

/// The menus of the main window. An action bears its member's name as its object name, a direction "goNorth"
/// and a line "line1"; what it does is wired elsewhere. Every action has a mnemonic of its own in its menu,
/// and the common ones a shortcut.
class ZNTMainMenu
{
public:
    static constexpr std::size_t numberedLines = 9;

    explicit ZNTMainMenu(QMainWindow& window);

    QAction *connectToServer, *stopConnecting, *showZNTMudListController, *resendLastCommand, *newApp,
        *showPreferencesView, *quit;
    QAction *copy, *selectAll, *find, *findNext, *findPrevious, *clearScreen;
    std::array<QAction*, numberOfDirections> go;
    QAction *keypadWalks, *stopWalking;
    QAction *invokeMacro, *addMacro, *editMacro, *removeMacro, *createNewMacroGroup, *deleteMacroGroup,
        *listMacros;
    QAction *startOrPauseRecording, *doneRecording;
    QAction *speechOnOff, *speechInterruptOnOff, *replayLastText, *stopSpeaking, *stopAllSounds,
        *previousLine, *nextLine, *sayStatus;
    std::array<QAction*, numberedLines> lineFromEnd;
    QAction *changeFont, *larger, *smaller, *normalSize, *controlsLarger, *controlsSmaller;
    QAction *showConnectionRow, *showSidePanel, *fullScreen;
    QAction *focusCommandLine, *nextPart, *previousPart, *jumpToEnd;
    QAction *systemColours, *lightColours, *darkColours, *highContrastColours, *readableColours;
    QAction *keyboardMap, *firstSteps, *playDemo, *about;

    /// The menus in order, for whoever lists what they hold.
    [[nodiscard]] const QList<QMenu*>& menus() const { return all; }

private:
    QMenu* addMenu(const char* title);
    QAction* add(const char* objectName, const char* title, const QList<QKeySequence>& keys = {});
    QAction* addSwitch(const char* objectName, const char* title, const QList<QKeySequence>& keys = {});
    void makeGameMenu();
    void makeEditMenu();
    void makeGoMenu();
    void makeMacrosMenu();
    void makeRecorderMenu();
    void makeSpeechMenu();
    void makeViewMenu();
    void makeColoursMenu();
    void makeHelpMenu();

    QMainWindow& window;
    QMenu* current = nullptr;
    QList<QMenu*> all;
    QActionGroup colours;
};
