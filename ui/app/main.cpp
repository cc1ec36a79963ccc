#include "QtRunLoop.h"
#include "ZNTAccessibleFactories.h"
#include "ZNTApplicationWindow.h"
#include "ZNTCursorRest.h"
#include "ZNTDatabaseHelper.h"
#include "ZNTDescriptors.h"
#include "ZNTDesktopScreenReader.h"
#include "ZNTFocusFirst.h"
#include "ZNTMenuTitles.h"
#include "ZNTMixerSounds.h"
#include "ZNTQtAlert.h"
#include "ZNTSocketStream.h"
#include "ZNTSpeechDispatcher.h"
#include "ZNTStoreWaitSign.h"
#include "ZNTStyle.h"
#include "ZNTVersion.h"
#include "ZNTWindowOptions.h"

#include <QApplication>
#include <QIcon>
#include <QLabel>
#include <QTimer>
#include <chrono>
#include <cstdlib>
#include <iostream>
#include <vector>

namespace
{

constexpr std::chrono::seconds longestStart{10};

/// More than the display, both buses and the first connection need together. GLib aborts the program if it
/// gets no pipe.
constexpr int descriptorsToStartWith = 32;

void prepareApplication()
{
    QApplication::setStyle(new ZNTStyle);
    QCoreApplication::setApplicationName(QStringLiteral("Zantor"));
    QCoreApplication::setApplicationVersion(QString::fromStdString(znt::version()));
    QGuiApplication::setApplicationDisplayName(QStringLiteral("Zantor"));
    QGuiApplication::setDesktopFileName(QStringLiteral("zantor"));
    QGuiApplication::setWindowIcon(QIcon(QStringLiteral(":/zantor.png")));
}

/// Turns speech on also for a reader that was started by hand, which the desktop does not know. Only the
/// accessibility bus says that it listens, and it answers later. After this time the player's switch counts.
void speakForReaderFoundWhileStarting(ZNTDesktopScreenReader& reader, ZNTServerConnectController& session)
{
    auto* starting = new QObject(&reader);
    QTimer::singleShot(longestStart, starting, &QObject::deleteLater);
    QObject::connect(&reader, &ZNTDesktopScreenReader::runningChanged, starting, [&session](bool isRunning) {
        if (isRunning)
            session.speakForScreenReader();
    });
}

/// Announces to a reader which key sets the client up for listening, in the first start. To one that comes
/// later also which keys have the game read aloud, once: speech stays as it is. A reader needs some time
/// before it says what a program announces.
void welcomeReader(ZNTDesktopScreenReader& reader, ZNTMainWiring& wiring)
{
    constexpr std::chrono::seconds untilReaderSpeaks{3};
    if (reader.isRunning())
        QTimer::singleShot(untilReaderSpeaks, &reader, [&wiring] { wiring.offerListening(); });
    auto* watching = new QObject(&reader);
    const auto welcome = [&reader, &wiring, watching](bool isRunning) {
        if (!isRunning)
            return;
        watching->deleteLater();
        watching->disconnect();
        QTimer::singleShot(untilReaderSpeaks, &reader, [&wiring] { wiring.welcomeReader(); });
    };
    QObject::connect(&reader, &ZNTDesktopScreenReader::runningChanged, watching, welcome);
}

/// Opens the store before anything else is made, so that a wait for another program can be shown.
void openShowingTheWait(ZNTDatabaseHelper& database)
{
    ZNTStoreWaitWindow waitWindow([] { std::_Exit(EXIT_SUCCESS); }); // from the middle of an operation
    database.setWaitNotice({.waiting = [&waitWindow] { waitWindow.keepAlive(); }, .over = {}});
    database.open();
    database.setWaitNotice({});
}

} // namespace

int main(int count, char** arguments)
{
    // Answered before a display is opened, since there may be none.
    if (const char* const question = ZNTWindowOptions::question(count, arguments)) {
        const char* const questionOnly[] = {arguments[0], question};
        return std::get<int>(ZNTWindowOptions::fromArguments(2, questionOnly));
    }
    if (const auto tried = znt::tryDescriptors(descriptorsToStartWith); !tried) {
        std::cerr << "zantor: cannot run: " << tried.error().description << '\n';
        return 1;
    }
    // Qt decides once, at its start, whether screen readers can see the program.
    qputenv("QT_LINUX_ACCESSIBILITY_ALWAYS_ON", "1");
    int qtCount = ZNTWindowOptions::countForQt(count, arguments);
    std::vector<const char*> ours(arguments + qtCount, arguments + count);
    QApplication application(qtCount, arguments); // takes its own options out
    ours.insert(ours.begin(), arguments, arguments + qtCount);
    const auto parsed = ZNTWindowOptions::fromArguments(static_cast<int>(ours.size()), ours.data());
    if (const int* exitCode = std::get_if<int>(&parsed))
        return *exitCode;
    const auto& options = std::get<ZNTWindowOptions>(parsed);
    Q_INIT_RESOURCE(zantor);
    prepareApplication();
    const ZNTFocusRing focusRing;
    const ZNTFocusFirst focusFirst;
    const ZNTMenuTitles menuTitles;
    const ZNTCursorRest cursorRest;
    znt::installAccessibleFactories();

    QtRunLoop runLoop;
    ZNTSystemClock clock;
    ZNTStandardErrorLog log;
    ZNTNotificationCenter notifications;
    ZNTQtAlert alert;
    const ZNTPlatform platform{runLoop, clock, log, notifications, alert, ZNTFilePlaces::forThisProcess()};
    ZNTDatabaseHelper database(platform.places, log);
    openShowingTheWait(database);
    ZNTMixerSounds sounds(runLoop, platform.places);
    ZNTSpeechDispatcher speech(runLoop, log);
    ZNTDesktopScreenReader screenReader;

    ZNTMainWindow window;
    alert.setMainWindow(&window);
    screenReader.setWindow(&window);
    ZNTStoreWaitStatus waitStatus(*window.statusText);
    database.setWaitNotice(
        {.waiting = [&waitStatus] { waitStatus.show(); }, .over = [&waitStatus] { waitStatus.clear(); }});
    ZNTApplicationWindow parts(
        window, {platform, database, sounds, speech, screenReader, socketStreams(runLoop), options.settings});
    auto& session = parts.controller.serverConnectController();
    speakForReaderFoundWhileStarting(screenReader, session);
    QObject::connect(&screenReader, &ZNTDesktopScreenReader::runningChanged, &window,
                     [&session] { session.screenReaderChanged(); });
    welcomeReader(screenReader, parts.wiring);
    window.show();
    window.activateWindow();
    parts.appDelegate.applicationDidFinishLaunching();
    if (options.demo)
        parts.connection.playDemo();
    else if (!options.host.empty())
        parts.connection.connectTo(QString::fromStdString(options.host), options.port);
    if (!options.refusedLink.empty()) // a browser shows nobody what we write on stderr
        alert.showMessage(u"Link not opened", QString::fromStdString(options.refusedLink).toStdU16String());
    return QApplication::exec();
}
