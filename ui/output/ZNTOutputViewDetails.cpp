#include "ZNTOutputView.h"

#include "ZNTQtText.h"
#include "ZNTWebAddresses.h"

#include <QDateTime>
#include <QHelpEvent>
#include <QToolTip>

#include <algorithm>

// What the view knows about a place in the text besides the text: the web address there, and when it came.

void ZNTOutputView::setWebLinks(bool shown)
{
    hasWebLinks = shown;
    panePainter.setWebLinks(shown);
    viewport()->setMouseTracking(shown);
    viewport()->setCursor(Qt::IBeamCursor);
    viewport()->update();
}

void ZNTOutputView::setLineTimes(bool shown) { hasLineTimes = shown; }

QString ZNTOutputView::webAddressAt(QPoint point) const
{
    if (!hasWebLinks)
        return {};
    const auto position = positionAt(point);
    if (!characterRect(position).contains(point)) // beside the text
        return {};
    const auto line = store_.line(store_.lineAt(position));
    const auto offset = static_cast<std::size_t>(position - line.start);
    std::vector<std::pair<std::size_t, std::size_t>> addresses;
    znt::webAddressesIn(line.text, addresses);
    for (const auto& [from, to] : addresses)
        if (offset >= from && offset < to)
            return znt::qtText(line.text.substr(from, to - from));
    return {};
}

void ZNTOutputView::showPointer(QPoint point)
{
    if (hasWebLinks)
        viewport()->setCursor(webAddressAt(point).isEmpty() ? Qt::IBeamCursor : Qt::PointingHandCursor);
}

bool ZNTOutputView::viewportEvent(QEvent* event)
{
    if (event->type() != QEvent::ToolTip || !hasLineTimes)
        return QAbstractScrollArea::viewportEvent(event);
    const auto* help = static_cast<const QHelpEvent*>(event);
    const auto position = positionAt(help->pos());
    const auto line = characterRect(position);
    const bool isOverLine = help->pos().y() >= line.top() && help->pos().y() <= line.bottom();
    const auto words = isOverLine ? timeInWords(store_.secondOf(position)) : QString();
    // Another tooltip comes as soon as the pointer leaves the row.
    const QRect row(0, line.top(), viewport()->width(), line.height());
    QToolTip::showText(help->globalPos(), words, viewport(), row);
    return true;
}

QString ZNTOutputView::timeInWords(std::uint32_t second) const
{
    if (second == 0)
        return {};
    const auto when = QDateTime::fromSecsSinceEpoch(second);
    const bool isToday = when.date() == QDateTime::fromSecsSinceEpoch(clock()).date();
    return when.toString(isToday ? QStringLiteral("HH:mm:ss") : QStringLiteral("yyyy-MM-dd HH:mm:ss"));
}

std::int64_t ZNTOutputView::lineOfPlayer() const
{
    constexpr std::int64_t mostEmptyLines = 100; // a game may send nothing else
    const auto chosen = hasSelection() ? selectionStart() : hasFocus() ? caret() : store_.end();
    auto line = store_.lineAt(chosen);
    if (chosen < store_.end())
        return line;
    const auto first = std::max(store_.firstLine(), line - mostEmptyLines);
    while (line > first && store_.line(line).text.empty())
        --line;
    return line;
}

QString ZNTOutputView::timeOfLineInWords() const
{
    const auto line = store_.line(lineOfPlayer());
    const auto time = timeInWords(store_.secondOf(line.start));
    if (time.isEmpty() || line.text.empty())
        return time;
    constexpr qsizetype mostText = 300; // enough to know the line by
    return time + QStringLiteral(", ") + znt::qtText(line.text).left(mostText);
}

void ZNTOutputView::showTimeOfLine()
{
    const auto start = store_.line(lineOfPlayer()).start;
    const auto place = characterRect(start).bottomLeft();
    // Without the line's own words: a tooltip would take those of a game for its markup.
    QToolTip::showText(viewport()->mapToGlobal(place), timeInWords(store_.secondOf(start)), viewport());
}
