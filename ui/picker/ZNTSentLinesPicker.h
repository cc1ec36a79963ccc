#pragma once

#include "ZNTEmptyHint.h"

#include <QDialog>
#include <QListView>
#include <QStringList>
#include <QStringListModel>
#include <QTimer>
#include <functional>

class QLabel;
class QLineEdit;
class QPushButton;

/// Lists lines for the player to pick one. What is typed narrows the list down; Up, Down and the page keys go
/// through it meanwhile, and Return picks.
class ZNTSentLinesPicker final : public QDialog
{
public:
    /// Deletes itself when it is closed. `picked` is called if the player picks a line.
    ZNTSentLinesPicker(QWidget& window, QStringList lines, std::function<void(const QString& line)> picked);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void narrowDown();
    [[nodiscard]] QString standingOn() const;
    void announceFound();
    void pick();

    const QStringList lines;
    const std::function<void(const QString&)> picked;
    QStringListModel shown;
    QLineEdit* filter;
    QLabel* words;
    ZNTHintedList<QListView>* list;
    QPushButton* put;
    QTimer resting; ///< since something was typed
};
