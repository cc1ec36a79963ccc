#include "ZNTOutputView.h"

#include "ZNTEmptyHint.h"
#include "ZNTOutputAccessible.h"

#include <QLocale>
#include <QPaintEvent>
#include <QPainter>
#include <QPushButton>
#include <QScrollBar>

#include <algorithm>
#include <cmath>

// What arrives, what is painted, what is found. Keys, mouse, caret and selection are in
// ZNTOutputViewInput.cpp.

namespace
{

constexpr int margin = 6;              // pixels around the text
constexpr int leastPaintInterval = 16; // milliseconds
constexpr int countingSlice = 6;       // milliseconds of counting matches per turn
constexpr QColor focusFrame(0x6C, 0xB4, 0xFF);
constexpr QColor hintColour(0xA8, 0xAE, 0xB8);

using Stretch = ZNTOutputPainter::Stretch;

/// Gives [from, to) of a row the look of `mark`.
void lay(ZNTOutputPainter::Mark mark, std::size_t from, std::size_t to, std::vector<Stretch>& stretches)
{
    std::vector<Stretch> result;
    for (const auto& stretch : stretches) {
        const auto begin = std::clamp(from, stretch.from, stretch.to);
        const auto end = std::clamp(to, stretch.from, stretch.to);
        if (begin >= end) {
            result.push_back(stretch);
            continue;
        }
        if (stretch.from < begin)
            result.push_back({stretch.from, begin, stretch.style, stretch.mark});
        result.push_back({begin, end, stretch.style, mark});
        if (end < stretch.to)
            result.push_back({end, stretch.to, stretch.style, stretch.mark});
    }
    stretches.swap(result);
}

} // namespace

ZNTOutputView::ZNTOutputView(QWidget* parent) : QAbstractScrollArea(parent), mark(new QPushButton(viewport()))
{
    QAccessible::installFactory(&ZNTOutputAccessible::make);
    setObjectName(QStringLiteral("textFromServer"));
    setAccessibleName(tr("Game output"));
    setFocusPolicy(Qt::StrongFocus);
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn); // else the grid changes width with the first full page
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
    viewport()->setCursor(Qt::IBeamCursor);

    mark->setObjectName(QStringLiteral("newLinesBelow"));
    mark->setFocusPolicy(Qt::NoFocus); // Ctrl+End is its key
    mark->setCursor(Qt::PointingHandCursor);
    mark->setStyleSheet(QStringLiteral(
        "QPushButton { color: white; background: #1f5fa8; border: 1px solid #9cc8ff; border-radius: 4px;"
        " padding: 4px 10px; }"));
    mark->hide();
    connect(mark, &QPushButton::clicked, this, &ZNTOutputView::jumpToEnd);

    refreshTimer.setSingleShot(true);
    refreshTimer.setTimerType(Qt::PreciseTimer);
    connect(&refreshTimer, &QTimer::timeout, this, &ZNTOutputView::refresh);
    connect(&dragTimer, &QTimer::timeout, this, [this] {
        scrollByRows(dragPoint.y() < 0 ? -1 : 1);
        extendTo(positionAt(dragPoint));
    });
    connect(&findTimer, &QTimer::timeout, this, [this] {
        if (!finder.countSome(countingSlice))
            findTimer.stop();
        Q_EMIT findStatusChanged(finder.status());
    });
    sincePaint.start();
}

ZNTOutputView::~ZNTOutputView() = default;

void ZNTOutputView::append(const ZNTAttributedText& text)
{
    const auto oldStart = store_.start();
    const bool wasEmpty = isEmpty();
    store_.append(text);
    noteDropped(oldStart);
    if (wasEmpty)
        describeWhileEmpty();
    if (caretStaysAtEnd)
        anchor = caret_ = store_.end();
    scheduleRefresh();
}

void ZNTOutputView::noteDropped(Position oldStart)
{
    const auto start = store_.start();
    if (start == oldStart)
        return;
    announcedEnd = std::max(announcedEnd, start);
    anchor = std::max(anchor, start);
    caret_ = std::max(caret_, start);
    announceRemoved(start - oldStart);
}

void ZNTOutputView::scrollToEnd()
{
    if (isFollowing)
        scheduleRefresh();
}

void ZNTOutputView::clear()
{
    const auto length = store_.end() - store_.start();
    const bool hadSelection = hasSelection();
    store_.clear();
    anchor = caret_ = announcedEnd = store_.end();
    caretStaysAtEnd = true;
    isDragging = false;
    dragTimer.stop();
    finder.loseCurrent();
    announceRemoved(length);
    describeWhileEmpty();
    setFollowing(true);
    if (hadSelection)
        Q_EMIT copyAvailable(false);
    scheduleRefresh();
}

void ZNTOutputView::setTextFont(const QFont& font)
{
    const double before = pointSize();
    QFont bounded = font;
    const double points = font.pointSizeF() > 0 ? font.pointSizeF() : before;
    bounded.setPointSizeF(std::clamp(points, smallestPointSize, largestPointSize));
    painter.setFont(bounded);
    layoutChanged();
    if (pointSize() != before)
        Q_EMIT pointSizeChanged(pointSize());
}

void ZNTOutputView::setPointSize(double points)
{
    QFont font = textFont();
    font.setPointSizeF(std::clamp(points, smallestPointSize, largestPointSize));
    setTextFont(font);
}

void ZNTOutputView::setAmbiguousWidth(znt::AmbiguousWidth width)
{
    if (width == store_.ambiguousWidth())
        return;
    store_.setAmbiguousWidth(width);
    rows.reset();
    layoutChanged();
}

void ZNTOutputView::setReadableColours(bool readable)
{
    painter.setReadableColours(readable);
    viewport()->update();
}

void ZNTOutputView::setEmptyHint(const QString& words)
{
    emptyHint = words;
    describeWhileEmpty();
    viewport()->update();
}

void ZNTOutputView::describeWhileEmpty()
{
    const QString words = isEmpty() ? emptyHint.simplified() : QString();
    if (words != accessibleDescription())
        setAccessibleDescription(words);
}

void ZNTOutputView::setMemoryLimit(std::size_t bytes)
{
    const auto oldStart = store_.start();
    store_.setMemoryLimit(bytes);
    noteDropped(oldStart);
    scheduleRefresh();
}

std::int64_t ZNTOutputView::newLinesBelow() const
{
    return isFollowing ? 0 : std::max<std::int64_t>(0, store_.endLine() - endLineSeen);
}

// Painting and scrolling

void ZNTOutputView::scheduleRefresh()
{
    if (!refreshTimer.isActive())
        refreshTimer.start(std::max(0, leastPaintInterval - static_cast<int>(sincePaint.elapsed())));
}

/// Takes what was appended into the picture.
void ZNTOutputView::refresh()
{
    rows.update();
    if (isFollowing && !isDragging)
        top = topForEnd();
    else if (top.line < store_.firstLine())
        top = {store_.firstLine(), 0};
    updateScrollBar();
    updateMark();
    if (finder.isActive()) {
        findTimer.start(0); // counts on, and tells
    }
    announceAppended();
    viewport()->update();
}

void ZNTOutputView::layoutChanged()
{
    const auto room = viewport()->width() - 2 * margin;
    rows.setColumns(static_cast<int>(std::floor(room / painter.cellWidth() + 0.001)));
    const auto inLine = rows.rowsOfLine(std::clamp(top.line, store_.firstLine(), store_.endLine() - 1));
    top.row = std::min(top.row, inLine - 1);
    refresh();
}

int ZNTOutputView::visibleRows() const
{
    return std::max(1, (viewport()->height() - 2 * margin) / painter.cellHeight());
}

ZNTRowPlace ZNTOutputView::topForEnd() const
{
    const auto last = store_.endLine() - 1;
    return rows.moved({last, rows.rowsOfLine(last) - 1}, 1 - visibleRows());
}

void ZNTOutputView::updateScrollBar()
{
    auto* bar = verticalScrollBar();
    const auto visible = visibleRows();
    const auto before = rows.rowsBefore(top);
    const auto range = std::max<std::int64_t>(0, rows.totalRows() - visible);
    settingScrollBar = true;
    bar->setPageStep(visible);
    bar->setRange(0, static_cast<int>(std::min<std::int64_t>(range, std::numeric_limits<int>::max())));
    bar->setValue(isFollowing && !isDragging ? bar->maximum() : static_cast<int>(before));
    settingScrollBar = false;
}

void ZNTOutputView::scrollContentsBy(int, int dy)
{
    if (settingScrollBar || dy == 0)
        return;
    const auto* bar = verticalScrollBar();
    rows.update();
    placeTop(bar->value() == bar->maximum() ? topForEnd() : rows.placeOfRow(bar->value()));
}

/// Shows `place` in the first row, or as near as the end allows; there, the view follows it again.
void ZNTOutputView::placeTop(ZNTRowPlace place)
{
    const auto lowest = topForEnd();
    top = std::min(place, lowest);
    setFollowing(top == lowest);
    updateScrollBar();
    updateMark();
    viewport()->update();
}

void ZNTOutputView::scrollByRows(std::int64_t count)
{
    rows.update();
    placeTop(rows.moved(top, count));
}

void ZNTOutputView::setFollowing(bool follows)
{
    if (follows == isFollowing)
        return;
    isFollowing = follows;
    endLineSeen = store_.endLine();
    Q_EMIT followsEndChanged(follows);
}

void ZNTOutputView::updateMark()
{
    if (isFollowing) {
        mark->hide();
        return;
    }
    const auto lines = newLinesBelow();
    const auto text = lines == 0   ? tr("More below")
                      : lines == 1 ? tr("1 new line below")
                                   : tr("%1 new lines below").arg(QLocale().toString(lines));
    const auto title = tr("\u2193 %1 \u00b7 Ctrl+End").arg(text);
    if (mark->text() != title) {
        mark->setText(title);
        mark->setAccessibleName(tr("%1, go to the end").arg(text));
        mark->adjustSize();
    }
    mark->move(viewport()->width() - mark->width() - 2 * margin,
               viewport()->height() - mark->height() - 2 * margin);
    mark->show();
}

void ZNTOutputView::jumpToEnd()
{
    rows.update();
    placeTop(topForEnd());
}

void ZNTOutputView::jumpToStart()
{
    rows.update();
    placeTop({store_.firstLine(), 0});
}

void ZNTOutputView::pageUp() { scrollByRows(1 - visibleRows()); }
void ZNTOutputView::pageDown() { scrollByRows(std::max(1, visibleRows() - 1)); }
void ZNTOutputView::lineUp() { scrollByRows(-1); }
void ZNTOutputView::lineDown() { scrollByRows(1); }
void ZNTOutputView::zoomIn() { setPointSize(pointSize() + 1); }
void ZNTOutputView::zoomOut() { setPointSize(pointSize() - 1); }
void ZNTOutputView::resetZoom() { setPointSize(12); }

void ZNTOutputView::resizeEvent(QResizeEvent* event)
{
    QAbstractScrollArea::resizeEvent(event);
    layoutChanged();
}

QSize ZNTOutputView::sizeForGrid(int columnCount, int rowCount) const
{
    const int width = static_cast<int>(std::ceil(columnCount * painter.cellWidth())) + 2 * margin;
    return {width + verticalScrollBar()->sizeHint().width() + 2 * frameWidth(),
            rowCount * painter.cellHeight() + 2 * margin + 2 * frameWidth()};
}

QSize ZNTOutputView::sizeHint() const { return sizeForGrid(80, 24); }

void ZNTOutputView::paintEvent(QPaintEvent* event)
{
    sincePaint.restart();
    QPainter canvas(viewport());
    canvas.fillRect(event->rect(), Qt::black);
    if (isEmpty() && !emptyHint.isEmpty()) {
        QFont larger = font();
        larger.setPointSizeF(larger.pointSizeF() * 1.25);
        canvas.setFont(larger);
        canvas.setPen(hintColour);
        znt::paintEmptyHint(canvas, viewport()->rect().adjusted(margin, margin, -margin, -margin), emptyHint,
                            Qt::AlignCenter);
    }
    rows.update();

    std::vector<std::uint32_t> starts;
    std::vector<Stretch> stretches;
    std::vector<std::pair<std::size_t, std::size_t>> matches;
    const auto grid = rows.grid();
    const int visible = visibleRows();
    int shown = 0, row = top.row;
    for (auto number = std::max(top.line, store_.firstLine()); number < store_.endLine() && shown < visible;
         ++number, row = 0) {
        const auto line = store_.line(number);
        znt::wrapLine(line.text, grid, starts);
        finder.matchesIn(line.text, matches);
        for (; row < static_cast<int>(starts.size()) && shown < visible; ++row, ++shown) {
            const auto index = static_cast<std::size_t>(row);
            const bool isLastRow = index + 1 == starts.size();
            const std::size_t from = starts[index], to = isLastRow ? line.text.size() : starts[index + 1];
            const QPointF corner(margin, margin + shown * painter.cellHeight());
            if (!event->rect().intersects(
                    QRect(0, static_cast<int>(corner.y()), viewport()->width(), painter.cellHeight())))
                continue;
            const auto start = line.start + static_cast<Position>(from);
            const auto end = line.start + static_cast<Position>(to);
            stretches.clear();
            store_.forEachRun(start, end,
                              [&](Position begin, Position until, ZNTOutputStore::StyleNumber style) {
                                  stretches.push_back({static_cast<std::size_t>(begin - start),
                                                       static_cast<std::size_t>(until - start),
                                                       store_.style(style), ZNTOutputPainter::Mark::None});
                              });
            const auto layOver = [&](ZNTOutputPainter::Mark look, Position begin, Position until) {
                if (begin < end && until > start)
                    lay(look, static_cast<std::size_t>(std::max(begin, start) - start),
                        static_cast<std::size_t>(std::min(until, end) - start), stretches);
            };
            for (const auto& [matchStart, matchEnd] : matches)
                layOver(ZNTOutputPainter::Mark::Match, line.start + static_cast<Position>(matchStart),
                        line.start + static_cast<Position>(matchEnd));
            if (hasSelection())
                layOver(ZNTOutputPainter::Mark::Selected, selectionStart(), selectionEnd());
            if (const auto& match = finder.currentMatch())
                layOver(ZNTOutputPainter::Mark::CurrentMatch, match->start, match->end);
            const auto text = line.text.substr(from, to - from);
            painter.drawRow(canvas, corner, text, grid, stretches);
        }
    }

    if (hasFocus()) {
        const auto area = characterRect(caret_);
        if (!area.isEmpty())
            canvas.fillRect(QRect(area.topLeft(), QSize(2, area.height())), Qt::white);
        canvas.setPen(QPen(focusFrame, 2));
        canvas.drawRect(viewport()->rect().adjusted(1, 1, -1, -1));
    }
}

// Places on the screen

ZNTOutputView::RowOfText ZNTOutputView::rowAtPlace(ZNTRowPlace place) const
{
    const auto line = store_.line(place.line);
    std::vector<std::uint32_t> starts;
    znt::wrapLine(line.text, rows.grid(), starts);
    const auto index = std::min(static_cast<std::size_t>(std::max(place.row, 0)), starts.size() - 1);
    const bool isLast = index + 1 == starts.size();
    const std::size_t from = starts[index], to = isLast ? line.text.size() : starts[index + 1];
    return {{place.line, static_cast<int>(index)},
            line.start + static_cast<Position>(from),
            line.text.substr(from, to - from),
            isLast};
}

ZNTOutputView::RowOfText ZNTOutputView::rowOf(Position position) const
{
    const auto number = store_.lineAt(position);
    const auto line = store_.line(number);
    std::vector<std::uint32_t> starts;
    znt::wrapLine(line.text, rows.grid(), starts);
    const auto offset =
        std::clamp<Position>(position - line.start, 0, static_cast<Position>(line.text.size()));
    const auto after = std::upper_bound(starts.begin(), starts.end(), static_cast<std::uint32_t>(offset));
    return rowAtPlace({number, static_cast<int>(after - starts.begin()) - 1});
}

ZNTOutputView::Position ZNTOutputView::positionInRow(const RowOfText& row, int column) const
{
    auto offset = row.text.size();
    znt::placeRow(row.text, rows.grid(), [&](const znt::PlacedCluster& cluster) {
        if (column >= cluster.column + cluster.width)
            return true;
        offset = cluster.offset;
        return false;
    });
    return row.start + static_cast<Position>(offset);
}

int ZNTOutputView::columnInRow(const RowOfText& row, Position position) const
{
    int column = 0;
    znt::placeRow(row.text, rows.grid(), [&](const znt::PlacedCluster& cluster) {
        if (row.start + static_cast<Position>(cluster.offset) >= position)
            return false;
        column = cluster.column + cluster.width;
        return true;
    });
    return column;
}

QRect ZNTOutputView::characterRect(Position position) const
{
    if (position < store_.start() || position > store_.end())
        return {};
    const auto row = rowOf(position);
    if (row.place < top)
        return {};
    auto at = top;
    int shown = -top.row; // rows from the top of the view down to the line's first
    for (; at.line < row.place.line && shown < visibleRows(); ++at.line)
        shown += rows.rowsOfLine(at.line);
    shown += row.place.row;
    if (at.line != row.place.line || shown >= visibleRows())
        return {};
    const int column = columnInRow(row, position);
    const int width = std::max(1, columnInRow(row, nextCluster(position)) - column);
    const int left = margin + static_cast<int>(std::floor(column * painter.cellWidth()));
    return {left, margin + shown * painter.cellHeight(),
            static_cast<int>(std::ceil(width * painter.cellWidth())), painter.cellHeight()};
}

ZNTOutputView::Position ZNTOutputView::positionAt(QPoint point) const
{
    const int row = std::clamp((point.y() - margin) / painter.cellHeight(), 0, visibleRows() - 1);
    const int column = static_cast<int>(std::floor((point.x() - margin) / painter.cellWidth()));
    return positionInRow(rowAtPlace(rows.moved(top, row)), std::max(column, 0));
}

std::pair<ZNTOutputView::Position, ZNTOutputView::Position> ZNTOutputView::rowAround(Position position) const
{
    const auto row = rowOf(position);
    return {row.start, row.start + static_cast<Position>(row.text.size())};
}

void ZNTOutputView::scrollToPosition(Position position)
{
    rows.update();
    const auto place = rowOf(std::clamp(position, store_.start(), store_.end())).place;
    const auto visible = visibleRows();
    if (place < top || rows.moved(top, visible - 1) < place) {
        const bool isNear = rows.moved(top, visible) == place || rows.moved(top, -1) == place;
        const int above = isNear ? (place < top ? 0 : visible - 1) : visible / 2;
        placeTop(rows.moved(place, -above));
    }
}

// Finding

void ZNTOutputView::find(const QString& text)
{
    const auto row = rowAtPlace(rows.moved(top, visibleRows() - 1));
    const auto from =
        hasSelection() ? selectionStart() + 1 : row.start + static_cast<Position>(row.text.size());
    const bool wasActive = finder.isActive();
    finder.setText(text.toStdU16String());
    if (finder.isActive()) {
        findTimer.start(0);
        showMatch(finder.previous(from));
        return;
    }
    findTimer.stop();
    viewport()->update();
    if (wasActive)
        Q_EMIT findStatusChanged({});
}

ZNTOutputFind::Status ZNTOutputView::findStatus() const { return finder.status(); }

void ZNTOutputView::findNext()
{
    const auto& match = finder.currentMatch();
    showMatch(finder.next(match ? match->end : selectionEnd()));
}

void ZNTOutputView::findPrevious()
{
    const auto& match = finder.currentMatch();
    showMatch(finder.previous(match ? match->start : selectionStart()));
}

void ZNTOutputView::showMatch(const std::optional<ZNTOutputFind::Match>& match)
{
    if (match) {
        const auto shown = *match; // selecting may drop the finder's own
        select(shown.start, shown.end);
    }
    viewport()->update();
    Q_EMIT findStatusChanged(finder.status());
}
