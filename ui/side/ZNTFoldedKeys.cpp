#include "ZNTFoldedKeys.h"

#include <QAbstractButton>
#include <QEvent>
#include <QLabel>
#include <QShortcut>
#include <utility>

ZNTFoldedKeys::ZNTFoldedKeys(QWidget& window, QWidget& panel, std::function<void()> show)
    : QObject(&window),
      panel(panel),
      show(std::move(show))
{
    for (const QLabel* label : panel.findChildren<QLabel*>())
        if (label->buddy())
            lead(QKeySequence::mnemonic(label->text()), *label->buddy());
    for (QAbstractButton* button : panel.findChildren<QAbstractButton*>())
        lead(button->shortcut(), *button);
    panel.installEventFilter(this);
    follow();
}

void ZNTFoldedKeys::lead(const QKeySequence& key, QWidget& target)
{
    if (key.isEmpty())
        return;
    shortcuts << new QShortcut(key, static_cast<QWidget*>(parent()), [this, &target] {
        show();
        target.setFocus(Qt::ShortcutFocusReason);
    });
}

/// Two owners of a key would keep each other from acting.
void ZNTFoldedKeys::follow()
{
    for (QShortcut* shortcut : std::as_const(shortcuts))
        shortcut->setEnabled(panel.isHidden());
}

bool ZNTFoldedKeys::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::ShowToParent || event->type() == QEvent::HideToParent)
        follow();
    return QObject::eventFilter(watched, event);
}
