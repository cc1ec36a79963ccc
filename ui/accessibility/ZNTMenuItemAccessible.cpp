#include "ZNTMenuItemAccessible.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>

namespace
{

/// Menus and menu bars have the same operations, but no common class that declares them.
template <typename Task>
void withMenu(QWidget* owner, Task task)
{
    if (auto* menu = qobject_cast<QMenu*>(owner))
        task(*menu);
    else if (auto* bar = qobject_cast<QMenuBar*>(owner))
        task(*bar);
}

QWidget* menuThatShows(const QAction& action)
{
    for (QObject* each : action.associatedObjects())
        if (qobject_cast<QMenu*>(each) || qobject_cast<QMenuBar*>(each))
            return static_cast<QWidget*>(each);
    return nullptr;
}

/// "&" stands before the letter of an item, "&&" for itself.
QString withoutMnemonic(const QString& title)
{
    QString plain;
    for (qsizetype at = 0; at < title.size(); ++at) {
        if (title[at] == QLatin1Char('&') && at + 1 < title.size())
            ++at;
        plain += title[at];
    }
    return plain;
}

QString keysInWords(const QAction& action)
{
    QStringList keys;
    for (const QKeySequence& key : action.shortcuts())
        keys << key.toString(QKeySequence::NativeText);
    return keys.join(QStringLiteral(" or "));
}

} // namespace

ZNTMenuItemAccessible::ZNTMenuItemAccessible(QAction& action, QWidget& owner)
    : QAccessibleObject(&action),
      owner(&owner)
{
}

QAccessibleInterface* ZNTMenuItemAccessible::make(const QString&, QObject* object)
{
    auto* action = qobject_cast<QAction*>(object);
    QWidget* owner = action ? menuThatShows(*action) : nullptr;
    return owner ? new ZNTMenuItemAccessible(*action, *owner) : nullptr;
}

QAction& ZNTMenuItemAccessible::action() const { return *static_cast<QAction*>(object()); }

void* ZNTMenuItemAccessible::interface_cast(QAccessible::InterfaceType type)
{
    return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this) : nullptr;
}

bool ZNTMenuItemAccessible::isValid() const { return QAccessibleObject::isValid() && owner; }

QWindow* ZNTMenuItemAccessible::window() const { return owner ? owner->windowHandle() : nullptr; }

QAccessibleInterface* ZNTMenuItemAccessible::parent() const
{
    return QAccessible::queryAccessibleInterface(owner);
}

QAccessibleInterface* ZNTMenuItemAccessible::child(int index) const
{
    return index == 0 && action().menu() ? QAccessible::queryAccessibleInterface(action().menu()) : nullptr;
}

int ZNTMenuItemAccessible::childCount() const { return action().menu() ? 1 : 0; }

int ZNTMenuItemAccessible::indexOfChild(const QAccessibleInterface* child) const
{
    return child && action().menu() && child->object() == action().menu() ? 0 : -1;
}

QString ZNTMenuItemAccessible::text(QAccessible::Text kind) const
{
    switch (kind) {
    case QAccessible::Name:
        return withoutMnemonic(action().text());
    case QAccessible::Description:
        return action().menu() && qobject_cast<QMenu*>(owner) ? QStringLiteral("submenu")
                                                              : keysInWords(action());
    case QAccessible::Accelerator:
        return keysInWords(action());
    case QAccessible::Help:
        return action().whatsThis();
    default:
        return {};
    }
}

QRect ZNTMenuItemAccessible::rect() const
{
    QRect place;
    withMenu(owner, [&](auto& menu) {
        const QRect inMenu = menu.actionGeometry(&action());
        place = {menu.mapToGlobal(inMenu.topLeft()), inMenu.size()};
    });
    return place;
}

QAccessible::Role ZNTMenuItemAccessible::role() const
{
    return action().isSeparator() ? QAccessible::Separator : QAccessible::MenuItem;
}

QAccessible::State ZNTMenuItemAccessible::state() const
{
    QAccessible::State state;
    state.invisible = !owner || !owner->isVisible() || !action().isVisible();
    state.disabled = action().isSeparator() || !action().isEnabled();
    state.checkable = action().isCheckable();
    state.checked = action().isChecked();
    withMenu(owner, [&](auto& menu) { state.focused = menu.activeAction() == &action(); });
    return state;
}

QStringList ZNTMenuItemAccessible::actionNames() const
{
    if (action().isSeparator())
        return {};
    return {action().menu() ? showMenuAction() : pressAction()};
}

void ZNTMenuItemAccessible::doAction(const QString& name)
{
    if (!action().isEnabled())
        return;
    if (name == pressAction())
        action().trigger();
    else if (name == showMenuAction() && action().menu() && action().menu()->isVisible())
        action().menu()->hide();
    else if (name == showMenuAction())
        withMenu(owner, [&](auto& menu) { menu.setActiveAction(&action()); });
}

/// The description has the keys. Readers would say them twice.
QStringList ZNTMenuItemAccessible::keyBindingsForAction(const QString&) const { return {}; }
