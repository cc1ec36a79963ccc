#pragma once

#include <QAccessibleWidget>

class ZNTOutputView;

/// The output view for screen readers: read-only text of several lines. A line is a row of the screen, so
/// that it agrees with the places on the screen. A paragraph is a line as the game sent it.
///
/// Offsets count from the oldest text in the view. No answer fetches more text than it returns.
class ZNTOutputAccessible final : public QAccessibleWidget, public QAccessibleTextInterface
{
public:
    explicit ZNTOutputAccessible(ZNTOutputView& view);
    /// For QAccessible::installFactory; installing it again changes nothing.
    static QAccessibleInterface* make(const QString& className, QObject* object);

    void* interface_cast(QAccessible::InterfaceType type) override;
    [[nodiscard]] QAccessible::State state() const override;

    void selection(int index, int* startOffset, int* endOffset) const override;
    [[nodiscard]] int selectionCount() const override;
    void addSelection(int startOffset, int endOffset) override;
    void removeSelection(int index) override;
    void setSelection(int index, int startOffset, int endOffset) override;
    [[nodiscard]] int cursorPosition() const override;
    void setCursorPosition(int offset) override;

    [[nodiscard]] QString text(int startOffset, int endOffset) const override;
    [[nodiscard]] QString text(QAccessible::Text kind) const override
    {
        return QAccessibleWidget::text(kind);
    }
    QString textBeforeOffset(int offset, QAccessible::TextBoundaryType boundary, int* startOffset,
                             int* endOffset) const override;
    QString textAfterOffset(int offset, QAccessible::TextBoundaryType boundary, int* startOffset,
                            int* endOffset) const override;
    QString textAtOffset(int offset, QAccessible::TextBoundaryType boundary, int* startOffset,
                         int* endOffset) const override;
    [[nodiscard]] int characterCount() const override;

    [[nodiscard]] QRect characterRect(int offset) const override;
    [[nodiscard]] int offsetAtPoint(const QPoint& point) const override;
    void scrollToSubstring(int startIndex, int endIndex) override;
    QString attributes(int offset, int* startOffset, int* endOffset) const override;

private:
    using Range = std::pair<std::int64_t, std::int64_t>;
    [[nodiscard]] std::int64_t positionOf(int offset) const;
    [[nodiscard]] int offsetOf(std::int64_t position) const;
    [[nodiscard]] Range unitAround(std::int64_t position, QAccessible::TextBoundaryType boundary) const;
    QString answer(Range range, int* startOffset, int* endOffset) const;

    ZNTOutputView& view;
};
