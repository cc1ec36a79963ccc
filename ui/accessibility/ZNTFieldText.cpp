#include "ZNTFieldText.h"

#include <QFontMetrics>
#include <QLineEdit>
#include <QTextBoundaryFinder>
#include <algorithm>

namespace
{

constexpr QChar dot(0x2022);

QTextBoundaryFinder::BoundaryType finderOf(QAccessible::TextBoundaryType boundary)
{
    switch (boundary) {
    case QAccessible::WordBoundary:
        return QTextBoundaryFinder::Word;
    case QAccessible::SentenceBoundary:
        return QTextBoundaryFinder::Sentence;
    default:
        return QTextBoundaryFinder::Grapheme;
    }
}

/// Whether a piece may begin here. A word begins with the word itself, not with the blanks before it.
bool isBeginning(const QTextBoundaryFinder& finder)
{
    return finder.type() != QTextBoundaryFinder::Word ||
           finder.boundaryReasons().testFlag(QTextBoundaryFinder::StartOfItem);
}

} // namespace

QString ZNTFieldText::shownText(const QLineEdit& field)
{
    switch (field.echoMode()) {
    case QLineEdit::Normal:
        return field.text();
    case QLineEdit::NoEcho:
        return {};
    case QLineEdit::Password:
    case QLineEdit::PasswordEchoOnEdit:
        break;
    }
    return QString(field.text().size(), dot);
}

int ZNTFieldText::characterCount() const { return static_cast<int>(shownText(field()).size()); }

int ZNTFieldText::positionOf(int offset) const
{
    if (offset == -1)
        return characterCount();
    return std::clamp(offset == -2 ? field().cursorPosition() : offset, 0, characterCount());
}

void ZNTFieldText::selection(int index, int* startOffset, int* endOffset) const
{
    const bool isThere = index == 0 && field().hasSelectedText();
    *startOffset = isThere ? positionOf(field().selectionStart()) : 0;
    *endOffset = isThere ? positionOf(field().selectionEnd()) : 0;
}

int ZNTFieldText::selectionCount() const { return field().hasSelectedText() ? 1 : 0; }

void ZNTFieldText::addSelection(int startOffset, int endOffset) { setSelection(0, startOffset, endOffset); }

void ZNTFieldText::removeSelection(int index)
{
    if (index == 0)
        field().deselect();
}

void ZNTFieldText::setSelection(int index, int startOffset, int endOffset)
{
    const int start = positionOf(startOffset);
    if (index == 0)
        field().setSelection(start, positionOf(endOffset) - start);
}

int ZNTFieldText::cursorPosition() const { return positionOf(field().cursorPosition()); }

void ZNTFieldText::setCursorPosition(int offset) { field().setCursorPosition(positionOf(offset)); }

QString ZNTFieldText::text(int startOffset, int endOffset) const
{
    const int start = positionOf(startOffset);
    return shownText(field()).mid(start, std::max(0, positionOf(endOffset) - start));
}

ZNTFieldText::Range ZNTFieldText::pieceAround(int position, QAccessible::TextBoundaryType boundary) const
{
    const QString shown = shownText(field());
    const int end = static_cast<int>(shown.size());
    switch (boundary) {
    case QAccessible::CharBoundary:
    case QAccessible::WordBoundary:
    case QAccessible::SentenceBoundary:
        break;
    default: // one line is one paragraph, too
        return {0, end};
    }
    if (position >= end)
        return {end, end};
    // The finder answers -1 when it is past the last boundary, so each loop ends with the text.
    QTextBoundaryFinder finder(finderOf(boundary), shown);
    Range piece{0, end};
    for (auto next = finder.toNextBoundary(); next >= 0 && next < end; next = finder.toNextBoundary()) {
        if (!isBeginning(finder))
            continue;
        if (next > position) {
            piece.second = static_cast<int>(next);
            break;
        }
        piece.first = static_cast<int>(next);
    }
    return piece;
}

QString ZNTFieldText::answer(Range range, int* startOffset, int* endOffset) const
{
    std::tie(*startOffset, *endOffset) = range;
    return shownText(field()).mid(range.first, range.second - range.first);
}

QString ZNTFieldText::textAtOffset(int offset, QAccessible::TextBoundaryType boundary, int* startOffset,
                                   int* endOffset) const
{
    return answer(pieceAround(positionOf(offset), boundary), startOffset, endOffset);
}

QString ZNTFieldText::textBeforeOffset(int offset, QAccessible::TextBoundaryType boundary, int* startOffset,
                                       int* endOffset) const
{
    const int here = pieceAround(positionOf(offset), boundary).first;
    return answer(here == 0 ? Range{0, 0} : pieceAround(here - 1, boundary), startOffset, endOffset);
}

QString ZNTFieldText::textAfterOffset(int offset, QAccessible::TextBoundaryType boundary, int* startOffset,
                                      int* endOffset) const
{
    const int after = pieceAround(positionOf(offset), boundary).second;
    const bool isLast = after >= characterCount();
    return answer(isLast ? Range{after, after} : pieceAround(after, boundary), startOffset, endOffset);
}

QRect ZNTFieldText::characterRect(int offset) const
{
    const QLineEdit& line = field();
    const QString shown = shownText(line);
    const int position = positionOf(offset);
    if (position >= shown.size())
        return {};
    // The caret is the one place in the text that a line edit names.
    const QRect caret = line.inputMethodQuery(Qt::ImCursorRectangle).toRect();
    const QFontMetrics metrics = line.fontMetrics();
    const auto advance = [&](qsizetype length) { return metrics.horizontalAdvance(shown.left(length)); };
    const int left = caret.center().x() - advance(line.cursorPosition()) + advance(position);
    const auto [from, to] = pieceAround(position, QAccessible::CharBoundary);
    return {line.mapToGlobal(QPoint(left, caret.top())), QSize(advance(to) - advance(from), caret.height())};
}

int ZNTFieldText::offsetAtPoint(const QPoint& point) const
{
    QLineEdit& line = field();
    const QPoint inField = line.mapFromGlobal(point);
    return line.rect().contains(inField) ? positionOf(line.cursorPositionAt(inField)) : -1;
}

void ZNTFieldText::scrollToSubstring(int startIndex, int endIndex)
{
    setCursorPosition(endIndex);
    setCursorPosition(startIndex);
}

/// All of the text has the same attributes. Orca reads a line run by run: with runs of no length it leaves
/// out the last letter.
QString ZNTFieldText::attributes(int, int* startOffset, int* endOffset) const
{
    *startOffset = 0;
    *endOffset = characterCount();
    return {};
}

void ZNTFieldText::deleteText(int startOffset, int endOffset) { replaceText(startOffset, endOffset, {}); }

void ZNTFieldText::insertText(int offset, const QString& text) { replaceText(offset, offset, text); }

void ZNTFieldText::replaceText(int startOffset, int endOffset, const QString& text)
{
    QLineEdit& line = field();
    if (line.isReadOnly() || !line.isEnabled())
        return;
    line.setCursorPosition(positionOf(startOffset));
    setSelection(0, startOffset, endOffset);
    line.insert(text); // in the place of what is selected; the field's validator decides
}
