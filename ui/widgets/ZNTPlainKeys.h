#pragma once

#include <QKeyEvent>
#include <QList>
#include <QWidget>
#include <functional>
#include <utility>

/// Gives keys without a modifier a meaning in a widget that does not use them.
class ZNTPlainKeys final : public QObject
{
public:
    /// Lives as long as `widget`. `task` answers whether it used the key.
    ZNTPlainKeys(QWidget& widget, QList<int> keys, std::function<bool()> task)
        : QObject(&widget),
          keys(std::move(keys)),
          task(std::move(task))
    {
        widget.installEventFilter(this);
    }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::KeyPress) {
            const auto* key = static_cast<QKeyEvent*>(event);
            const bool isPlain = (key->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
            if (isPlain && keys.contains(key->key()) && task())
                return true;
        }
        return QObject::eventFilter(watched, event);
    }

private:
    QList<int> keys;
    std::function<bool()> task;
};
