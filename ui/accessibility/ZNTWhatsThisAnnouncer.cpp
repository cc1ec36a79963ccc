#include "ZNTWhatsThisAnnouncer.h"

#include "ZNTAnnouncement.h"

#include <QAction>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QMenu>
#include <QWidget>

namespace
{

bool isQuestion(const QEvent& event)
{
    if (event.type() != QEvent::KeyPress)
        return event.type() == QEvent::WhatsThis; // by the pointer
    const auto& key = static_cast<const QKeyEvent&>(event);
    return key.key() == Qt::Key_F1 && key.modifiers() == Qt::ShiftModifier;
}

QString answerOf(const QObject& asked)
{
    if (const auto* menu = qobject_cast<const QMenu*>(&asked); menu && menu->activeAction())
        return menu->activeAction()->whatsThis();
    const auto* widget = qobject_cast<const QWidget*>(&asked);
    return widget ? widget->whatsThis() : QString();
}

} // namespace

ZNTWhatsThisAnnouncer::ZNTWhatsThisAnnouncer() { QCoreApplication::instance()->installEventFilter(this); }

/// A question that a widget has no answer for goes on to its parent. So the last one asked is the one whose
/// answer is shown.
bool ZNTWhatsThisAnnouncer::eventFilter(QObject* watched, QEvent* event)
{
    if (isQuestion(*event))
        words = answerOf(*watched);
    // Qt's own class, which no header names.
    else if (event->type() == QEvent::Show && !words.isEmpty() && watched->inherits("QWhatsThat"))
        znt::announce(ZNTAnnouncement::Explanation, {words});
    return false;
}
