#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QPointer>
#include <QWidget>

class QDialog;
class QKeyEvent;

/// Keeps a player's typing out of a dialog that opens meanwhile. An unread alert must not close because of
/// the Return of a half-typed line, or of an "o" that is the letter of its OK button.
///
/// Typing goes to the field until the player pauses. Escape, and keys with Ctrl, Alt or Meta, go to the
/// dialog from the start.
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
