#pragma once

#include <QKeySequence>
#include <QLineEdit>
#include <functional>

/// A field that takes the next key combination that is pressed in it, in place of the one that it has.
/// Tab, Shift+Tab, Return, Escape and modifiers alone keep their meanings. Delete and Backspace empty it.
class ZNTKeyField final : public QLineEdit
{
public:
    explicit ZNTKeyField(QWidget* parent = nullptr);

    [[nodiscard]] QKeySequence key() const { return key_; }
    void setKey(const QKeySequence& key);

    /// Answers why the key cannot be had, as a sentence; empty if it can.
    std::function<QString(QKeyCombination key)> refusal;
    /// Called with each key that was pressed: taken, or the sentence why not.
    std::function<void(const QString& refused)> whenPressed;

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent*) override {}

private:
    QKeySequence key_;
};
