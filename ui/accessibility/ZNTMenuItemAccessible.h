#pragma once

#include <QAccessibleObject>

class QAction;
class QWidget;

/// An item of a menu or of the menu bar for screen readers. Its description says its keys, or that
/// it opens a submenu: Qt's own items keep both to themselves.
class ZNTMenuItemAccessible final : public QAccessibleObject, public QAccessibleActionInterface
{
public:
    /// `owner` is the menu or the menu bar that shows the action.
    ZNTMenuItemAccessible(QAction& action, QWidget& owner);

    /// For QAccessible::installFactory; installing it again changes nothing. None for an action that no menu
    /// shows.
    static QAccessibleInterface* make(const QString& className, QObject* object);

    void* interface_cast(QAccessible::InterfaceType type) override;
    [[nodiscard]] bool isValid() const override;
    [[nodiscard]] QWindow* window() const override;
    [[nodiscard]] QAccessibleInterface* parent() const override;
    [[nodiscard]] QAccessibleInterface* child(int index) const override;
    [[nodiscard]] int childCount() const override;
    [[nodiscard]] int indexOfChild(const QAccessibleInterface* child) const override;
    [[nodiscard]] QString text(QAccessible::Text kind) const override;
    [[nodiscard]] QRect rect() const override;
    [[nodiscard]] QAccessible::Role role() const override;
    [[nodiscard]] QAccessible::State state() const override;

    [[nodiscard]] QStringList actionNames() const override;
    void doAction(const QString& name) override;
    [[nodiscard]] QStringList keyBindingsForAction(const QString& name) const override;

private:
    [[nodiscard]] QAction& action() const;

    QPointer<QWidget> owner;
};
