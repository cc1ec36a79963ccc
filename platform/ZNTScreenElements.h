#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

struct ZNTAttributedText;

// What the logic needs of the parts of a screen. The window implements these interfaces with widgets, the
// terminal client and the tests use the plain records of ZNTPlainElements.h, also for an element that is not
// shown. Pointers to elements are never null. They do not own the element, which must outlive its user.

class ZNTTextField
{
public:
    virtual ~ZNTTextField() = default;
    [[nodiscard]] virtual std::u16string text() const = 0;
    virtual void setText(std::u16string_view text) = 0;
    virtual void setEnabled(bool enabled) = 0;
    virtual void takeFocus() = 0;
    /// Takes the focus with the caret behind the last character and nothing selected.
    virtual void placeCaretAtEnd() = 0;
};

/// Several lines of plain text that the player edits.
class ZNTTextArea
{
public:
    virtual ~ZNTTextArea() = default;
    [[nodiscard]] virtual std::u16string text() const = 0;
    virtual void setText(std::u16string_view text) = 0;
};

class ZNTLabel
{
public:
    virtual ~ZNTLabel() = default;
    virtual void setText(std::u16string_view text) = 0;
};

class ZNTButton
{
public:
    virtual ~ZNTButton() = default;
    virtual void setTitle(std::u16string_view title) = 0;
    virtual void setEnabled(bool enabled) = 0;
};

class ZNTSpinner
{
public:
    virtual ~ZNTSpinner() = default;
    /// Showing does not start it, stopping does not hide it.
    virtual void setHidden(bool hidden) = 0;
    virtual void startAnimation() = 0;
    virtual void stopAnimation() = 0;
};

/// The output view: only ever appended to, or emptied. CR LF, LF CR, LF and CR each break the line, also when
/// the pair arrives in two pieces.
class ZNTTextView
{
public:
    virtual ~ZNTTextView() = default;
    virtual void append(const ZNTAttributedText& text) = 0;
    /// Follows the end again, unless the player has scrolled back to read.
    virtual void scrollToEnd() = 0;
    virtual void clear() = 0;
    virtual void setEditable(bool editable) = 0;
};

/// A table whose rows a controller supplies. The table asks for them after `reloadData`.
class ZNTTableView
{
public:
    virtual ~ZNTTableView() = default;
    virtual void reloadData() = 0;
    /// -1 when no row is selected.
    [[nodiscard]] virtual long selectedRow() const = 0;
    virtual void abortEditing() = 0;
    virtual void scrollToEndOfTable() = 0;
};

/// An editable box with a list to pick from; the controller supplies the list.
class ZNTComboBox
{
public:
    virtual ~ZNTComboBox() = default;
    [[nodiscard]] virtual std::u16string text() const = 0;
    virtual void setText(std::u16string_view text) = 0;
    virtual void reloadData() = 0;
};

class ZNTTabView
{
public:
    virtual ~ZNTTabView() = default;
    virtual void selectTab(int index) = 0;
};

/// A sheet or window that a controller opens and closes.
class ZNTPanel
{
public:
    virtual ~ZNTPanel() = default;
    /// Shows it in front and gives it the keyboard. A second call changes nothing.
    virtual void show() = 0;
    virtual void close() = 0;
};
