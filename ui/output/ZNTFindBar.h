#pragma once

#include <QPointer>
#include <QTimer>
#include <QWidget>
#include <vector>

class QLabel;
class QLineEdit;
class QPushButton;
class ZNTOutputView;

/// Searches the output view while the player types. Return goes to the match before, Escape closes the bar.
class ZNTFindBar final : public QWidget
{
public:
    explicit ZNTFindBar(ZNTOutputView& output,
                        const QString& nameOfField = QStringLiteral("Find in the output"));

    /// Shows the bar with the focus in it. The text of the last search is selected.
    void open();
    void close();
    void findNext();
    void findPrevious();

    /// The widgets that take the focus, in order.
    [[nodiscard]] std::vector<QWidget*> parts() const;

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void announceFound();

    ZNTOutputView& output;
    QLineEdit* wanted;
    QPushButton* previous;
    QPushButton* next;
    QPushButton* done;
    QLabel* found;
    QPointer<QWidget> opener; ///< what had the focus
    QTimer resting;           ///< since something was found
    bool isAsked = false;     ///< the player has searched since a match was announced last
};
