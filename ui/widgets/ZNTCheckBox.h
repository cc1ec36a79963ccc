#pragma once

#include <QCheckBox>

/// A check box whose words wrap where the width ends, so that a sentence can be one with a large font too.
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
    /// What the mark and the gap after it take.
    [[nodiscard]] int widthBeforeWords() const;
};
