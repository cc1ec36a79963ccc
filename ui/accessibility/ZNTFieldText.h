#pragma once

#include <QAccessible>
#include <utility>

class QLineEdit;

/// The text of a one-line field for screen readers, with its caret, its selection and the places of its
/// characters. Every question ends, at every offset: Qt's own answer for the word at the end of a text loops
/// for ever (QAccessibleTextInterface::textAtOffset, Qt 6.4).
///
/// Offsets count UTF-16 units. -1 means the end and -2 the caret; any other offset is taken to the nearest
/// end of the text. The pieces of one kind cover the text without gaps: blanks belong to the word before
/// them. At the end of the text is a last, empty piece. A line is the whole text, also there.
///
/// A field that hides its text answers with as many dots.
class ZNTFieldText : public QAccessibleTextInterface, public QAccessibleEditableTextInterface
{
public:
    void selection(int index, int* startOffset, int* endOffset) const override;
    [[nodiscard]] int selectionCount() const override;
    void addSelection(int startOffset, int endOffset) override;
    void removeSelection(int index) override;
    void setSelection(int index, int startOffset, int endOffset) override;
    [[nodiscard]] int cursorPosition() const override;
    void setCursorPosition(int offset) override;

    [[nodiscard]] QString text(int startOffset, int endOffset) const override;
    QString textBeforeOffset(int offset, QAccessible::TextBoundaryType boundary, int* startOffset,
                             int* endOffset) const override;
    QString textAfterOffset(int offset, QAccessible::TextBoundaryType boundary, int* startOffset,
                            int* endOffset) const override;
    QString textAtOffset(int offset, QAccessible::TextBoundaryType boundary, int* startOffset,
                         int* endOffset) const override;
    [[nodiscard]] int characterCount() const override;

    /// In pixels of the screen; empty where no character is.
    [[nodiscard]] QRect characterRect(int offset) const override;
    [[nodiscard]] int offsetAtPoint(const QPoint& point) const override;
    void scrollToSubstring(int startIndex, int endIndex) override;
    /// None, for the whole text.
    QString attributes(int offset, int* startOffset, int* endOffset) const override;

    // A field that the player cannot change is not changed.
    void deleteText(int startOffset, int endOffset) override;
    void insertText(int offset, const QString& text) override;
    void replaceText(int startOffset, int endOffset, const QString& text) override;

    /// What `field` shows: its text, dots or nothing.
    [[nodiscard]] static QString shownText(const QLineEdit& field);

protected:
    /// The field, as long as an accessibility client may ask.
    [[nodiscard]] virtual QLineEdit& field() const = 0;

private:
    using Range = std::pair<int, int>;
    [[nodiscard]] int positionOf(int offset) const;
    [[nodiscard]] Range pieceAround(int position, QAccessible::TextBoundaryType boundary) const;
    QString answer(Range range, int* startOffset, int* endOffset) const;
};
