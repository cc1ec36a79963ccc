#pragma once

#include <QPointer>
#include <QWidget>
#include <functional>

class QLineEdit;

/// A row with one field that is shown only while it is asked for, in the window where the player is. Return
/// and Shift+Return answer and leave the focus in it, Escape closes it.
class ZNTAskBar final : public QWidget
{
public:
    /// With a mnemonic in `caption`.
    explicit ZNTAskBar(const QString& caption);

    /// Shows the bar with the focus in it. What was typed last is selected.
    void open();
    void close();

    std::function<void(const QString& typed, bool isWithShift)> whenAnswered;

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    QLineEdit* field;
    QPointer<QWidget> opener; ///< what had the focus
};
