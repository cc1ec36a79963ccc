#include "ZNTKeypadKeys.h"

#include <QApplication>
#include <QKeyEvent>
#include <QWidget>
#include <algorithm>

namespace
{

/// Asks the widget in the way in which Qt asks before it looks for a shortcut.
bool wantsToType(QWidget& widget, const QKeyEvent& key)
{
    QKeyEvent question(QEvent::ShortcutOverride, key.key(), key.modifiers(), key.text());
    question.ignore();
    QCoreApplication::sendEvent(&widget, &question);
    return question.isAccepted();
}

} // namespace

ZNTKeypadKeys::ZNTKeypadKeys(QWidget& window, std::span<QAction* const> actions)
    : window(window),
      actions(actions)
{
    QCoreApplication::instance()->installEventFilter(this);
}

bool ZNTKeypadKeys::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress || !watched->isWidgetType())
        return false;
    auto& widget = static_cast<QWidget&>(*watched);
    const auto& key = static_cast<const QKeyEvent&>(*event);
    if (key.modifiers() != Qt::KeypadModifier || widget.window() != &window)
        return false;
    QAction* action = actionFor(key);
    if (!action || wantsToType(widget, key))
        return false;
    action->trigger();
    return true;
}

QAction* ZNTKeypadKeys::actionFor(const QKeyEvent& key) const
{
    const auto found = std::ranges::find_if(actions, [&key](const QAction* each) {
        return each->isEnabled() && each->shortcuts().contains(QKeySequence(key.keyCombination()));
    });
    return found == actions.end() ? nullptr : *found;
}
