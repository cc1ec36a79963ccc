#pragma once

#include <QKeyEvent>
#include <QObject>
#include <functional>

/// Has Return and Enter do something in a widget that makes nothing of them itself.
class ZNTReturnKey final : public QObject
{
public:
    ZNTReturnKey(QObject* parent, std::function<void()> task) : QObject(parent), task(std::move(task)) {}

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::KeyPress) {
            const auto* key = static_cast<QKeyEvent*>(event);
            const bool isPlain = (key->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
            if (isPlain && (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter)) {
                task();
                return true;
            }
        }
        return QObject::eventFilter(watched, event);
    }

private:
    std::function<void()> task;
};
