#include "ZNTWindowFit.h"

#include "ZNTFlowLayout.h"
#include "ZNTHintedTable.h"

#include <QApplication>
#include <QBoxLayout>
#include <QDialog>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QWidget>
#include <algorithm>

namespace
{

/// Room for the window's frame and for a panel of the desktop.
constexpr int roomAround = 40;
/// The least room for a table or an edited text, in characters of the window's font.
constexpr int comfortableColumns = 112;
constexpr int leastLinesOfText = 5, comfortableLinesOfText = 15;
/// How far and in which steps a font may shrink, as shares of its size.
constexpr double smallestShare = 0.3, smallestStep = 0.03;

QSize roomFor(const QWidget& window)
{
    return window.screen()->availableSize() - QSize(roomAround, roomAround);
}

/// The room that the pages of `window` need beyond the room that they ask for. They lie one upon the other.
QSize askedTooLittle(const QWidget& window)
{
    QSize asked(0, 0);
    QSize content(0, 0);
    for (const auto* area : window.findChildren<QScrollArea*>()) {
        const int frame = 2 * area->frameWidth();
        asked = asked.expandedTo(area->sizeHint());
        content = content.expandedTo(area->widget()->sizeHint() + QSize(frame, frame));
    }
    return (content - asked).expandedTo(QSize(0, 0));
}

/// How much higher the highest page becomes where its words wrap at `width`.
int growthAt(int width, const QWidget& window)
{
    int asked = 0;
    int grown = 0;
    for (const auto* area : window.findChildren<QScrollArea*>()) {
        const QWidget* content = area->widget();
        asked = std::max(asked, content->sizeHint().height());
        grown = std::max(grown, content->hasHeightForWidth() ? content->heightForWidth(width)
                                                             : content->sizeHint().height());
    }
    return std::max(0, grown - asked);
}

template <typename Question>
void shrinkFont(QWidget& widget, const Question& fits)
{
    widget.ensurePolished();
    QFont font = widget.font();
    const double step = font.pointSizeF() * smallestStep;
    const double smallest = font.pointSizeF() * smallestShare;
    while (!fits() && font.pointSizeF() > smallest) {
        font.setPointSizeF(font.pointSizeF() - step);
        widget.setFont(font);
        widget.ensurePolished();
    }
}

void moveOntoScreen(QWidget& window)
{
    const QRect screen = window.screen()->availableGeometry();
    const QRect frame = window.frameGeometry();
    const int right = std::max(screen.left(), screen.right() + 1 - frame.width());
    const int bottom = std::max(screen.top(), screen.bottom() + 1 - frame.height());
    window.move(std::clamp(frame.x(), screen.left(), right), std::clamp(frame.y(), screen.top(), bottom));
}

/// `row` with the same buttons as rows that wrap.
QWidget* wrappingRow(QBoxLayout& row)
{
    auto* holder = new QWidget(row.parentWidget());
    auto* flow = new ZNTFlowLayout(holder, row.spacing());
    flow->setContentsMargins(row.contentsMargins());
    if (row.itemAt(0)->spacerItem())
        flow->standAtRight();
    // A layout that is given a widget takes it from the one that had it.
    while (QLayoutItem* first = row.itemAt(0)) {
        QWidget* widget = first->widget();
        if (widget)
            flow->addWidget(widget);
        else
            delete row.takeAt(0);
    }
    return holder;
}

} // namespace

void znt::fitToScreen(QWidget& window)
{
    window.ensurePolished();
    const auto texts = window.findChildren<QPlainTextEdit*>();
    int linesMore = 0;
    for (auto* text : texts) {
        const int line = text->fontMetrics().lineSpacing();
        // An editor wants its margin a second time below the last line, else it has a scroll bar.
        const int edges = 2 * text->frameWidth() + static_cast<int>(3 * text->document()->documentMargin());
        text->setMinimumHeight(line * leastLinesOfText + edges);
        // Else it asks for many lines even where the window has no room for them, and the buttons below it
        // are out of sight.
        text->setSizeAdjustPolicy(QAbstractScrollArea::AdjustToContents);
        if (!text->isReadOnly())
            linesMore = line * (comfortableLinesOfText - leastLinesOfText);
    }
    const auto tables = window.findChildren<ZNTHintedTable*>();
    int rowsMore = 0;
    for (auto* table : tables) {
        table->updateGeometry(); // what their columns need has changed since they were asked
        rowsMore = std::max(rowsMore, table->comfortableGrowth());
    }
    QSize wanted = window.sizeHint() + askedTooLittle(window);
    if (!texts.isEmpty() || !tables.isEmpty())
        wanted.setWidth(
            std::max(wanted.width(), window.fontMetrics().averageCharWidth() * comfortableColumns));
    const QSize room = roomFor(window);
    wanted.setWidth(std::min(wanted.width(), room.width()));
    wanted.rheight() += growthAt(wanted.width(), window) + rowsMore + linesMore;
    window.resize(wanted.boundedTo(room));
    if (window.isVisible())
        moveOntoScreen(window);
}

void znt::letButtonsWrap(QDialog& dialog)
{
    for (QHBoxLayout* row : dialog.findChildren<QHBoxLayout*>()) {
        auto* column = qobject_cast<QVBoxLayout*>(row->parent());
        if (!column)
            continue;
        const int place = column->indexOf(row);
        QWidget* wrapping = wrappingRow(*row);
        column->removeItem(row);
        delete row;
        column->insertWidget(place, wrapping);
    }
}

void znt::scrollIntoSight(QScrollArea& area, const QWidget& widget)
{
    constexpr int ringWidth = 4;
    const QPoint corner = widget.mapTo(area.widget(), QPoint(0, 0));
    // The beginning comes last, because it matters most if not all of it fits.
    area.ensureVisible(corner.x() + widget.width(), corner.y() + widget.height(), ringWidth, ringWidth);
    area.ensureVisible(corner.x(), corner.y(), ringWidth, ringWidth);
}

void znt::shrinkFontToScreen(QDialog& dialog)
{
    const QSize room = roomFor(dialog);
    shrinkFont(dialog, [&] {
        if (dialog.layout())
            dialog.layout()->invalidate();
        const QSize least = dialog.minimumSizeHint();
        return least.width() <= room.width() && least.height() <= room.height();
    });
}

void znt::shrinkFontToScreen(QMenu& menu)
{
    menu.setFont(QApplication::font(&menu)); // full size again, if there is room now
    const int room = menu.screen()->availableSize().width();
    shrinkFont(menu, [&] { return menu.sizeHint().width() <= room; });
}
