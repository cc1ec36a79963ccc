#pragma once

#include <QCheckBox>

/// A check box whose title wraps, so that it can be a whole sentence with a large font, too.
class ZNTCheckBox final : public QCheckBox
{
public:
    explicit ZNTCheckBox(QWidget* parent = nullptr);

    [[nodiscard]] QSize minimumSizeHint() const override;
    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    /// The width of the mark and the gap after it.
    [[nodiscard]] int widthBeforeWords() const;
};
