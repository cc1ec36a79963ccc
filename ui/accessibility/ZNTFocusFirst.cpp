#include "ZNTFocusFirst.h"

#include "ZNTDesktopScreenReader.h"

#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <utility>

namespace
{

bool isCaretQuiet = false;

/// The handler that was there before ours; null for Qt's own way to the accessibility bus.
QAccessible::UpdateHandler next = nullptr;

/// Whether a field says that all of it is selected before it says that it has the focus, or that nothing is
/// after it lost the focus. A reader says what is selected when it says the field.
bool isSelectionOfFocusChange(const QAccessibleEvent& event)
{
    const auto* line = qobject_cast<const QLineEdit*>(event.object());
    return line && event.type() == QAccessible::TextSelectionChanged && (isCaretQuiet || !line->hasFocus());
}

/// The caret of a field that is filled while its window opens. A reader would take the field for known, and
/// not say it once it has the focus.
bool isCaretWithoutFocus(const QAccessibleEvent& event)
{
    const auto* line = qobject_cast<const QLineEdit*>(event.object());
    return event.type() == QAccessible::TextCaretMoved && (isCaretQuiet || (line && !line->hasFocus()));
}

/// Qt says what is typed as it is, also in a field that shows dots. A reader would say each letter.
bool isHiddenTyping(const QAccessibleEvent& event)
{
    switch (event.type()) {
    case QAccessible::TextInserted:
    case QAccessible::TextRemoved:
    case QAccessible::TextUpdated:
        break;
    default:
        return false;
    }
    const auto* line = qobject_cast<const QLineEdit*>(event.object());
    return line && line->echoMode() != QLineEdit::Normal;
}

/// If the arrows go from one menu to the next, Qt announces the field behind them after the new menu's item.
bool isBehindMenu(const QAccessibleEvent& event)
{
    const auto* object = event.object();
    return event.type() == QAccessible::Focus && qobject_cast<QMenu*>(QApplication::activePopupWidget()) &&
           !qobject_cast<const QMenu*>(object) && !qobject_cast<const QMenuBar*>(object) &&
           !qobject_cast<const QAction*>(object);
}

/// If a list is narrowed down while the player types into the field above it, Qt announces the list's new
/// current row as if the focus were there. A reader would take the next letters for typed into the list.
bool isRowOfListWithoutFocus(const QAccessibleEvent& event)
{
    const auto* list = qobject_cast<const QAbstractItemView*>(event.object());
    const QWidget* focused = QApplication::focusWidget();
    return list && event.type() == QAccessible::Focus && focused && focused->window() == list->window() &&
           focused != list && !list->isAncestorOf(focused);
}

/// If a text takes the place of one of the same length, as two lines of the history may, the caret ends where
/// it was, and readers say nothing. This comes after all that Qt announces of the change.
void tellTextOfSameLength(const QAccessibleEvent& event)
{
    auto* line = qobject_cast<QLineEdit*>(event.object());
    if (event.type() != QAccessible::TextUpdated || !line || !line->hasFocus())
        return;
    const auto& update = static_cast<const QAccessibleTextUpdateEvent&>(event);
    if (update.textInserted().size() == update.textRemoved().size())
        QMetaObject::invokeMethod(
            line, [line] { ZNTDesktopScreenReader::announceNewText(*line); }, Qt::QueuedConnection);
}

void tellWhatIsKnown(QAccessibleEvent* event)
{
    if (isCaretWithoutFocus(*event) || isHiddenTyping(*event) || isBehindMenu(*event) ||
        isRowOfListWithoutFocus(*event) || isSelectionOfFocusChange(*event))
        return;
    QAccessible::installUpdateHandler(next);
    QAccessible::updateAccessibility(event);
    QAccessible::installUpdateHandler(&tellWhatIsKnown);
    if (event->type() == QAccessible::Focus)
        isCaretQuiet = false;
    tellTextOfSameLength(*event);
}

void install()
{
    if (const auto before = QAccessible::installUpdateHandler(&tellWhatIsKnown); before != &tellWhatIsKnown)
        next = before;
}

/// Fields that move their caret when they get the focus.
bool isField(const QObject* object)
{
    return qobject_cast<const QLineEdit*>(object) || qobject_cast<const QComboBox*>(object) ||
           qobject_cast<const QAbstractSpinBox*>(object);
}

} // namespace

ZNTQuietCaret::ZNTQuietCaret() : before(std::exchange(isCaretQuiet, true)) { install(); }

ZNTQuietCaret::~ZNTQuietCaret() { isCaretQuiet = before; }

ZNTFocusFirst::ZNTFocusFirst(QObject* parent) : QObject(parent)
{
    qApp->installEventFilter(this);
    install();
}

ZNTFocusFirst::~ZNTFocusFirst() { QAccessible::installUpdateHandler(next); }

bool ZNTFocusFirst::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::FocusIn && isField(watched)) {
        // Until the focus is announced. If it is not, until the end of this turn.
        isCaretQuiet = true;
        QMetaObject::invokeMethod(
            this, [] { isCaretQuiet = false; }, Qt::QueuedConnection);
    }
    return QObject::eventFilter(watched, event);
}
