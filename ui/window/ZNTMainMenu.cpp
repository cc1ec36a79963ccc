#include "ZNTMainMenu.h"

#include "ZNTWindowFit.h"

#include <QAction>
#include <QKeySequence>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>

namespace
{

QKeySequence key(Qt::Key which, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    return QKeySequence(QKeyCombination(modifiers, which));
}
QKeySequence ctrl(Qt::Key which) { return key(which, Qt::ControlModifier); }
QKeySequence ctrlShift(Qt::Key which) { return key(which, Qt::ControlModifier | Qt::ShiftModifier); }
QKeySequence alt(Qt::Key which) { return key(which, Qt::AltModifier); }
QKeySequence ctrlAlt(Qt::Key which) { return key(which, Qt::ControlModifier | Qt::AltModifier); }
QKeySequence shift(Qt::Key which) { return key(which, Qt::ShiftModifier); }

/// For keyboards without a numeric keypad: Alt with the keys that the keypad bears too, and with Shift for
/// up and down.
QKeySequence keyWithoutKeypad(ZNTDirection direction)
{
    switch (direction) {
    case ZNTDirection::NorthWest:
        return alt(Qt::Key_Home);
    case ZNTDirection::North:
        return alt(Qt::Key_Up);
    case ZNTDirection::NorthEast:
        return alt(Qt::Key_PageUp);
    case ZNTDirection::West:
        return alt(Qt::Key_Left);
    case ZNTDirection::East:
        return alt(Qt::Key_Right);
    case ZNTDirection::SouthWest:
        return alt(Qt::Key_End);
    case ZNTDirection::South:
        return alt(Qt::Key_Down);
    case ZNTDirection::SouthEast:
        return alt(Qt::Key_PageDown);
    case ZNTDirection::Up:
        return key(Qt::Key_Up, Qt::AltModifier | Qt::ShiftModifier);
    case ZNTDirection::Down:
        return key(Qt::Key_Down, Qt::AltModifier | Qt::ShiftModifier);
    }
    return {};
}

const char* menuTitle(ZNTDirection direction)
{
    switch (direction) {
    case ZNTDirection::NorthWest:
        return "No&rthwest";
    case ZNTDirection::North:
        return "&North";
    case ZNTDirection::NorthEast:
        return "Nor&theast";
    case ZNTDirection::West:
        return "&West";
    case ZNTDirection::East:
        return "&East";
    case ZNTDirection::SouthWest:
        return "S&outhwest";
    case ZNTDirection::South:
        return "&South";
    case ZNTDirection::SouthEast:
        return "So&utheast";
    case ZNTDirection::Up:
        return "U&p";
    case ZNTDirection::Down:
        return "&Down";
    }
    return "";
}

} // namespace

ZNTMainMenu::ZNTMainMenu(QMainWindow& window) : window(window), colours(&window)
{
    makeGameMenu();
    makeEditMenu();
    makeGoMenu();
    makeMacrosMenu();
    makeRecorderMenu();
    makeSpeechMenu();
    makeViewMenu();
    makeHelpMenu();
    for (QMenu* menu : window.menuBar()->findChildren<QMenu*>())
        QObject::connect(menu, &QMenu::aboutToShow, menu, [menu] { znt::shrinkFontToScreen(*menu); });
}

QMenu* ZNTMainMenu::addMenu(const char* title)
{
    current = window.menuBar()->addMenu(QString::fromLatin1(title));
    all.append(current);
    return current;
}

QAction* ZNTMainMenu::add(const char* objectName, const char* title, const QList<QKeySequence>& keys)
{
    QAction* action = current->addAction(QString::fromLatin1(title));
    action->setObjectName(QString::fromLatin1(objectName));
    action->setShortcuts(keys);
    action->setMenuRole(QAction::NoRole);
    return action;
}

QAction* ZNTMainMenu::addSwitch(const char* objectName, const char* title, const QList<QKeySequence>& keys)
{
    QAction* action = add(objectName, title, keys);
    action->setCheckable(true);
    return action;
}

void ZNTMainMenu::makeGameMenu()
{
    addMenu("&Game");
    connectToServer = add("connectToServer", "&Connect", {key(Qt::Key_F5)});
    stopConnecting = add("stopConnecting", "&Stop connecting", {shift(Qt::Key_F5)});
    showZNTMudListController = add("showZNTMudListController", "&Game list...", {ctrl(Qt::Key_G)});
    current->addSeparator();
    resendLastCommand = add("resendLastCommand", "&Resend last command", {ctrl(Qt::Key_R)});
    current->addSeparator();
    newApp = add("newApp", "&New window", {ctrlShift(Qt::Key_N)});
    showPreferencesView = add("showPreferencesView", "&Preferences...", {ctrl(Qt::Key_Comma)});
    current->addSeparator();
    quit = add("quit", "&Quit", {ctrl(Qt::Key_Q)});
}

void ZNTMainMenu::makeEditMenu()
{
    addMenu("&Edit");
    copy = add("copy", "&Copy", {QKeySequence::Copy});
    selectAll = add("selectAll", "Select &all of the output", {ctrlShift(Qt::Key_A)});
    current->addSeparator();
    find = add("find", "&Find in the output...", {QKeySequence::Find});
    findNext = add("findNext", "Find &next", {key(Qt::Key_F3)});
    findPrevious = add("findPrevious", "Find &previous", {shift(Qt::Key_F3)});
    current->addSeparator();
    clearScreen = add("clearScreen", "C&lear the output", {ctrlShift(Qt::Key_L)});
}

void ZNTMainMenu::makeGoMenu()
{
    addMenu("G&o");
    for (std::size_t index = 0; index < numberOfDirections; ++index) {
        const auto direction = static_cast<ZNTDirection>(index);
        const QByteArray objectName = "go" + namesOf(direction).name.toLatin1();
        go[index] = add(objectName.constData(), menuTitle(direction),
                        {key(namesOf(direction).keypadKey, Qt::KeypadModifier), keyWithoutKeypad(direction)});
    }
    current->addSeparator();
    stopWalking = add("stopWalking", "Stop wal&king", {ctrl(Qt::Key_Period)});
    keypadWalks = addSwitch("keypadWalks", "Numeric keypad w&alks");
    keypadWalks->setChecked(true);
}

void ZNTMainMenu::makeMacrosMenu()
{
    addMenu("&Macros");
    invokeMacro = add("invokeMacro", "&Run the selected macro", {ctrl(Qt::Key_M)});
    current->addSeparator();
    addMacro = add("addMacro", "&Add macro...", {ctrlShift(Qt::Key_M)});
    editMacro = add("editMacro", "&Edit macro...", {ctrl(Qt::Key_E)});
    removeMacro = add("removeMacro", "Re&move macro");
    current->addSeparator();
    createNewMacroGroup = add("createNewMacroGroup", "&New group");
    deleteMacroGroup = add("deleteMacroGroup", "&Delete group");
    current->addSeparator();
    listMacros = add("listMacros", "&List macro names in the output");
}

void ZNTMainMenu::makeRecorderMenu()
{
    addMenu("&Recorder");
    startOrPauseRecording = add("startOrPauseRecording", "&Start recording", {ctrlShift(Qt::Key_R)});
    doneRecording = add("doneRecording", "&Finish recording...", {ctrlShift(Qt::Key_F)});
}

void ZNTMainMenu::makeSpeechMenu()
{
    addMenu("&Speech");
    speechOnOff = addSwitch("speechOnOff", "&Speak what the game sends", {key(Qt::Key_F8)});
    speechInterruptOnOff =
        addSwitch("speechInterruptOnOff", "&Interrupt speech when I send a command", {shift(Qt::Key_F8)});
    current->addSeparator();
    replayLastText = add("replayLastText", "&Replay what came since my last command", {key(Qt::Key_F7)});
    stopSpeaking = add("stopSpeaking", "S&top speaking", {shift(Qt::Key_F7)});
    stopAllSounds = add("stopAllSounds", "Stop all s&ounds", {ctrlShift(Qt::Key_S)});
    current->addSeparator();
    previousLine = add("previousLine", "Say the &previous line", {ctrl(Qt::Key_Up)});
    nextLine = add("nextLine", "Say the &next line", {ctrl(Qt::Key_Down)});
    QMenu* speech = current;
    current = speech->addMenu(QString::fromLatin1("Say a &line"));
    for (std::size_t index = 0; index < numberedLines; ++index) {
        const int number = static_cast<int>(index) + 1;
        const QByteArray title = number == 1 ? QByteArray("The last line (&1)")
                                             : "Line &" + QByteArray::number(number) + " from the end";
        lineFromEnd[index] = add(("line" + QByteArray::number(number)).constData(), title.constData(),
                                 {ctrl(static_cast<Qt::Key>(Qt::Key_0 + number))});
    }
    current = speech;
    current->addSeparator();
    sayStatus = add("sayStatus", "Say the stat&us", {ctrl(Qt::Key_T)});
}

void ZNTMainMenu::makeViewMenu()
{
    addMenu("&View");
    larger = add("larger", "&Larger text", {ctrl(Qt::Key_Plus), ctrl(Qt::Key_Equal)});
    smaller = add("smaller", "&Smaller text", {ctrl(Qt::Key_Minus)});
    normalSize = add("normalSize", "&Usual text size", {ctrl(Qt::Key_0)});
    changeFont = add("changeFont", "&Font...", {ctrlShift(Qt::Key_T)});
    current->addSeparator();
    // With Shift instead of Alt, keyboards that have plus above the equals sign would mean larger text.
    controlsLarger =
        add("controlsLarger", "Larger &controls", {ctrlAlt(Qt::Key_Plus), ctrlAlt(Qt::Key_Equal)});
    controlsSmaller = add("controlsSmaller", "S&maller controls", {ctrlAlt(Qt::Key_Minus)});
    QMenu* view = current;
    makeColoursMenu();
    current = view;
    readableColours = addSwitch("readableColours", "Re&adable colours in the output");
    current->addSeparator();
    showConnectionRow = addSwitch("showConnectionRow", "Co&nnection fields", {shift(Qt::Key_F9)});
    showConnectionRow->setChecked(true);
    showSidePanel = addSwitch("showSidePanel", "Directions and mac&ros", {key(Qt::Key_F9)});
    showSidePanel->setChecked(true);
    fullScreen = addSwitch("fullScreen", "Full scr&een", {key(Qt::Key_F11)});
    current->addSeparator();
    focusCommandLine = add("focusCommandLine", "&Go to the command line", {ctrl(Qt::Key_L)});
    jumpToEnd = add("jumpToEnd", "Go to the en&d of the output", {ctrl(Qt::Key_End)});
    nextPart = add("nextPart", "Ne&xt part of the window", {key(Qt::Key_F6)});
    previousPart = add("previousPart", "&Previous part of the window", {shift(Qt::Key_F6)});
}

void ZNTMainMenu::makeColoursMenu()
{
    current = current->addMenu(QString::fromLatin1("C&olours"));
    systemColours = addSwitch("systemColours", "Of the &system");
    lightColours = addSwitch("lightColours", "&Light");
    darkColours = addSwitch("darkColours", "&Dark");
    highContrastColours = addSwitch("highContrastColours", "&High contrast");
    for (QAction* action : {systemColours, lightColours, darkColours, highContrastColours})
        colours.addAction(action);
    systemColours->setChecked(true);
}

void ZNTMainMenu::makeHelpMenu()
{
    addMenu("&Help");
    firstSteps = add("firstSteps", "&First steps");
    keyboardMap = add("keyboardMap", "&Keyboard map", {key(Qt::Key_F1)});
    playDemo = add("playDemo", "&Play the demo game", {ctrlShift(Qt::Key_D)});
    current->addSeparator();
    about = add("about", "&About Zantor");
}
