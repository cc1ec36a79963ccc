#include "ZNTMenuTitles.h"

#include "ZNTAnnouncement.h"

#include <QAccessible>
#include <QApplication>
#include <QEvent>
#include <QMenu>
#include <QPointer>

ZNTMenuTitles::ZNTMenuTitles(QObject* parent) : QObject(parent) { qApp->installEventFilter(this); }

bool ZNTMenuTitles::eventFilter(QObject* watched, QEvent* event)
{
    auto* menu = qobject_cast<QMenu*>(watched);
    if (!menu)
        return false;
    // In the next turn of the loop: the focus of the first item cuts off what a reader says before, and of a
    // whole path of menus that closes none stays in front.
    if (event->type() == QEvent::Show)
        QMetaObject::invokeMethod(
            this,
            [opened = QPointer<QMenu>(menu)] {
                if (opened && opened->isVisible())
                    announceTitle(*opened);
            },
            Qt::QueuedConnection);
    else if (event->type() == QEvent::Hide)
        QMetaObject::invokeMethod(this, &ZNTMenuTitles::announceItemOfFrontMenu, Qt::QueuedConnection);
    return false;
}

void ZNTMenuTitles::announceTitle(const QMenu& menu)
{
    if (const QString title = menu.accessibleName(); !title.isEmpty())
        znt::announce(ZNTAnnouncement::MenuOpened, {title});
}

void ZNTMenuTitles::announceItemOfFrontMenu()
{
    auto* front = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    if (!front || !front->activeAction())
        return;
    QAccessibleEvent focus(front, QAccessible::Focus);
    focus.setChild(static_cast<int>(front->actions().indexOf(front->activeAction())));
    QAccessible::updateAccessibility(&focus);
}
