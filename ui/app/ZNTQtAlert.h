#pragma once

#include "ZNTAlert.h"

#include <QPointer>
#include <QString>

class QMessageBox;
class QWidget;

/// Alerts as message boxes of the window in front. They block that window, and the program goes on.
///
/// Title and text are shown as plain text. An alert that is on the screen already is not shown a second time,
/// so that a game that cannot be reached does not fill the screen with boxes.
class ZNTQtAlert final : public ZNTAlert
{
public:
    /// The boxes belong to `window` if no other window of the program is in front.
    void setMainWindow(QWidget* window);

    void showMessage(std::u16string_view title, std::u16string_view text) override;
    void showSuccess(std::u16string_view title, std::u16string_view text) override;
    void askForConfirmation(std::u16string_view title, std::u16string_view text,
                            std::function<void(bool confirmed)> answered) override;

private:
    enum class News { Bad, Good };
    QMessageBox* newBox(std::u16string_view title, std::u16string_view text) const;
    void show(News news, std::u16string_view title, std::u16string_view text);

    QPointer<QWidget> mainWindow;
    QPointer<QMessageBox> lastMessage;
};
