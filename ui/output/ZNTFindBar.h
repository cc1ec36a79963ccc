#pragma once

#include <QPointer>
#include <QWidget>
#include <vector>

class QLabel;
class QLineEdit;
class QPushButton;
class ZNTOutputView;

/// Looks for text in the output view as it is typed. Return goes to the match before, Escape closes.
class ZNTFindBar final : public QWidget
{
public:
    explicit ZNTFindBar(ZNTOutputView& output);

    /// Shows the bar with the focus in it and what it last looked for selected.
    void open();
    void close();
    void findNext();
    void findPrevious();

    /// The widgets that take the focus, in order.
    [[nodiscard]] std::vector<QWidget*> parts() const;

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    ZNTOutputView& output;
    QLineEdit* wanted;
    QPushButton* previous;
    QPushButton* next;
    QPushButton* done;
    QLabel* found;
    QPointer<QWidget> opener; ///< what had the focus
};
