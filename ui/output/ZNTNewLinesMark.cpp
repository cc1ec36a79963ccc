#include "ZNTNewLinesMark.h"

#include "ZNTOutputLayout.h"

#include <QLocale>

ZNTNewLinesMark::ZNTNewLinesMark(QWidget& viewport) : QPushButton(&viewport)
{
    setObjectName(QStringLiteral("newLinesBelow"));
    setFocusPolicy(Qt::NoFocus); // Ctrl+End is its key
    setCursor(Qt::PointingHandCursor);
    setStyleSheet(QStringLiteral(
        "QPushButton { color: white; background: #1f5fa8; border: 1px solid #9cc8ff; border-radius: 4px;"
        " padding: 4px 10px; }"));
    hide();
}

void ZNTNewLinesMark::show(std::int64_t newLines, int y)
{
    const auto words = newLines == 0   ? tr("More below")
                       : newLines == 1 ? tr("1 new line below")
                                       : tr("%1 new lines below").arg(QLocale().toString(newLines));
    const auto title = tr("\u2193 %1 \u00b7 Ctrl+End").arg(words);
    if (text() != title) {
        setText(title);
        setAccessibleName(tr("%1, go to the end").arg(words));
        adjustSize();
    }
    move(parentWidget()->width() - width() - 2 * ZNTOutputLayout::margin, y);
    show();
}
