#pragma once

#include "ZNTAlert.h"

#include <QPointer>
#include <QString>

class QMessageBox;
class QWidget;

/// Alerts as message boxes of the window in front: they hold it up, not the program.
///
/// Title and text are shown as plain text. One that is already on the screen is not shown a second time:
/// a game that cannot be reached must not bury the player under boxes.
class ZNTQtAlert final : public ZNTAlert
{
public:
    /// Whose boxes they are when no other window of ours is in front.
    void setMainWindow(QWidget* window);

    void showMessage(std::u16string_view title, std::u16string_view text) override;
    void askForConfirmation(std::u16string_view title, std::u16string_view text,
                            std::function<void(bool confirmed)> answered) override;

private:
    QMessageBox* newBox(std::u16string_view title, std::u16string_view text) const;

    QPointer<QWidget> mainWindow;
    QPointer<QMessageBox> lastMessage;
};
