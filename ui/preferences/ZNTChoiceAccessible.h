#pragma once

#include <QAccessibleWidget>

class QComboBox;

/// A box for one of a few choices for screen readers: its text is what is chosen.
///
/// Orca asks a box without a field for the selected item of its list, which Qt 6.4 does not say, and else for
/// its text, which Qt's own box does not have. So it would never say what is chosen.
class ZNTChoiceAccessible final : public QAccessibleWidget, public QAccessibleTextInterface
{
public:
    explicit ZNTChoiceAccessible(QComboBox& box);

    /// For QAccessible::installFactory; installing it again changes nothing. None for a box that can be typed
    /// into, because its field has the text.
    static QAccessibleInterface* make(const QString& className, QObject* object);

    void* interface_cast(QAccessible::InterfaceType type) override;
    [[nodiscard]] QAccessible::State state() const override;
    [[nodiscard]] QString text(QAccessible::Text kind) const override;
    [[nodiscard]] QStringList actionNames() const override;
    void doAction(const QString& name) override;

    // A text that nobody moves in.
    void selection(int index, int* startOffset, int* endOffset) const override;
    [[nodiscard]] int selectionCount() const override { return 0; }
    void addSelection(int, int) override {}
    void removeSelection(int) override {}
    void setSelection(int, int, int) override {}
    [[nodiscard]] int cursorPosition() const override { return 0; }
    void setCursorPosition(int) override {}
    [[nodiscard]] QString text(int startOffset, int endOffset) const override;
    QString textAtOffset(int offset, QAccessible::TextBoundaryType boundary, int* startOffset,
                         int* endOffset) const override;
    [[nodiscard]] int characterCount() const override;
    [[nodiscard]] QRect characterRect(int) const override { return rect(); }
    [[nodiscard]] int offsetAtPoint(const QPoint&) const override { return 0; }
    void scrollToSubstring(int, int) override {}
    QString attributes(int offset, int* startOffset, int* endOffset) const override;

private:
    [[nodiscard]] QComboBox& box() const;
};
