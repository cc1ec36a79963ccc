#include "ZNTNewsAgain.h"

#include "ZNTAnnouncement.h"
#include "ZNTScreenReader.h"

#include <QCoreApplication>
#include <QKeyEvent>

namespace
{

/// A reader reports no ends. This is slower than most readers are, so that what is cut off is not missed.
constexpr int millisecondsOfSign = 80, millisecondsToBegin = 500;

} // namespace

ZNTNewsAgain::ZNTNewsAgain(const ZNTScreenReader& reader) : reader(reader)
{
    untilRest.setSingleShot(true);
    untilRest.setInterval(rest);
    connect(&untilRest, &QTimer::timeout, this, &ZNTNewsAgain::sayAgain);
    QCoreApplication::instance()->installEventFilter(this);
}

void ZNTNewsAgain::watch(const QString& what)
{
    forget();
    if (!reader.isRunning())
        return;
    news = what;
    timesLeft = mostTimes;
    expectEnd();
}

void ZNTNewsAgain::watchInstead(const QString& words)
{
    if (!news.isEmpty())
        watch(words);
}

void ZNTNewsAgain::drop(const QString& words)
{
    if (news == words)
        forget();
}

void ZNTNewsAgain::forget()
{
    untilRest.stop();
    news.clear();
}

void ZNTNewsAgain::expectEnd()
{
    end.setRemainingTime(millisecondsToBegin + millisecondsOfSign * news.size());
}

bool ZNTNewsAgain::eventFilter(QObject*, QEvent* event)
{
    const bool isKey = event->type() == QEvent::KeyPress;
    if (news.isEmpty() || (!isKey && event->type() != QEvent::FocusIn))
        return false;
    if (isKey && static_cast<const QKeyEvent&>(*event).key() == Qt::Key_Control) {
        forget();
    } else if (untilRest.isActive() || !end.hasExpired()) {
        untilRest.start();
    } else {
        forget(); // it was said to its end
    }
    return false;
}

void ZNTNewsAgain::sayAgain()
{
    if (!reader.isRunning())
        return forget();
    znt::announce(ZNTAnnouncement::NewsAgain, {news});
    if (--timesLeft > 0)
        expectEnd();
    else
        forget();
}
