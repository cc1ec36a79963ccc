#include "ZNTFocusFirst.h"

#include <QAbstractSpinBox>
#include <QAccessible>
#include <QApplication>
#include <QComboBox>
#include <QEvent>
#include <QLineEdit>

namespace
{

void tellAllButTheCaret(QAccessibleEvent* event)
{
    if (event->type() == QAccessible::TextCaretMoved)
        return;
    QAccessible::installUpdateHandler(nullptr);
    QAccessible::updateAccessibility(event);
    if (event->type() != QAccessible::Focus)
        QAccessible::installUpdateHandler(&tellAllButTheCaret);
}

void tellAll() { QAccessible::installUpdateHandler(nullptr); }

/// Fields that move their caret when they get the focus.
bool isField(const QObject* object)
{
    return qobject_cast<const QLineEdit*>(object) || qobject_cast<const QComboBox*>(object) ||
           qobject_cast<const QAbstractSpinBox*>(object);
}

} // namespace

ZNTQuietCaret::ZNTQuietCaret() : before(QAccessible::installUpdateHandler(&tellAllButTheCaret)) {}

ZNTQuietCaret::~ZNTQuietCaret() { QAccessible::installUpdateHandler(before); }

ZNTFocusFirst::ZNTFocusFirst(QObject* parent) : QObject(parent) { qApp->installEventFilter(this); }

bool ZNTFocusFirst::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::FocusIn && isField(watched)) {
        // Until the focus is announced. If it is not, until the end of this turn.
        QAccessible::installUpdateHandler(&tellAllButTheCaret);
        QMetaObject::invokeMethod(this, &tellAll, Qt::QueuedConnection);
    }
    return QObject::eventFilter(watched, event);
}
