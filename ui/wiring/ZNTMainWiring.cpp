#include "ZNTMainWiring.h"

#include "ZNTActionWiring.h"
#include "ZNTAnnouncement.h"
#include "ZNTAppearance.h"
#include "ZNTChannelHistorySheet.h"
#include "ZNTCommandLine.h"
#include "ZNTCompass.h"
#include "ZNTConnectionWiring.h"
#include "ZNTControlHelp.h"
#include "ZNTDatabaseHelper.h"
#include "ZNTFindBar.h"
#include "ZNTFocusFirst.h"
#include "ZNTFontChoice.h"
#include "ZNTHelpWindow.h"
#include "ZNTKeypadKeys.h"
#include "ZNTMacroWiring.h"
#include "ZNTOutputView.h"
#include "ZNTQtText.h"
#include "ZNTQuitAnywhere.h"
#include "ZNTScreenReader.h"
#include "ZNTSoundFactory.h"
#include "ZNTSpeechSynth.h"
#include "ZNTStoredMacros.h"
#include "ZNTTypingHelp.h"
#include "ZNTWebAddressDialogs.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QTimer>
#include <utility>

using namespace znt;

ZNTMainWiring::ZNTMainWiring(ZNTMainWindow& window, ZNTMainMenu& menu, ZNTMudAppController& controller,
                             ZNTConnectionWiring& connection, ZNTAppearance& appearance)
    : window(window),
      menu(menu),
      controller(controller),
      connection(connection),
      session(controller.serverConnectController()),
      appearance(appearance),
      status(*window.statusText, controller),
      newsAgain(controller.services().screenReader),
      connectionShowing(window, menu, newsAgain),
      firstStart(window, menu, controller.settings(), controller.services().database.isFirstStart(),
                 [&controller](bool on) { controller.setRemembering(on); }),
      silenceKeys(session),
      announcer(
          controller.services().screenReader, session.zntSpeechSynth(),
          {.isSpeechOn = [this] { return session.speechOnOffBindingState() == 1; },
           .isOwnVoiceWanted = [&controller] { return controller.settings().settings().speakAnnouncements; }})
{
    wireGame();
    wireDirections();
    wireRecorder();
    wireCommandLine();
    wireTypingHelp();
    wireEditing();
    wirePlaces();
    macros = std::make_unique<ZNTMacroWiring>(window, menu, controller);
    wireSpeech();
    wireChannels();
    wireReview();
    wireView();
    wireSidePanel();
    wireColours();
    wireHelp();
    explainControls(window);
    controller.whenSessionChanges = [this](ZNTSessionChange what) { sessionChanged(what); };
    controller.whenSettingsChange = [this] { showSettings(); };
    controller.whenNoticed = [this](const ZNTSessionNotice& notice) { showNotice(notice); };
    controller.whenSilencePassed = [this] { sayTyping(); };
    connection.whenStateChanges = [this] { sessionChanged(ZNTSessionChange::State); };
}

ZNTMainWiring::~ZNTMainWiring()
{
    controller.whenSessionChanges = nullptr;
    controller.whenSettingsChange = nullptr;
    controller.whenNoticed = nullptr;
    controller.whenSilencePassed = nullptr;
    connection.whenStateChanges = nullptr;
    window.whenSidePanelMoves = nullptr;
}

// From the player to the session

void ZNTMainWiring::wireGame()
{
    joinButton(window.resendLastCommand, menu["resendLastCommand"]);
    whenTriggered(menu["resendLastCommand"], [this] {
        session.resendLastCommand();
        if (!session.isConnected())
            sayDone(u"");
    });
    whenToggled(menu["standardTelnet"], [this](bool on) {
        if (controller.settings().settings().standardTelnet != on) // the switch follows the settings
            controller.chooseSetting(znt::standardTelnet, on ? "on" : "off");
    });
    whenTriggered(menu["showPreferencesView"], [this] { controller.showPreferencesView(); });
    whenTriggered(menu["newApp"], [this] { controller.newApp(); });
    whenTriggered(menu["quit"], [this] { window.close(); });
    quitAnywhere = std::make_unique<ZNTQuitAnywhere>(window, menu["quit"]->shortcut());
}

void ZNTMainWiring::wireDirections()
{
    for (const ZNTDirectionRow& way : ZNTDirections) {
        QAction* action = menu.directions()[static_cast<std::size_t>(way.direction)];
        joinButton(window.compass->button(way.direction), action);
        whenTriggered(action, [this, &way] { session.sendToServer(way.direction); });
    }
    keypadKeys = std::make_unique<ZNTKeypadKeys>(window, menu.directions());
    whenToggled(menu["keypadWalks"], [this](bool walks) { setKeypadWalks(walks); });
    whenTriggered(menu["stopWalking"], [this] {
        const bool hasWalked = session.isWalking();
        session.stopAllThatRuns(); // a recording's end is announced by showWalking
        if (hasWalked)
            say(u"Walk stopped");
    });
}

void ZNTMainWiring::setKeypadWalks(bool walks)
{
    for (const ZNTDirectionRow& way : ZNTDirections) {
        QAction* action = menu.directions()[static_cast<std::size_t>(way.direction)];
        const auto keypad = QKeySequence::fromString(latinText(way.keypadKey), QKeySequence::PortableText);
        QList<QKeySequence> keys = action->shortcuts();
        keys.removeAll(keypad);
        if (walks)
            keys.prepend(keypad);
        action->setShortcuts(keys);
    }
}

void ZNTMainWiring::wireRecorder()
{
    whenTriggered(menu["startOrPauseRecording"], [this] {
        session.startOrPauseRecording();
        sayDone(status.facts().isRecording ? u"Recording" : u"Recording paused");
    });
    whenTriggered(menu["doneRecording"], [this] { session.doneRecording(); });
    whenTriggered(menu["keepRecording"], [this] { controller.keepRecording(); });
    whenTriggered(menu["keptRecordings"], [this] { controller.showKeptRecordings(); });
}

void ZNTMainWiring::wireCommandLine()
{
    const auto press = [this](ZNTCommandLineKey key) { session.controlTextViewDoCommandBySelector(key); };
    ZNTCommandLine* line = window.textToServer;
    // A reader says what an arrow changes. If it changes nothing, it is told what stands in the line.
    const auto recall = [line, press](ZNTCommandLineKey key) {
        const QString before = line->text();
        const int caret = line->cursorPosition();
        press(key);
        if (line->text() == before && line->cursorPosition() == caret &&
            line->echoMode() == QLineEdit::Normal)
            announce(ZNTAnnouncement::Line, {before.isEmpty() ? QStringLiteral("Empty") : before});
    };
    ZNTOutputView* output = window.textFromServer;
    line->whenDisabledWithFocus = [this, output] {
        // At a session's end players look for its last lines. A reader says the line with the caret; one that
        // was found before would be taken for news.
        if (controller.services().screenReader.isRunning()) {
            const ZNTQuietCaret untilItHasTheFocus;
            output->select(output->store().end(), output->store().end());
        }
        output->setFocus(Qt::OtherFocusReason);
    };
    line->whenReturnPressed = [press] { press(ZNTCommandLineKey::InsertNewline); };
    line->whenUpPressed = [recall] { recall(ZNTCommandLineKey::MoveUp); };
    line->whenDownPressed = [recall] { recall(ZNTCommandLineKey::MoveDown); };
    line->whenPaged = [output](int direction) { direction < 0 ? output->pageUp() : output->pageDown(); };
    QObject::connect(output, &ZNTOutputView::keyForCommandLine, line, [line](QKeyEvent* event) {
        if (!line->isEnabled())
            return;
        line->setFocus(Qt::OtherFocusReason);
        line->deselect();
        line->end(false);
        QKeyEvent again(event->type(), event->key(), event->modifiers(), event->text());
        QApplication::sendEvent(line, &again);
    });
}

void ZNTMainWiring::wireTypingHelp()
{
    typingHelp =
        std::make_unique<ZNTTypingHelp>(window, *window.textToServer, *window.textFromServer, [this] {
            return ZNTStoredMacros(controller.services().database).getAllMacroNames();
        });
    whenTriggered(menu["sentLines"], [this] { typingHelp->showSentLines(); });
    whenTriggered(menu["completeWord"], [this] { typingHelp->completeWord(); });
}

void ZNTMainWiring::wireEditing()
{
    ZNTOutputView* output = window.textFromServer;
    whenTriggered(menu["copy"], [output] { output->copy(); });
    whenTriggered(menu["selectAll"], [output] { output->selectAll(); });
    whenTriggered(menu["clearScreen"], [this] { session.clearScreen(); });
    whenTriggered(menu["find"], [this] { window.findBar->open(); });
    whenTriggered(menu["findNext"], [this] { window.findBar->findNext(); });
    whenTriggered(menu["findPrevious"], [this] { window.findBar->findPrevious(); });
}

/// What stands at a place in the output.
void ZNTMainWiring::wirePlaces()
{
    ZNTOutputView* output = window.textFromServer;
    webAddresses = std::make_unique<ZNTWebAddressDialogs>(window, *output);
    whenTriggered(menu["openWebAddress"], [this] { webAddresses->showList(); });
    QObject::connect(output, &ZNTOutputView::webAddressClicked, menu["openWebAddress"],
                     [this](const QString& address) { webAddresses->ask(address); });
    whenTriggered(menu["sayLineTime"], [this, output] {
        const auto words = output->timeOfLineInWords();
        session.zntSpeechSynth().speakAtOnce(words.isEmpty() ? u"No line yet" : textOfQt(words));
        output->showTimeOfLine();
    });
}

void ZNTMainWiring::wireView()
{
    ZNTOutputView* output = window.textFromServer;
    whenTriggered(menu["larger"], [output] { output->zoomIn(); });
    whenTriggered(menu["smaller"], [output] { output->zoomOut(); });
    whenTriggered(menu["normalSize"], [output] { output->resetZoom(); });
    // A player who needs the game's text large needs the typed text large, too.
    window.textToServer->setFont(output->shownFont());
    QObject::connect(output, &ZNTOutputView::shownFontChanged, window.textToServer, &QLineEdit::setFont);
    const auto noteSize = [this, output] { session.setViewSize(output->columns(), output->visibleRows()); };
    QObject::connect(output, &ZNTOutputView::gridChanged, output, noteSize);
    noteSize();
    whenTriggered(menu["changeFont"], [this, output] { chooseFont(window, *output, session); });
    whenTriggered(menu["controlsLarger"], [] { zoomControls(1); });
    whenTriggered(menu["controlsSmaller"], [] { zoomControls(-1); });
    whenToggled(menu["showConnectionRow"], [this](bool shown) {
        window.connectionRow->setVisible(shown);
        showTime();
    });
    whenToggled(menu["showFieldsWhilePlaying"], [this](bool) { showTime(); });
    whenToggled(menu["fullScreen"], [this](bool full) {
        window.setWindowState(window.windowState().setFlag(Qt::WindowFullScreen, full));
    });
    whenTriggered(menu["focusCommandLine"], [this] {
        const bool isThere = window.textToServer->hasFocus();
        window.textToServer->setFocus(Qt::ShortcutFocusReason);
        // The line takes no focus then, and the key would seem to do nothing.
        if (!session.isConnected())
            sayDone(u"");
        else if (isThere) // a reader says only a focus that moves
            say(u"Command line");
    });
    whenTriggered(menu["jumpToEnd"], [output] { output->jumpToEnd(); });
    whenTriggered(menu["nextPart"], [this] { window.focusNextPart(1); });
    whenTriggered(menu["previousPart"], [this] { window.focusNextPart(-1); });
    whenTriggered(menu["openMenuBar"], [this] {
        QMenu* first = menu.menus().constFirst();
        window.menuBar()->setActiveAction(first->menuAction());
        first->setActiveAction(first->actions().constFirst());
    });
}

void ZNTMainWiring::wireSidePanel()
{
    QAction* shows = menu["showSidePanel"];
    foldedPanelWords =
        textOfQt(shows->shortcut().toString(QKeySequence::NativeText)) + u" shows directions and macros.";
    shows->setChecked(window.isSidePanelShown());
    whenToggled(shows, [this](bool shown) { window.chooseSidePanel(shown); });
    window.whenSidePanelMoves = [this, shows](bool shown) {
        if (shown)
            status.endNotice({ZNTSessionNotice::Kind::Fact, foldedPanelWords});
        else if (shows->isChecked()) // the player's own choice has changed it before
            explainFoldedPanel();
        shows->setChecked(shown);
    };
    // In a small window it is folded from the start, and does not move.
    QTimer::singleShot(0, shows, [this] {
        if (!window.isSidePanelShown())
            explainFoldedPanel();
    });
}

void ZNTMainWiring::explainFoldedPanel()
{
    if (!std::exchange(hasExplainedFolding, true))
        status.showNotice({ZNTSessionNotice::Kind::Fact, foldedPanelWords});
}

void ZNTMainWiring::wireColours()
{
    using Colours = ZNTAppearance::Colours;
    const auto use = [this](ZNTActionName name, Colours colours) {
        whenTriggered(menu[name], [this, colours] { appearance.use(colours); });
    };
    use("systemColours", Colours::System);
    use("lightColours", Colours::Light);
    use("darkColours", Colours::Dark);
    use("highContrastColours", Colours::HighContrast);
    whenToggled(menu["readableColours"], [this](bool on) { window.textFromServer->setReadableColours(on); });
}

void ZNTMainWiring::wireHelp()
{
    help = std::make_unique<ZNTHelpWindow>(
        window, menu, QString::fromStdString(controller.services().platform.places.resource("manual.html")),
        [this](const QString& address) { webAddresses->ask(address); });
    whenTriggered(menu["firstSteps"], [this] { help->showFirstSteps(); });
    whenTriggered(menu["manual"], [this] { help->showManual(); });
    whenTriggered(menu["firstHourByEar"], [this] { help->showFirstHourByEar(); });
    whenTriggered(menu["keyboardMap"], [this] { help->showKeyboardMap(); });
    whenTriggered(menu["about"], [this] { help->showAbout(); });
}
