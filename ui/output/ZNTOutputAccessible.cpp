#include "ZNTOutputAccessible.h"

#include "ZNTOutputView.h"
#include "ZNTTextBreaks.h"

#include <QFontInfo>

#include <algorithm>
#include <limits>

namespace
{

// Of a flood only the end is announced, because the bus copies the text for each listener.
constexpr ZNTOutputStore::Position longestAnnouncement = 16384;

QString textOf(const ZNTOutputStore& store, std::int64_t from, std::int64_t to)
{
    return QString::fromStdU16String(store.text(from, to));
}

QString cssColour(ZNTColour colour)
{
    return QStringLiteral("rgb(%1,%2,%3)").arg(colour.red).arg(colour.green).arg(colour.blue);
}

} // namespace

ZNTOutputAccessible::ZNTOutputAccessible(ZNTOutputView& view)
    : QAccessibleWidget(&view, QAccessible::EditableText),
      view(view)
{
}

QAccessibleInterface* ZNTOutputAccessible::make(const QString&, QObject* object)
{
    auto* view = qobject_cast<ZNTOutputView*>(object);
    return view ? new ZNTOutputAccessible(*view) : nullptr;
}

void* ZNTOutputAccessible::interface_cast(QAccessible::InterfaceType type)
{
    if (type == QAccessible::TextInterface)
        return static_cast<QAccessibleTextInterface*>(this);
    return QAccessibleWidget::interface_cast(type);
}

QAccessible::State ZNTOutputAccessible::state() const
{
    auto state = QAccessibleWidget::state();
    state.readOnly = true;
    state.multiLine = true;
    state.selectableText = true;
    return state;
}

/// -1 means the end and -2 the caret.
std::int64_t ZNTOutputAccessible::positionOf(int offset) const
{
    if (offset == -1)
        return view.store().end();
    if (offset == -2)
        return view.caret();
    return std::clamp(view.store().start() + offset, view.store().start(), view.store().end());
}

int ZNTOutputAccessible::offsetOf(std::int64_t position) const
{
    return static_cast<int>(
        std::clamp<std::int64_t>(position - view.store().start(), 0, std::numeric_limits<int>::max()));
}

void ZNTOutputAccessible::selection(int index, int* startOffset, int* endOffset) const
{
    const bool isThere = index == 0 && view.hasSelection();
    *startOffset = isThere ? offsetOf(view.selectionStart()) : 0;
    *endOffset = isThere ? offsetOf(view.selectionEnd()) : 0;
}

int ZNTOutputAccessible::selectionCount() const { return view.hasSelection() ? 1 : 0; }

void ZNTOutputAccessible::addSelection(int startOffset, int endOffset)
{
    setSelection(0, startOffset, endOffset);
}

void ZNTOutputAccessible::removeSelection(int index)
{
    if (index == 0)
        view.select(view.caret(), view.caret());
}

void ZNTOutputAccessible::setSelection(int index, int startOffset, int endOffset)
{
    if (index == 0)
        view.select(positionOf(startOffset), positionOf(endOffset));
}

int ZNTOutputAccessible::cursorPosition() const { return offsetOf(view.caret()); }

void ZNTOutputAccessible::setCursorPosition(int offset)
{
    view.select(positionOf(offset), positionOf(offset));
}

QString ZNTOutputAccessible::text(int startOffset, int endOffset) const
{
    return textOf(view.store(), positionOf(startOffset), positionOf(endOffset));
}

int ZNTOutputAccessible::characterCount() const { return offsetOf(view.store().end()); }

/// The units of each kind cover the text without gaps. A "\n" belongs to the unit before it.
ZNTOutputAccessible::Range ZNTOutputAccessible::unitAround(std::int64_t position,
                                                           QAccessible::TextBoundaryType boundary) const
{
    const auto& store = view.store();
    const auto line = store.line(store.lineAt(position));
    const auto lineEnd = line.end() + (line.endsInBreak ? 1 : 0);
    const auto within = [&](znt::BreakKind kind) -> Range {
        if (position >= line.end())
            return {position, lineEnd};
        const auto [from, to] =
            znt::pieceAround(line.text, static_cast<std::size_t>(position - line.start), kind);
        return {line.start + static_cast<std::int64_t>(from), line.start + static_cast<std::int64_t>(to)};
    };
    switch (boundary) {
    case QAccessible::CharBoundary:
        return within(znt::BreakKind::Character);
    case QAccessible::WordBoundary:
        return within(znt::BreakKind::Word);
    case QAccessible::SentenceBoundary:
        return within(znt::BreakKind::Sentence);
    case QAccessible::LineBoundary: {
        const auto [from, to] = view.rowAround(position);
        return {from, to == line.end() ? lineEnd : to};
    }
    case QAccessible::ParagraphBoundary:
        return {line.start, lineEnd};
    case QAccessible::NoBoundary:
        break;
    }
    return {store.start(), store.end()};
}

QString ZNTOutputAccessible::answer(Range range, int* startOffset, int* endOffset) const
{
    *startOffset = offsetOf(range.first);
    *endOffset = offsetOf(range.second);
    return textOf(view.store(), range.first, range.second);
}

QString ZNTOutputAccessible::textAtOffset(int offset, QAccessible::TextBoundaryType boundary,
                                          int* startOffset, int* endOffset) const
{
    return answer(unitAround(positionOf(offset), boundary), startOffset, endOffset);
}

QString ZNTOutputAccessible::textBeforeOffset(int offset, QAccessible::TextBoundaryType boundary,
                                              int* startOffset, int* endOffset) const
{
    const auto here = unitAround(positionOf(offset), boundary);
    if (here.first <= view.store().start())
        return answer({here.first, here.first}, startOffset, endOffset);
    return answer(unitAround(here.first - 1, boundary), startOffset, endOffset);
}

QString ZNTOutputAccessible::textAfterOffset(int offset, QAccessible::TextBoundaryType boundary,
                                             int* startOffset, int* endOffset) const
{
    const auto here = unitAround(positionOf(offset), boundary);
    if (here.second >= view.store().end())
        return answer({here.second, here.second}, startOffset, endOffset);
    return answer(unitAround(here.second, boundary), startOffset, endOffset);
}

QRect ZNTOutputAccessible::characterRect(int offset) const
{
    const auto area = view.characterRect(positionOf(offset));
    if (area.isEmpty())
        return {};
    return {view.viewport()->mapToGlobal(area.topLeft()), area.size()};
}

int ZNTOutputAccessible::offsetAtPoint(const QPoint& point) const
{
    const auto inView = view.viewport()->mapFromGlobal(point);
    return view.viewport()->rect().contains(inView) ? offsetOf(view.positionAt(inView)) : -1;
}

void ZNTOutputAccessible::scrollToSubstring(int startIndex, int endIndex)
{
    view.scrollToPosition(positionOf(endIndex));
    view.scrollToPosition(positionOf(startIndex));
}

/// By the names of the IAccessible2 text attributes, which AT-SPI shares.
QString ZNTOutputAccessible::attributes(int offset, int* startOffset, int* endOffset) const
{
    const auto position = positionOf(offset);
    const auto [from, to] = unitAround(position, QAccessible::ParagraphBoundary);
    Range range{position, position};
    ZNTOutputStyle style;
    view.store().forEachRun(from, to, [&](auto begin, auto end, auto number) {
        if (position < begin || position >= end)
            return;
        range = {begin, end};
        style = view.store().style(number);
    });
    *startOffset = offsetOf(range.first);
    *endOffset = offsetOf(range.second);
    const QFont font = view.shownFontOf(style);
    QString described = QStringLiteral("font-family:\"%1\";font-size:%2pt;color:%3;background-color:%4;")
                            .arg(QFontInfo(font).family())
                            .arg(font.pointSizeF())
                            .arg(cssColour(style.foreground), cssColour(style.background));
    described += style.isBold ? QStringLiteral("font-weight:bold;") : QStringLiteral("font-weight:normal;");
    if (style.isUnderlined)
        described += QStringLiteral("text-underline-style:solid;text-underline-type:single;");
    if (style.isItalic)
        described += QStringLiteral("font-style:italic;");
    if (style.isStruck)
        described += QStringLiteral("text-line-through-style:solid;text-line-through-type:single;");
    return described;
}

// What the view announces

void ZNTOutputView::announceAppended()
{
    const auto from = std::max(announcedEnd, store_.end() - longestAnnouncement);
    announcedEnd = store_.end();
    if (from >= store_.end() || !QAccessible::isActive())
        return;
    QAccessibleTextInsertEvent event(this, static_cast<int>(from - store_.start()),
                                     textOf(store_, from, store_.end()));
    QAccessible::updateAccessibility(&event);
}

/// Announces only caret moves that the player makes. A caret that stays at the end of arriving text must not
/// draw a reader's attention.
void ZNTOutputView::announceCaret(bool moved, bool selectionChanged)
{
    if (!QAccessible::isActive())
        return;
    const auto offset = [this](Position position) { return static_cast<int>(position - store_.start()); };
    if (moved) {
        QAccessibleTextCursorEvent event(this, offset(caret()));
        QAccessible::updateAccessibility(&event);
    }
    // A search selects while its field has the focus. The find bar announces what it finds, in whole lines.
    if (selectionChanged && hasFocus()) {
        QAccessibleTextSelectionEvent event(this, offset(selectionStart()), offset(selectionEnd()));
        event.setCursorPosition(offset(caret()));
        QAccessible::updateAccessibility(&event);
    }
}

void ZNTOutputView::announceRemoved(qsizetype length)
{
    if (length <= 0 || !QAccessible::isActive())
        return;
    // The text is gone already. Listeners need its place and its length only.
    QAccessibleTextRemoveEvent event(
        this, 0, QString(std::min<qsizetype>(length, longestAnnouncement), QChar(QChar::Space)));
    QAccessible::updateAccessibility(&event);
}
