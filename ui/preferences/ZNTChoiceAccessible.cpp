#include "ZNTChoiceAccessible.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <algorithm>

QAccessibleInterface* ZNTChoiceAccessible::make(const QString&, QObject* object)
{
    auto* box = qobject_cast<QComboBox*>(object);
    return box && !box->isEditable() ? new ZNTChoiceAccessible(*box) : nullptr;
}

ZNTChoiceAccessible::ZNTChoiceAccessible(QComboBox& box) : QAccessibleWidget(&box, QAccessible::ComboBox) {}

QComboBox& ZNTChoiceAccessible::box() const { return *static_cast<QComboBox*>(object()); }

void* ZNTChoiceAccessible::interface_cast(QAccessible::InterfaceType type)
{
    if (type == QAccessible::TextInterface && !box().isEditable()) // made editable later, its field has it
        return static_cast<QAccessibleTextInterface*>(this);
    return QAccessibleWidget::interface_cast(type);
}

QAccessible::State ZNTChoiceAccessible::state() const
{
    auto state = QAccessibleWidget::state();
    state.expandable = true;
    // Not box().view(), which makes the list if there is none, and that asks for this state again.
    const auto* list = box().findChild<QAbstractItemView*>();
    state.expanded = list && list->isVisible();
    state.collapsed = !state.expanded;
    return state;
}

/// The name is what is chosen, as Qt's own box has it on this system: a reader says the label before it, and
/// the new name when another choice is made.
QString ZNTChoiceAccessible::text(QAccessible::Text kind) const
{
    return kind == QAccessible::Name || kind == QAccessible::Value ? box().currentText()
                                                                   : QAccessibleWidget::text(kind);
}

QStringList ZNTChoiceAccessible::actionNames() const
{
    return QStringList{showMenuAction(), pressAction()} + QAccessibleWidget::actionNames();
}

void ZNTChoiceAccessible::doAction(const QString& name)
{
    if (name != showMenuAction() && name != pressAction())
        QAccessibleWidget::doAction(name);
    else if (box().view()->isVisible())
        box().hidePopup();
    else
        box().showPopup();
}

void ZNTChoiceAccessible::selection(int, int* startOffset, int* endOffset) const
{
    *startOffset = *endOffset = 0;
}

QString ZNTChoiceAccessible::text(int startOffset, int endOffset) const
{
    const int end = endOffset < 0 ? characterCount() : std::min(endOffset, characterCount());
    const int start = std::clamp(startOffset, 0, std::max(end, 0));
    return box().currentText().mid(start, end - start);
}

/// The whole, whatever the piece that is asked for.
QString ZNTChoiceAccessible::textAtOffset(int, QAccessible::TextBoundaryType, int* startOffset,
                                          int* endOffset) const
{
    *startOffset = 0;
    *endOffset = characterCount();
    return box().currentText();
}

int ZNTChoiceAccessible::characterCount() const { return static_cast<int>(box().currentText().size()); }

QString ZNTChoiceAccessible::attributes(int, int* startOffset, int* endOffset) const
{
    *startOffset = 0;
    *endOffset = characterCount();
    return {};
}
