#pragma once

#include <QDialog>
#include <QSize>
#include <QString>

class QDialogButtonBox;
class QVBoxLayout;

/// A window of help. It stays open beside the game, and Escape closes and deletes it.
class ZNTHelpDialog : public QDialog
{
public:
    /// `window` gets the focus back.
    ZNTHelpDialog(QWidget& window, const QString& title, const char* name);

    /// Shows it in front. It says its title and its first line when it opens, and not again while it is open.
    void present();

protected:
    /// For what the page shows. The row of buttons stands below.
    [[nodiscard]] QVBoxLayout& content() { return *column; }
    [[nodiscard]] QDialogButtonBox& buttons() { return *row; }
    /// Called once all parts are there. The size is in characters of the font of `first`, which gets the
    /// focus.
    void arrange(QSize characters, QWidget& first, const QString& line);

private:
    QVBoxLayout* column;
    QDialogButtonBox* row;
    QString firstLine;
};
