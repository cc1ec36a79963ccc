#pragma once

#include <QWidget>

class QLineEdit;
class QProgressBar;
class QPushButton;

/// The row of the connection: the fields of the game, the button that connects, the sign of an attempt.
///
/// Its parts are the window's parts of the same names. They belong to it.
class ZNTConnectionRow final : public QWidget
{
public:
    ZNTConnectionRow();

    QLineEdit* mudName;
    QLineEdit* ipAddress;
    QLineEdit* port;
    QPushButton* connectionButton;
    QProgressBar* myProgressIndicator;

private:
    void makeParts();
};
