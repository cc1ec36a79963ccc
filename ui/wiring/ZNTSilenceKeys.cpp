#include "ZNTSilenceKeys.h"

#include "ZNTServerConnectController.h"

#include <QCoreApplication>
#include <QKeyEvent>

ZNTSilenceKeys::ZNTSilenceKeys(ZNTServerConnectController& session) : session(session)
{
    QCoreApplication::instance()->installEventFilter(this);
}

bool ZNTSilenceKeys::eventFilter(QObject* watched, QEvent* event)
{
    bool isKey = false;
    switch (event->type()) {
    case QEvent::ShortcutOverride: // comes before each press, also before one that is a menu's key
        isKey = isChosen(static_cast<const QKeyEvent&>(*event));
        break;
    case QEvent::KeyPress: // an open menu gets its keys without the former
        isKey = watched->isWindowType() && isChosen(static_cast<const QKeyEvent&>(*event));
        break;
    case QEvent::InputMethod: // a letter that an input method composes of keys
        isKey = session.settings().silenceKey == ZNTSilenceKey::Any;
        break;
    default:
        return false;
    }
    // A press may come here twice before anything is done about it. The second silence meets nothing new.
    if (isKey)
        session.stopSpeaking();
    return false;
}

/// A key that is held down counts once.
bool ZNTSilenceKeys::isChosen(const QKeyEvent& key) const
{
    if (key.isAutoRepeat())
        return false;
    switch (session.settings().silenceKey) {
    case ZNTSilenceKey::None:
        break;
    case ZNTSilenceKey::Any:
        return true;
    case ZNTSilenceKey::Return:
        return key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter;
    case ZNTSilenceKey::Control:
        return key.key() == Qt::Key_Control;
    }
    return false;
}
