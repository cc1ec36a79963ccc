#pragma once

#include <QLabel>

/// Words below a control that explain it, smaller than the control's own and below its words, not its mark.
///
/// When a dialog opens, Orca reads every label in it that belongs to no control. An explanation is no label
/// to a screen reader but a paragraph, and the description of its control has the same words.
class ZNTExplanation final : public QLabel
{
    Q_OBJECT
    /// The object name of the control; empty if there is none.
    Q_PROPERTY(QString explains READ explains WRITE setExplains)

public:
    explicit ZNTExplanation(QWidget* parent = nullptr);

    [[nodiscard]] QString explains() const { return control; }
    void setExplains(const QString& objectName) { control = objectName; }
    /// Stands below the words of `explained`, which may have a mark before them.
    void standBelow(const QWidget& explained);
    /// Stands in a row with controls, at their middle.
    void standBeside();

protected:
    bool event(QEvent* event) override;

private:
    void takeFont();
    void takeIndent();

    enum class Mark { None, Box, Circle };
    QString control;
    Mark mark = Mark::None;
    bool isBeside = false;
};
