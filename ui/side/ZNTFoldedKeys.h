#pragma once

#include <QList>
#include <QObject>
#include <functional>

class QKeySequence;
class QShortcut;
class QWidget;

/// The letters of the side panel's fields and buttons work while it is folded away, too: they bring it back
/// and go there. Without this the command line would take them as typing.
class ZNTFoldedKeys final : public QObject
{
public:
    /// `panel` is a part of `window`, which owns this. `show` brings the panel back.
    ZNTFoldedKeys(QWidget& window, QWidget& panel, std::function<void()> show);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void lead(const QKeySequence& key, QWidget& target);
    void follow();

    QWidget& panel;
    std::function<void()> show;
    QList<QShortcut*> shortcuts;
};
