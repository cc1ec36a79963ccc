#pragma once

#include <QWidget>

class QLabel;

/// A field with its caption. The caption stands before the field if there is room, else above it.
///
/// The caption is the field's buddy and, without its mnemonic, the field's accessible name.
class ZNTCaptionedField final : public QWidget
{
public:
    /// `columns` is the width that the field would like, in characters of its font.
    ZNTCaptionedField(const QString& caption, QWidget* field, int columns);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;
    [[nodiscard]] int heightForWidth(int width) const override;
    /// The least at which the caption still stands before the field.
    [[nodiscard]] int leastWidthBeside() const;

protected:
    bool event(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    [[nodiscard]] bool isBeside(int width) const;
    [[nodiscard]] int fieldWidth(int characters) const;
    void place();

    QLabel* label;
    QWidget* field;
    int columns;
};
