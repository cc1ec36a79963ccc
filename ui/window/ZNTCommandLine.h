#pragma once

#include <QLineEdit>
#include <QPointer>
#include <functional>

/// The line in which the player types. Return and the arrows that mean something to the session go there;
/// the numeric keypad, the page keys, the way to the end of the output and Copy without a selection are left
/// to the window, for the player's hands rest here while playing.
class ZNTCommandLine final : public QLineEdit
{
public:
    explicit ZNTCommandLine(QWidget* parent = nullptr);

    /// Called once for each line where several were pasted, with that line as the text.
    std::function<void()> whenReturnPressed;
    std::function<void()> whenUpPressed;
    std::function<void()> whenDownPressed;
    /// Page Up and Page Down, with the direction -1 or 1.
    std::function<void(int direction)> whenPaged;

    /// Where the focus goes when the line is disabled under it, as at a session's end; else to whatever is
    /// next.
    void setHeir(QWidget* widget) { heir = widget; }

protected:
    bool event(QEvent* event) override;
    bool focusNextPrevChild(bool next) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void sendLines();

    QPointer<QWidget> heir;
};
