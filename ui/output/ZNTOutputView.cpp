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
constexpr QColor ruleColour(0x8A, 0x92, 0x9E); // 3 to 1 and more on black
constexpr QColor stripColour(0x26, 0x2A, 0x31);
constexpr int ruleRoom = 9; // above the row that the rule stands over
constexpr int ruleWidth = 2;

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
    std::erase_if(ruledLines, [this](std::int64_t line) { return line < store_.firstLine(); });
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
    ruledLines.clear();
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
    const double points = font.pointSizeF() > 0 ? font.pointSizeF() : base().size;
    const QStringList families = font.families();
    store_.setDefaultFont({(families.isEmpty() ? font.family() : families.first()).toStdU16String(),
                           std::clamp(points, smallestPointSize, largestPointSize)});
    changeZoom(fonts.zoom());
}

void ZNTOutputView::setPointSize(double points) { changeZoom(points / base().size); }

void ZNTOutputView::changeZoom(double factor)
{
    fonts.setZoom(std::clamp(factor, smallestPointSize / base().size, largestPointSize / base().size));
    layoutChanged();
    Q_EMIT shownFontChanged(shownFont());
}

void ZNTOutputView::beginSession()
{
    if (isEmpty())
        return;
    const auto line = store_.startFreshLine();
    if (!hasRule(line))
        ruledLines.push_back(line);
    scheduleRefresh();
}

bool ZNTOutputView::hasRule(std::int64_t line) const
{
    return std::binary_search(ruledLines.begin(), ruledLines.end(), line);
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
    rows.setRoom(room, [this](ZNTOutputStore::FontNumber font) { return fonts.face(font).cellWidth(); });
    const auto inLine = rows.rowsOfLine(std::clamp(top.line, store_.firstLine(), store_.endLine() - 1));
    top.row = std::min(top.row, inLine - 1);
    refresh();
}

int ZNTOutputView::textHeight() const
{
    return std::max(viewport()->height() - 2 * margin, baseFace().cellHeight());
}

/// Few where there is little room: what is read comes first.
int ZNTOutputView::lastRowsShown() const
{
    constexpr int fewRows = 6, enoughRows = 12, share = 5, most = 5;
    const int all = textHeight() / baseFace().cellHeight();
    return all >= enoughRows ? std::min(all / share, most) : all >= fewRows ? 1 : 0;
}

int ZNTOutputView::stripHeight() const { return mark->sizeHint().height() + 2; }

int ZNTOutputView::readingHeight(Split split) const
{
    const int row = baseFace().cellHeight();
    return split == Split::No ? textHeight()
                              : std::max(textHeight() - stripHeight() - lastRowsShown() * row, row);
}

std::vector<ZNTOutputView::Pane> ZNTOutputView::panes() const
{
    std::vector<Pane> found{{top, margin, readingHeight()}};
    const int height = lastRowsShown() * baseFace().cellHeight();
    if (!isFollowing && height > 0)
        found.push_back({highestAbove(lastRow(), height), viewport()->height() - margin - height, height});
    return found;
}

int ZNTOutputView::visibleRows() const { return rowsThatFit(top, readingHeight()); }

ZNTRowPlace ZNTOutputView::lastRow() const
{
    const auto last = store_.endLine() - 1;
    return {last, rows.rowsOfLine(last) - 1};
}

ZNTRowPlace ZNTOutputView::topForEnd() const { return highestAbove(lastRow(), textHeight()); }

ZNTRowPlace ZNTOutputView::highestAbove(ZNTRowPlace last, int room) const
{
    room -= heightOfRow(last);
    for (;;) {
        const auto above = rows.moved(last, -1);
        if (above == last)
            return last;
        room -= heightOfRow(above);
        if (room < 0)
            return last;
        last = above;
    }
}

int ZNTOutputView::rowsThatFit(ZNTRowPlace from, int room) const
{
    for (int count = 0;; ++count) {
        const int height = heightOfRow(from);
        if (height > room)
            return std::max(count, 1);
        room -= height;
        const auto below = rows.moved(from, 1);
        if (below == from)
            return count + 1 + room / baseFace().cellHeight();
        from = below;
    }
}

void ZNTOutputView::updateScrollBar()
{
    auto* bar = verticalScrollBar();
    const auto before = rows.rowsBefore(top);
    std::int64_t lastPage = 1;
    const auto last = lastRow();
    for (auto place = topForEnd(); place < last; place = rows.moved(place, 1))
        ++lastPage;
    const auto range = std::max<std::int64_t>(0, rows.totalRows() - lastPage);
    settingScrollBar = true;
    bar->setPageStep(visibleRows());
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
    mark->move(viewport()->width() - mark->width() - 2 * margin, margin + readingHeight() + 1);
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

void ZNTOutputView::pageUp()
{
    rows.update();
    // What was the first row is the last one then.
    const auto page = highestAbove(top, readingHeight(Split::Yes));
    placeTop(page == top ? rows.moved(top, -1) : page);
}

void ZNTOutputView::pageDown() { scrollByRows(std::max(1, visibleRows() - 1)); }
void ZNTOutputView::lineUp() { scrollByRows(-1); }
void ZNTOutputView::lineDown() { scrollByRows(1); }
void ZNTOutputView::zoomIn() { setPointSize(pointSize() + 1); }
void ZNTOutputView::zoomOut() { setPointSize(pointSize() - 1); }
void ZNTOutputView::resetZoom() { changeZoom(1); }

void ZNTOutputView::resizeEvent(QResizeEvent* event)
{
    QAbstractScrollArea::resizeEvent(event);
    layoutChanged();
}

QSize ZNTOutputView::sizeForGrid(int columnCount, int rowCount) const
{
    const int width = static_cast<int>(std::ceil(columnCount * baseFace().cellWidth())) + 2 * margin;
    return {width + verticalScrollBar()->sizeHint().width() + 2 * frameWidth(),
            rowCount * baseFace().cellHeight() + 2 * margin + 2 * frameWidth()};
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

    for (const auto& pane : panes())
        paintPane(canvas, pane, event->rect());
    if (!isFollowing)
        paintStrip(canvas);

    if (hasFocus()) {
        const auto area = characterRect(caret_);
        if (!area.isEmpty())
            canvas.fillRect(QRect(area.topLeft(), QSize(2, area.height())), Qt::white);
        canvas.setPen(QPen(focusFrame, 2));
        canvas.drawRect(viewport()->rect().adjusted(1, 1, -1, -1));
    }
}

void ZNTOutputView::paintPane(QPainter& canvas, const Pane& pane, const QRect& damaged)
{
    std::vector<std::uint32_t> starts;
    std::vector<Stretch> stretches;
    std::vector<std::pair<std::size_t, std::size_t>> matches;
    const int bottom = pane.y + pane.height;
    int y = pane.y, index = pane.top.row;
    for (auto number = std::max(pane.top.line, store_.firstLine()); number < store_.endLine();
         ++number, index = 0) {
        const auto line = store_.line(number);
        const auto grid = rows.gridOf(line);
        znt::wrapLine(line.text, grid.width, starts);
        finder.matchesIn(line.text, matches);
        for (; index < static_cast<int>(starts.size()); ++index) {
            const auto row = rowOfLine(line, number, starts, static_cast<std::size_t>(index));
            const auto size = sizeOf(row);
            if (y + size.height > bottom && y > pane.y)
                return;
            const QRect area(0, y, viewport()->width(), size.height);
            y += size.height;
            if (!damaged.intersects(area))
                continue;
            if (index == 0 && hasRule(number))
                canvas.fillRect(margin, area.top() + (ruleRoom - ruleWidth) / 2,
                                viewport()->width() - 2 * margin, ruleWidth, ruleColour);
            stretches.clear();
            store_.forEachRun(row.start, row.end(),
                              [&](Position begin, Position until, ZNTOutputStore::StyleNumber style) {
                                  stretches.push_back({static_cast<std::size_t>(begin - row.start),
                                                       static_cast<std::size_t>(until - row.start),
                                                       store_.style(style), ZNTOutputPainter::Mark::None});
                              });
            const auto layOver = [&](ZNTOutputPainter::Mark look, Position begin, Position until) {
                if (begin < row.end() && until > row.start)
                    lay(look, static_cast<std::size_t>(std::max(begin, row.start) - row.start),
                        static_cast<std::size_t>(std::min(until, row.end()) - row.start), stretches);
            };
            for (const auto& [matchStart, matchEnd] : matches)
                layOver(ZNTOutputPainter::Mark::Match, line.start + static_cast<Position>(matchStart),
                        line.start + static_cast<Position>(matchEnd));
            if (hasSelection())
                layOver(ZNTOutputPainter::Mark::Selected, selectionStart(), selectionEnd());
            if (const auto& match = finder.currentMatch())
                layOver(ZNTOutputPainter::Mark::CurrentMatch, match->start, match->end);
            const int rule = area.height() - size.textHeight;
            painter.drawRow(canvas,
                            {.corner = QPointF(margin, area.top() + rule),
                             .height = size.textHeight,
                             .ascent = size.ascent,
                             .column = grid.column},
                            row.text, grid.width.fromOffset(starts[static_cast<std::size_t>(index)]),
                            stretches);
        }
    }
}

/// Between what is read and the last rows; the mark stands in it.
void ZNTOutputView::paintStrip(QPainter& canvas) const
{
    canvas.fillRect(0, margin + readingHeight(), viewport()->width(), stripHeight(), stripColour);
}

// Places on the screen

ZNTOutputView::RowOfText ZNTOutputView::rowOfLine(const ZNTOutputStore::Line& line, std::int64_t number,
                                                  const std::vector<std::uint32_t>& starts, std::size_t index)
{
    const bool isLast = index + 1 == starts.size();
    const std::size_t from = starts[index], to = isLast ? line.text.size() : starts[index + 1];
    return {{number, static_cast<int>(index)},
            line.start + static_cast<Position>(from),
            line.text.substr(from, to - from),
            from,
            isLast,
            line.font};
}

ZNTOutputView::RowOfText ZNTOutputView::rowAtPlace(ZNTRowPlace place) const
{
    const auto line = store_.line(place.line);
    std::vector<std::uint32_t> starts;
    znt::wrapLine(line.text, rows.gridOf(line).width, starts);
    const auto index = std::min(static_cast<std::size_t>(std::max(place.row, 0)), starts.size() - 1);
    return rowOfLine(line, place.line, starts, index);
}

ZNTOutputView::RowSize ZNTOutputView::sizeOf(const RowOfText& row) const
{
    RowSize size{0, 0, 0};
    const auto include = [&](ZNTOutputStore::FontNumber font) {
        const auto& face = fonts.face(font);
        size.textHeight = std::max(size.textHeight, face.cellHeight());
        size.ascent = std::max(size.ascent, face.ascent());
    };
    if (row.font != ZNTOutputStore::severalFonts)
        include(row.font);
    else
        for (const auto& [start, font] : store_.fontsIn(row.start, row.end()))
            include(font);
    size.height = size.textHeight + (row.place.row == 0 && hasRule(row.place.line) ? ruleRoom : 0);
    return size;
}

int ZNTOutputView::heightOfRow(ZNTRowPlace place) const
{
    // Where one font is all there is, a row need not be looked for.
    if (store_.fonts().size() == 1)
        return fonts.face(0).cellHeight() + (place.row == 0 && hasRule(place.line) ? ruleRoom : 0);
    return sizeOf(rowAtPlace(place)).height;
}

ZNTOutputView::RowOfText ZNTOutputView::rowOf(Position position) const
{
    const auto number = store_.lineAt(position);
    const auto line = store_.line(number);
    std::vector<std::uint32_t> starts;
    znt::wrapLine(line.text, rows.gridOf(line).width, starts);
    const auto offset =
        std::clamp<Position>(position - line.start, 0, static_cast<Position>(line.text.size()));
    const auto after = std::upper_bound(starts.begin(), starts.end(), static_cast<std::uint32_t>(offset));
    return rowAtPlace({number, static_cast<int>(after - starts.begin()) - 1});
}

ZNTOutputView::Position ZNTOutputView::positionInRow(const RowOfText& row, qreal x) const
{
    const auto grid = rows.gridOfLine(row.place.line);
    auto offset = row.text.size();
    znt::placeRow(row.text, grid.width.fromOffset(row.offset), [&](const znt::PlacedCluster& cluster) {
        if (x >= (cluster.column + cluster.width) * grid.column)
            return true;
        offset = cluster.offset;
        return false;
    });
    return row.start + static_cast<Position>(offset);
}

qreal ZNTOutputView::xInRow(const RowOfText& row, Position position) const
{
    const auto grid = rows.gridOfLine(row.place.line);
    int column = 0;
    znt::placeRow(row.text, grid.width.fromOffset(row.offset), [&](const znt::PlacedCluster& cluster) {
        if (row.start + static_cast<Position>(cluster.offset) >= position)
            return false;
        column = cluster.column + cluster.width;
        return true;
    });
    return column * grid.column;
}

QRect ZNTOutputView::characterRect(Position position) const
{
    if (position < store_.start() || position > store_.end())
        return {};
    const auto row = rowOf(position);
    const auto size = sizeOf(row);
    for (const auto& pane : panes()) {
        if (row.place < pane.top)
            continue;
        int y = pane.y;
        for (auto place = pane.top; place < row.place && y < pane.y + pane.height;
             place = rows.moved(place, 1))
            y += heightOfRow(place);
        if (y + size.height > pane.y + pane.height && y > pane.y)
            continue;
        const qreal x = xInRow(row, position);
        const qreal advance = xInRow(row, nextCluster(position)) - x;
        const qreal width = advance > 0 ? advance : baseFace().cellWidth();
        return {margin + static_cast<int>(std::floor(x)), y + size.height - size.textHeight,
                static_cast<int>(std::ceil(width)), size.textHeight};
    }
    return {};
}

ZNTOutputView::Position ZNTOutputView::positionAt(QPoint point) const
{
    const auto all = panes();
    const auto& pane = point.y() >= all.back().y ? all.back() : all.front();
    auto place = pane.top;
    for (int y = pane.y + heightOfRow(place);; place = rows.moved(place, 1)) {
        const auto below = rows.moved(place, 1);
        if (point.y() < y || below == place)
            break;
        y += heightOfRow(below);
        if (y > pane.y + pane.height)
            break;
    }
    return positionInRow(rowAtPlace(place), std::max(point.x() - margin, 0));
}

std::pair<ZNTOutputView::Position, ZNTOutputView::Position> ZNTOutputView::rowAround(Position position) const
{
    const auto row = rowOf(position);
    return {row.start, row.end()};
}

void ZNTOutputView::scrollToPosition(Position position)
{
    rows.update();
    const auto place = rowOf(std::clamp(position, store_.start(), store_.end())).place;
    if (const auto end = topForEnd(); place >= end) {
        placeTop(end);
        return;
    }
    const auto last = rows.moved(top, visibleRows() - 1);
    if (place >= top && place <= last)
        return;
    const int room = readingHeight(Split::Yes);
    if (place == rows.moved(top, -1))
        placeTop(place);
    else
        placeTop(highestAbove(place, place == rows.moved(last, 1) ? room : room / 2));
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
