#pragma once

#include <QList>
#include <QString>
#include <QWidget>

class QLabel;
class QLineEdit;
class QPushButton;

/// The row of the connection: the fields of the game and the button that connects.
///
/// While a game is played the row can be folded: one line says which game it is, in the place of the fields.
/// The fields are the window's parts of the same names; they belong to the row.
class ZNTConnectionRow final : public QWidget
{
public:
    ZNTConnectionRow();

    /// Shows the line in the place of the fields. A screen reader finds it as the description of the button,
    /// too, since that is where the keyboard comes.
    void fold(const QString& line);
    void unfold();
    [[nodiscard]] bool isFolded() const { return isFolded_; }

    QLineEdit* mudName;
    QLineEdit* ipAddress;
    QLineEdit* port;
    QPushButton* connectionButton;
    QLabel* connectionLine; ///< hidden while the row is not folded

private:
    void makeParts();
    void setFolded(bool folded);

    QList<QWidget*> fields;      ///< with their captions
    QString unfoldedDescription; ///< the button's own one, its key
    bool isFolded_ = false;
};
