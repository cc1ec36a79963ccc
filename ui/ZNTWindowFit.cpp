#include "ZNTWindowFit.h"

#include <QPlainTextEdit>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QTableView>
#include <QWidget>
#include <algorithm>

namespace
{
/// What the window's frame and a panel of the desktop may take.
constexpr int roomAround = 40;
/// What a table or a text to edit is given at least, in characters of the window's own font.
constexpr int comfortableColumns = 84, comfortableRows = 38;
} // namespace

void znt::fitToScreen(QWidget& window)
{
    window.ensurePolished();
    QSize wanted = window.sizeHint();
    // A scroll area modestly asks for less than its content would like.
    if (const auto* area = window.findChild<QScrollArea*>(); area && area->widget()) {
        const QSize content = area->widget()->sizeHint();
        const QSize asked = area->sizeHint();
        const int frame = 2 * area->frameWidth();
        wanted.rwidth() += std::max(0, content.width() + frame - asked.width());
        wanted.rheight() += std::max(0, content.height() + frame - asked.height());
    }
    if (window.findChild<QTableView*>() || window.findChild<QPlainTextEdit*>())
        wanted = wanted.expandedTo({window.fontMetrics().averageCharWidth() * comfortableColumns,
                                    window.fontMetrics().height() * comfortableRows});
    const QSize room = window.screen()->availableSize() - QSize(roomAround, roomAround);
    window.resize(wanted.boundedTo(room));
}
