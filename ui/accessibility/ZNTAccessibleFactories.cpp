#include "ZNTAccessibleFactories.h"

#include "ZNTFieldAccessible.h"
#include "ZNTMenuItemAccessible.h"

#include <QGroupBox>
#include <QMessageBox>
#include <QRadioButton>
#include <QStackedWidget>
#include <QTabWidget>

namespace
{

/// A part of a window that a reader needs not know: the row of tabs and the pages have elements of their own.
/// Qt calls the pages a layered pane, and Orca says so each time Tab goes in. It calls the whole focusable,
/// though the row of tabs takes the focus in its place.
class PlainPart final : public QAccessibleWidget
{
public:
    explicit PlainPart(QWidget& part) : QAccessibleWidget(&part, QAccessible::Client) {}

    [[nodiscard]] QAccessible::State state() const override
    {
        auto state = QAccessibleWidget::state();
        state.focusable = false;
        return state;
    }
};

QAccessibleInterface* makePart(const QString&, QObject* object)
{
    if (qobject_cast<QStackedWidget*>(object) || qobject_cast<QTabWidget*>(object))
        return new PlainPart(*static_cast<QWidget*>(object));
    // Orca says the name of a panel when the focus comes in, and once more before its radio buttons.
    auto* group = qobject_cast<QGroupBox*>(object);
    if (group && group->findChild<QRadioButton*>())
        return new QAccessibleWidget(group, QAccessible::Form, group->title());
    // Of a dialog Orca leaves out labels of one or two words; of an alert it says them all.
    auto* alert = qobject_cast<QMessageBox*>(object);
    return alert ? new QAccessibleWidget(alert, QAccessible::AlertMessage) : nullptr;
}

} // namespace

void znt::installAccessibleFactories()
{
    QAccessible::installFactory(&ZNTFieldAccessible::make);
    QAccessible::installFactory(&ZNTMenuItemAccessible::make);
    QAccessible::installFactory(&makePart);
}
