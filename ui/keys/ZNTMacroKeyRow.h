#pragma once

#include <QKeySequence>
#include <QWidget>
#include <functional>

class QLabel;
class QPushButton;
class QVBoxLayout;
class ZNTKeyField;

/// The row of a macro's sheet in which the player gives the macro a key.
class ZNTMacroKeyRow final : public QWidget
{
public:
    /// Goes into the sheet's column, which owns it, before the last row, that of the buttons. `before` stands
    /// before it in the Tab order.
    ZNTMacroKeyRow(QVBoxLayout& sheet, QWidget& before);

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
