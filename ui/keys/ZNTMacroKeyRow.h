#pragma once

#include <QKeySequence>
#include <QWidget>
#include <functional>

class QFormLayout;
class QLabel;
class QPushButton;
class ZNTKeyField;

/// The row of a macro's sheet in which the player gives the macro a key.
class ZNTMacroKeyRow final : public QWidget
{
public:
    /// Goes to the end of the form, which owns it. `before` stands before it in the Tab order.
    ZNTMacroKeyRow(QFormLayout& form, QWidget& before);

    void show(const QKeySequence& key);
    [[nodiscard]] QKeySequence key() const;

    /// Answers why the key cannot be had, as a sentence; empty if it can.
    std::function<QString(QKeyCombination key)> refusal;

private:
    void pressed(const QString& refused);

    ZNTKeyField* field;
    QPushButton* clear;
    QLabel* answer;
};
