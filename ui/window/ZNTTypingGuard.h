#pragma once

#include <QElapsedTimer>
#include <QLineEdit>
#include <QObject>
#include <QPointer>
#include <QTimer>
#include <functional>

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
    /// `typingRested` is called when the player pauses, if anything was typed while the dialog was open:
    /// until then a screen reader says the typed letters, and cuts off the words of the dialog.
    ZNTTypingGuard(QDialog& dialog, QLineEdit& field, std::function<void()> typingRested);

    bool eventFilter(QObject* watched, QEvent* event) override;

    /// Milliseconds without a key after which keys are meant for the dialog.
    static constexpr int pause = 700;

private:
    [[nodiscard]] bool isTyping(const QKeyEvent& key) const;
    void typeIntoField(const QKeyEvent& key);

    QDialog& dialog;
    QPointer<QLineEdit> field;
    QElapsedTimer sinceKey;
    QTimer rest;
};
