#pragma once

#include <QPushButton>
#include <cstdint>

/// The mark between what is read and the last rows: how many lines came meanwhile. A click goes to the end.
class ZNTNewLinesMark final : public QPushButton
{
public:
    /// Hidden at first.
    explicit ZNTNewLinesMark(QWidget& viewport);

    using QPushButton::show;
    /// Shows it at the right of the viewport, `y` pixels from its top.
    void show(std::int64_t newLines, int y);
};
