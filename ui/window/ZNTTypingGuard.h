#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QPointer>
#include <QWidget>

class QDialog;
class QKeyEvent;

/// Keeps a player's typing out of a dialog that opens in the middle of it: an unread alert must not close
/// because the Return of a half-typed line, or an "o" for its OK button, was on its way.
///
/// What is typed goes on into the field until the player pauses. Escape, and keys with Ctrl, Alt or Meta, are
/// the dialog's from the start.
class ZNTTypingGuard final : public QObject
{
public:
    /// Is the dialog's child.
    ZNTTypingGuard(QDialog& dialog, QWidget& field);

    bool eventFilter(QObject* watched, QEvent* event) override;

    /// Milliseconds without a key after which keys are meant for the dialog.
    static constexpr int pause = 700;

private:
    [[nodiscard]] bool isTyping(const QKeyEvent& key) const;

    QDialog& dialog;
    QPointer<QWidget> field;
    QElapsedTimer sinceKey;
};
