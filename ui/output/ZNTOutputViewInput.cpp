#include "ZNTOutputView.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QScrollBar>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace
{

constexpr int dragScrollInterval = 40; // milliseconds a row while the mouse is held past an edge
constexpr int wheelNotch = 120;        // eighths of a degree

bool isCopyKey(const QKeyEvent* event)
{
    return event->matches(QKeySequence::Copy) ||
           (event->key() == Qt::Key_Insert && event->modifiers() == Qt::ControlModifier);
}

/// Keys that type into the command line, correct it or send it.
bool belongsIntoCommandLine(const QKeyEvent* event)
{
    if (event->matches(QKeySequence::Paste))
        return true;
    if (event->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier))
        return false;
    switch (event->key()) {
    case Qt::Key_Backspace:
    case Qt::Key_Delete:
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return true;
    default:
        return !event->text().isEmpty() && event->text().at(0).isPrint();
    }
}

} // namespace

bool ZNTOutputView::event(QEvent* event)
{
    // In this view these keys copy and select. The window's own shortcuts come second.
    if (event->type() == QEvent::ShortcutOverride) {
        auto* key = static_cast<QKeyEvent*>(event);
        if (isCopyKey(key) ? hasSelection() : key->matches(QKeySequence::SelectAll)) {
            event->accept();
            return true;
        }
    }
    return QAbstractScrollArea::event(event);
}

void ZNTOutputView::keyPressEvent(QKeyEvent* event)
{
    if (isCopyKey(event)) {
        copy();
    } else if (event->matches(QKeySequence::SelectAll)) {
        selectAll();
    } else if (moveCaretByKey(event)) {
        return;
    } else if (belongsIntoCommandLine(event)) {
        Q_EMIT keyForCommandLine(event);
    } else {
        event->ignore();
    }
}

bool ZNTOutputView::moveCaretByKey(QKeyEvent* event)
{
    const auto held = event->modifiers() & ~Qt::KeypadModifier;
    if ((held & ~(Qt::ShiftModifier | Qt::ControlModifier)) ||
        (event->modifiers() & Qt::KeypadModifier && !event->text().isEmpty()))
        return false;
    const bool byMore = held & Qt::ControlModifier;
    const auto selecting = held & Qt::ShiftModifier ? Selecting::Yes : Selecting::No;
    const int page = std::max(1, visibleRows() - 1);
    switch (event->key()) {
    case Qt::Key_Left:
        moveCaret(byMore ? textLayout.previousWord(caret()) : textLayout.previousCluster(caret()), selecting);
        return true;
    case Qt::Key_Right:
        moveCaret(byMore ? textLayout.nextWord(caret()) : textLayout.nextCluster(caret()), selecting);
        return true;
    case Qt::Key_Up:
        byMore ? lineUp() : moveCaretByRows(-1, selecting);
        return true;
    case Qt::Key_Down:
        byMore ? lineDown() : moveCaretByRows(1, selecting);
        return true;
    case Qt::Key_PageUp:
        moveCaretByRows(-page, selecting);
        return true;
    case Qt::Key_PageDown:
        moveCaretByRows(page, selecting);
        return true;
    case Qt::Key_Home:
        moveCaret(byMore ? store_.start() : textLayout.rowOf(caret()).start, selecting);
        return true;
    case Qt::Key_End: {
        const auto row = textLayout.rowOf(caret());
        const auto end = row.isLastOfLine ? row.end() : textLayout.previousCluster(row.end());
        moveCaret(byMore ? store_.end() : end, selecting);
        if (byMore)
            jumpToEnd();
        return true;
    }
    default:
        return false;
    }
}

void ZNTOutputView::moveCaret(Position to, Selecting selecting)
{
    caretX = -1;
    setSelection(selecting == Selecting::Yes ? selection.anchor() : to, to);
    scrollToPosition(caret());
}

void ZNTOutputView::moveCaretByRows(std::int64_t count, Selecting selecting)
{
    textLayout.rows().update();
    const auto row = textLayout.rowOf(caret());
    if (caretX < 0)
        caretX = textLayout.xInRow(row, caret());
    const qreal x = caretX;
    const auto next = textLayout.rowAtPlace(textLayout.rows().moved(row.place, count));
    auto to = textLayout.positionInRow(next, x);
    if (!next.isLastOfLine && to == next.end())
        to = textLayout.previousCluster(to); // the end of a wrapped row is the beginning of the next
    moveCaret(to, selecting);
    caretX = x;
}

void ZNTOutputView::select(Position from, Position to)
{
    setSelection(std::clamp(from, store_.start(), store_.end()),
                 std::clamp(to, store_.start(), store_.end()));
    scrollToPosition(to);
}

void ZNTOutputView::setSelection(Position newAnchor, Position newCaret)
{
    const bool hadSelection = hasSelection();
    const bool selectionChanged = hadSelection || newAnchor != newCaret;
    const bool caretMoved = newCaret != caret();
    selection.set(newAnchor, newCaret, store_.end());
    viewport()->update();
    announceCaret(caretMoved, selectionChanged);
    if (hadSelection != hasSelection())
        Q_EMIT copyAvailable(hasSelection());
}

QString ZNTOutputView::selectedText() const
{
    return QString::fromStdU16String(store_.text(selectionStart(), selectionEnd()));
}

void ZNTOutputView::copy()
{
    if (hasSelection())
        QApplication::clipboard()->setText(selectedText());
}

void ZNTOutputView::selectAll() { setSelection(store_.start(), store_.end()); }

void ZNTOutputView::offerPrimarySelection()
{
    auto* clipboard = QApplication::clipboard();
    if (hasSelection() && clipboard->supportsSelection())
        clipboard->setText(selectedText(), QClipboard::Selection);
}

// Mouse

std::pair<ZNTOutputView::Position, ZNTOutputView::Position> ZNTOutputView::unitAround(Position position) const
{
    switch (selectBy) {
    case SelectBy::Word:
        return textLayout.wordAround(position);
    case SelectBy::Line:
        return textLayout.lineAround(position);
    case SelectBy::Character:
        break;
    }
    return {position, position};
}

void ZNTOutputView::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton) {
        QAbstractScrollArea::mousePressEvent(event);
        return;
    }
    const auto point = event->position().toPoint();
    const bool isThirdClick =
        sinceDoubleClick.isValid() && sinceDoubleClick.elapsed() < QApplication::doubleClickInterval() &&
        (point - doubleClickPoint).manhattanLength() < QApplication::startDragDistance();
    sinceDoubleClick.invalidate();
    selectBy = isThirdClick ? SelectBy::Line : SelectBy::Character;
    isDragging = true;
    dragPoint = point;
    caretX = -1;
    const auto position = positionAt(point);
    if (event->modifiers() & Qt::ShiftModifier) {
        dragOrigin = {selection.anchor(), selection.anchor()};
        extendTo(position);
        return;
    }
    dragOrigin = unitAround(position);
    setSelection(dragOrigin.first, dragOrigin.second);
}

void ZNTOutputView::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return;
    doubleClickPoint = event->position().toPoint();
    sinceDoubleClick.start();
    selectBy = SelectBy::Word;
    isDragging = true;
    dragPoint = doubleClickPoint;
    dragOrigin = unitAround(positionAt(doubleClickPoint));
    setSelection(dragOrigin.first, dragOrigin.second);
}

void ZNTOutputView::mouseMoveEvent(QMouseEvent* event)
{
    if (!isDragging) {
        showPointer(event->position().toPoint());
        return;
    }
    dragPoint = event->position().toPoint();
    const bool isOutside = dragPoint.y() < 0 || dragPoint.y() >= viewport()->height();
    if (!isOutside)
        dragTimer.stop();
    else if (!dragTimer.isActive())
        dragTimer.start(dragScrollInterval);
    // Half a cell to the right, so that the nearest boundary is taken.
    const auto nearest = QPoint(static_cast<int>(std::lround(baseFace().cellWidth() / 2)), 0);
    extendTo(positionAt(selectBy == SelectBy::Character ? dragPoint + nearest : dragPoint));
}

/// Selects from the place of the first click to `position`, by whole units.
void ZNTOutputView::extendTo(Position position)
{
    const auto unit = unitAround(position);
    if (unit.first < dragOrigin.first)
        setSelection(dragOrigin.second, unit.first);
    else
        setSelection(dragOrigin.first, std::max(unit.second, dragOrigin.second));
}

void ZNTOutputView::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton || !isDragging)
        return;
    isDragging = false;
    dragTimer.stop();
    offerPrimarySelection();
    scheduleRefresh(); // the view did not follow the end meanwhile
    if (const auto address = webAddressAt(event->position().toPoint());
        !address.isEmpty() && !hasSelection() && selectBy == SelectBy::Character)
        Q_EMIT webAddressClicked(address);
}

void ZNTOutputView::wheelEvent(QWheelEvent* event)
{
    wheelRemainder += event->angleDelta().y();
    const bool zooms = event->modifiers() & Qt::ControlModifier;
    const int step =
        zooms ? wheelNotch : std::max(1, wheelNotch / std::max(1, QApplication::wheelScrollLines()));
    const int count = wheelRemainder / step;
    wheelRemainder -= count * step;
    if (count != 0)
        zooms ? setPointSize(pointSize() + count) : scrollByRows(-count);
    event->accept();
}

void ZNTOutputView::contextMenuEvent(QContextMenuEvent* event)
{
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addAction(tr("&Copy"), this, &ZNTOutputView::copy)->setEnabled(hasSelection());
    menu->addAction(tr("Select &all"), this, &ZNTOutputView::selectAll);
    menu->addAction(tr("Go to the &end"), this, &ZNTOutputView::jumpToEnd)->setEnabled(!followsEnd());
    if (!actions().isEmpty()) {
        menu->addSeparator();
        menu->addActions(actions());
    }
    menu->popup(event->globalPos());
}

void ZNTOutputView::focusInEvent(QFocusEvent* event)
{
    QAbstractScrollArea::focusInEvent(event);
    viewport()->update();
}

void ZNTOutputView::focusOutEvent(QFocusEvent* event)
{
    QAbstractScrollArea::focusOutEvent(event);
    viewport()->update();
}
