#pragma once

#include <QLineEdit>
#include <functional>

/// The line in which the player types. Return and the arrows that mean something to the session go there;
/// the window gets the numeric keypad, the page keys, the key for the end of the output, and Copy without a
/// selection, because the player's hands stay here while playing.
class ZNTCommandLine final : public QLineEdit
{
public:
    explicit ZNTCommandLine(QWidget* parent = nullptr);

    /// If several lines were pasted, it is called once for each, with that line as the text.
    std::function<void()> whenReturnPressed;
    std::function<void()> whenUpPressed;
    std::function<void()> whenDownPressed;
    /// Page Up and Page Down, with the direction -1 or 1.
    std::function<void(int direction)> whenPaged;

    /// Called if the line is disabled while it has the focus, as at a session's end, to move the focus.
    /// Without it the focus goes to the next widget.
    std::function<void()> whenDisabledWithFocus;

    /// While hidden, each letter shows as a dot and screen readers take the line for a password. What stands
    /// in the line when it is shown again goes, since it was typed unseen.
    void setTypingHidden(bool isHidden);

protected:
    bool event(QEvent* event) override;
    bool focusNextPrevChild(bool next) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void sendLines();
};
