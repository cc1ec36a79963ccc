#include "ZNTOutputView.h"

#include "ZNTEmptyHint.h"
#include "ZNTNewLinesMark.h"
#include "ZNTOutputAccessible.h"

#include <QDateTime>
#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>

#include <algorithm>
#include <cmath>

// The widget: text that arrives, painting, scrolling, search. Keys, mouse and caret are in
// ZNTOutputViewInput.cpp, web addresses and times in ZNTOutputViewDetails.cpp. It joins its parts and Qt's
// events; rows, places and colours are found by the parts.

namespace
{

constexpr int leastPaintInterval = 16; // milliseconds
constexpr int countingSlice = 6;       // milliseconds of counting matches per turn
constexpr QColor focusFrame(0x6C, 0xB4, 0xFF);
constexpr QColor hintColour(0xA8, 0xAE, 0xB8);
constexpr QColor stripColour(0x26, 0x2A, 0x31);

} // namespace

ZNTOutputView::ZNTOutputView(QWidget* parent)
    : QAbstractScrollArea(parent),
      mark(new ZNTNewLinesMark(*viewport())),
      scrolling(store_, fonts, textLayout, *viewport(), *mark),
      clock([] { return static_cast<std::uint32_t>(QDateTime::currentSecsSinceEpoch()); })
{
    QAccessible::installFactory(&ZNTOutputAccessible::make);
    setObjectName(QStringLiteral("textFromServer"));
    setAccessibleName(tr("Game output"));
    setFocusPolicy(Qt::StrongFocus);
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(
        Qt::ScrollBarAlwaysOn); // a bar that comes with the first full page would change the grid's width
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
    viewport()->setCursor(Qt::IBeamCursor);

    connect(mark, &ZNTNewLinesMark::clicked, this, &ZNTOutputView::jumpToEnd);

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
    store_.append(text, clock());
    noteDropped(oldStart);
    if (wasEmpty)
        noteEmptiness();
    selection.textAdded(store_.end());
    scheduleRefresh();
}

void ZNTOutputView::noteDropped(Position oldStart)
{
    const auto start = store_.start();
    if (start == oldStart)
        return;
    announcedEnd = std::max(announcedEnd, start);
    selection.textDropped(start);
    textLayout.dropOldRules();
    announceRemoved(start - oldStart);
}

void ZNTOutputView::scrollToEnd()
{
    if (scrolling.isFollowing())
        scheduleRefresh();
}

void ZNTOutputView::clear()
{
    const auto length = store_.end() - store_.start();
    const bool hadSelection = hasSelection();
    store_.clear();
    textLayout.forgetRules();
    announcedEnd = store_.end();
    selection.set(announcedEnd, announcedEnd, announcedEnd);
    isDragging = false;
    dragTimer.stop();
    finder.loseCurrent();
    announceRemoved(length);
    noteEmptiness();
    if (scrolling.setFollowing(true))
        Q_EMIT followsEndChanged(true);
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
    textLayout.addRule(store_.startFreshLine());
    scheduleRefresh();
}

void ZNTOutputView::setAmbiguousWidth(znt::AmbiguousWidth width)
{
    if (width == store_.ambiguousWidth())
        return;
    store_.setAmbiguousWidth(width);
    textLayout.rows().reset();
    layoutChanged();
}

void ZNTOutputView::setReadableColours(bool readable)
{
    panePainter.setReadableColours(readable);
    viewport()->update();
}

void ZNTOutputView::setEmptyHint(const QString& words)
{
    emptyHint = words;
    describeWhileEmpty();
    viewport()->update();
}

void ZNTOutputView::coverEmptyHint(bool isCovered)
{
    isHintCovered = isCovered;
    viewport()->update();
}

void ZNTOutputView::noteEmptiness()
{
    describeWhileEmpty();
    Q_EMIT emptinessChanged();
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

// Painting and scrolling

void ZNTOutputView::scheduleRefresh()
{
    if (!refreshTimer.isActive())
        refreshTimer.start(std::max(0, leastPaintInterval - static_cast<int>(sincePaint.elapsed())));
}

/// Shows what was appended.
void ZNTOutputView::refresh()
{
    textLayout.rows().update();
    scrolling.keepUp(/*holdsStill=*/isDragging);
    updateScrollBar();
    updateMark();
    if (finder.isActive()) {
        findTimer.start(0); // goes on counting, and reports
    }
    announceAppended();
    viewport()->update();
}

void ZNTOutputView::layoutChanged()
{
    textLayout.setRoom(viewport()->width() - 2 * ZNTOutputLayout::margin);
    scrolling.keepRowInItsLine();
    refresh();
    Q_EMIT gridChanged();
}

void ZNTOutputView::updateScrollBar()
{
    auto* bar = verticalScrollBar();
    const auto before = textLayout.rows().rowsBefore(scrolling.top());
    const auto range = std::max<std::int64_t>(0, textLayout.rows().totalRows() - scrolling.rowsOfLastPage());
    settingScrollBar = true;
    bar->setPageStep(visibleRows());
    bar->setRange(0, static_cast<int>(std::min<std::int64_t>(range, std::numeric_limits<int>::max())));
    bar->setValue(scrolling.isFollowing() && !isDragging ? bar->maximum() : static_cast<int>(before));
    settingScrollBar = false;
}

void ZNTOutputView::scrollContentsBy(int, int dy)
{
    if (settingScrollBar || dy == 0)
        return;
    const auto* bar = verticalScrollBar();
    textLayout.rows().update();
    placeTop(bar->value() == bar->maximum() ? scrolling.topForEnd()
                                            : textLayout.rows().placeOfRow(bar->value()));
}

/// Shows `place` in the first row, or as near to it as the end allows. At the end the view follows again.
void ZNTOutputView::placeTop(ZNTRowPlace place)
{
    if (scrolling.moveTo(place))
        Q_EMIT followsEndChanged(scrolling.isFollowing());
    updateScrollBar();
    updateMark();
    viewport()->update();
}

void ZNTOutputView::scrollByRows(std::int64_t count)
{
    textLayout.rows().update();
    placeTop(textLayout.rows().moved(scrolling.top(), count));
}

void ZNTOutputView::updateMark()
{
    if (scrolling.isFollowing())
        mark->hide();
    else
        mark->show(newLinesBelow(), ZNTOutputLayout::margin + scrolling.readingHeight() + 1);
}

void ZNTOutputView::jumpToEnd()
{
    textLayout.rows().update();
    placeTop(scrolling.topForEnd());
}

void ZNTOutputView::pageUp()
{
    textLayout.rows().update();
    placeTop(scrolling.topOfPageAbove());
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
    const int width =
        static_cast<int>(std::ceil(columnCount * baseFace().cellWidth())) + 2 * ZNTOutputLayout::margin;
    return {width + verticalScrollBar()->sizeHint().width() + 2 * frameWidth(),
            rowCount * baseFace().cellHeight() + 2 * ZNTOutputLayout::margin + 2 * frameWidth()};
}

QSize ZNTOutputView::sizeHint() const { return sizeForGrid(80, 24); }

void ZNTOutputView::paintEvent(QPaintEvent* event)
{
    sincePaint.restart();
    QPainter canvas(viewport());
    canvas.fillRect(event->rect(), Qt::black);
    if (isEmpty() && !emptyHint.isEmpty() && !isHintCovered) {
        QFont larger = font();
        larger.setPointSizeF(larger.pointSizeF() * 1.25);
        canvas.setFont(larger);
        canvas.setPen(hintColour);
        znt::paintEmptyHint(canvas,
                            viewport()->rect().adjusted(ZNTOutputLayout::margin, ZNTOutputLayout::margin,
                                                        -ZNTOutputLayout::margin, -ZNTOutputLayout::margin),
                            emptyHint, Qt::AlignCenter);
    }
    textLayout.rows().update();

    for (const auto& pane : scrolling.panes())
        panePainter.paint(canvas, pane, event->rect(), viewport()->width(),
                          {selection.start(), selection.end()});
    if (!scrolling.isFollowing()) // between what is read and the last rows; the mark stands in it
        canvas.fillRect(0, ZNTOutputLayout::margin + scrolling.readingHeight(), viewport()->width(),
                        scrolling.stripHeight(), stripColour);

    if (hasFocus()) {
        const auto area = characterRect(selection.caret());
        if (!area.isEmpty())
            canvas.fillRect(QRect(area.topLeft(), QSize(2, area.height())), Qt::white);
        canvas.setPen(QPen(focusFrame, 2));
        canvas.drawRect(viewport()->rect().adjusted(1, 1, -1, -1));
    }
}

// Places on the screen

QRect ZNTOutputView::characterRect(Position position) const { return places.characterRect(position); }
ZNTOutputView::Position ZNTOutputView::positionAt(QPoint point) const { return places.positionAt(point); }

std::pair<ZNTOutputView::Position, ZNTOutputView::Position> ZNTOutputView::rowAround(Position position) const
{
    const auto row = textLayout.rowOf(position);
    return {row.start, row.end()};
}

void ZNTOutputView::scrollToPosition(Position position)
{
    textLayout.rows().update();
    const auto place = textLayout.rowOf(std::clamp(position, store_.start(), store_.end())).place;
    if (const auto top = scrolling.topToShow(place))
        placeTop(*top);
}

// Finding

void ZNTOutputView::find(const QString& text)
{
    const auto lastVisible = textLayout.rows().moved(scrolling.top(), visibleRows() - 1);
    const auto from = hasSelection() ? selectionStart() + 1 : textLayout.rowAtPlace(lastVisible).end();
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
        const auto shown = *match; // a copy, because selecting may drop the finder's match
        select(shown.start, shown.end);
    }
    viewport()->update();
    Q_EMIT findStatusChanged(finder.status());
}
