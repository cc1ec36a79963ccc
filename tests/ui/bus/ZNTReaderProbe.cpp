// A window with a line edit that has the focus, and the whole way of a line to the reader or the speech
// service behind it. Commands on stdin, one a line:
//   say TEXT    hands TEXT over at once, as the review does
//   line TEXT   queues TEXT, as a received chunk
//   stop        stops speech and turns it on again
//   other       opens and activates another window, in which nothing has the focus;  back  closes it
//   dialog      opens a dialog with a line edit
//   state       answers "running WAY" or "off"

#include "QtRunLoop.h"
#include "ZNTDesktopScreenReader.h"
#include "ZNTSpeechDispatcher.h"
#include "ZNTSpeechSynth.h"

#include <QApplication>
#include <QDialog>
#include <QLineEdit>
#include <QMainWindow>
#include <QSocketNotifier>
#include <QWidget>

#include <iostream>
#include <memory>
#include <string>
#include <unistd.h>

namespace
{

struct Probe {
    QtRunLoop runLoop;
    ZNTDesktopScreenReader reader;
    ZNTStandardErrorLog log;
    ZNTSpeechDispatcher engine{runLoop, log};
    ZNTSpeechSynth synth{runLoop, engine, reader};
    QMainWindow window;
    std::unique_ptr<QWidget> other;

    void obey(const QString& command)
    {
        const auto word = command.section(u' ', 0, 0);
        const auto text = command.section(u' ', 1).toStdU16String();
        if (word == u"say") {
            synth.speakNext(text);
        } else if (word == u"line") {
            synth.speakLine(text);
        } else if (word == u"stop") {
            synth.stopIt();
            synth.speechOn();
        } else if (word == u"other") {
            other = std::make_unique<QWidget>();
            other->resize(200, 100);
            other->show();
            other->activateWindow();
        } else if (word == u"dialog") {
            other = std::make_unique<QDialog>(&window);
            other->setWindowTitle(QStringLiteral("Dialog"));
            (new QLineEdit(other.get()))->setFocus();
            other->show();
            other->activateWindow();
        } else if (word == u"back") {
            other.reset();
            window.activateWindow();
        } else if (word == u"state") {
            std::cout << (reader.isRunning() ? "running, " : "off, ")
                      << (window.isActiveWindow() ? "active" : "inactive") << std::endl;
        }
    }
};

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_LINUX_ACCESSIBILITY_ALWAYS_ON", "1");
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("zantor-reader-probe"));
    Probe probe;
    probe.window.setWindowTitle(QStringLiteral("Probe"));
    auto* command = new QLineEdit;
    probe.window.setCentralWidget(command);
    probe.window.show();
    probe.window.activateWindow();
    command->setFocus();
    probe.reader.setWindow(&probe.window);
    probe.synth.setUseTimer(false);
    probe.synth.speechOn();

    std::ios::sync_with_stdio(false);
    QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
    QObject::connect(&input, &QSocketNotifier::activated, &application, [&] {
        std::string line;
        do {
            if (!std::getline(std::cin, line))
                return QApplication::quit();
            probe.obey(QString::fromStdString(line));
        } while (std::cin.rdbuf()->in_avail() > 0);
    });
    return QApplication::exec();
}
