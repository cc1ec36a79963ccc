#pragma once

#include "ZNTDirections.h"

#include <QWidget>
#include <array>

class QPushButton;

/// Eight buttons around a rose, as on a map, with up and down below them.
class ZNTCompass final : public QWidget
{
public:
    explicit ZNTCompass(QWidget* parent = nullptr);
    [[nodiscard]] QPushButton* button(ZNTDirection direction) const;

protected:
    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void fitButtonsToFont();

    std::array<QPushButton*, ZNTDirections.size()> buttons{};
    QWidget* centre = nullptr;
};
