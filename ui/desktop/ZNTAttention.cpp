#include "ZNTAttention.h"

#include <QApplication>
#include <QEvent>
#include <QGuiApplication>
#include <QWidget>
#include <QWindow>
#include <chrono>
#include <utility>

namespace
{

/// Each title is drawn by the desktop, and a game may send a thousand lines a second.
constexpr std::chrono::milliseconds betweenTitles{500};

bool isBlank(char16_t unit) { return unit <= u' '; }

/// Lines with something to read that are finished. A prompt is none.
qint64 finishedLinesIn(std::u16string_view text)
{
    qint64 count = 0;
    bool hasWords = false;
    for (const char16_t unit : text) {
        if (unit == u'\n' || unit == u'\r') {
            count += hasWords ? 1 : 0;
            hasWords = false;
        } else {
            hasWords = hasWords || !isBlank(unit);
        }
    }
    return count;
}

} // namespace

bool ZNTDesktopTaskbar::hasActiveWindow() const { return QGuiApplication::focusWindow() != nullptr; }

void ZNTDesktopTaskbar::mark(QWidget& window) { QApplication::alert(&window); }

ZNTAttention::ZNTAttention(QWidget& window, ZNTTaskbar& taskbar, std::function<bool()> isWanted)
    : window(window),
      taskbar(taskbar),
      isWanted(std::move(isWanted)),
      settledTitle(window.windowTitle())
{
    titleTimer.setSingleShot(true);
    titleTimer.setInterval(betweenTitles);
    connect(&titleTimer, &QTimer::timeout, this, [this] { showCount(); });
    connect(qGuiApp, &QGuiApplication::focusWindowChanged, this, [this](const QWindow* now) {
        if (now)
            playerCame();
    });
    window.installEventFilter(this);
}

void ZNTAttention::textCame(std::u16string_view text)
{
    if (!isWanted() || taskbar.hasActiveWindow())
        return;
    const bool hasWords = text.find_first_not_of(u"\r\n\t ") != text.npos;
    if (!hasWords)
        return;
    lines += finishedLinesIn(text);
    if (!isMarked) {
        isMarked = true;
        taskbar.mark(window);
        showCount();
    } else if (!titleTimer.isActive()) {
        titleTimer.start();
    }
}

void ZNTAttention::playerCame()
{
    if (!isMarked)
        return;
    isMarked = false;
    lines = 0;
    titleTimer.stop();
    setTitle(settledTitle);
}

bool ZNTAttention::eventFilter(QObject*, QEvent* event)
{
    if (event->type() == QEvent::WindowTitleChange && !isSettingTitle) {
        settledTitle = window.windowTitle();
        if (isMarked)
            showCount();
    }
    return false;
}

void ZNTAttention::showCount()
{
    // A text without a finished line, such as a prompt, counts as one.
    setTitle(QStringLiteral("(%1) %2").arg(qMax(lines, qint64{1})).arg(settledTitle));
}

void ZNTAttention::setTitle(const QString& title)
{
    isSettingTitle = true;
    window.setWindowTitle(title);
    isSettingTitle = false;
}
