#include "ZNTFieldAccessible.h"

#include <QLineEdit>
#include <QSpinBox>
#include <QValidator>

namespace
{

template <typename Interface>
void* asTextOrEditableText(Interface* self, QAccessible::InterfaceType type)
{
    if (type == QAccessible::TextInterface)
        return static_cast<QAccessibleTextInterface*>(self);
    if (type == QAccessible::EditableTextInterface)
        return static_cast<QAccessibleEditableTextInterface*>(self);
    return nullptr;
}

void noteEditing(QAccessible::State& state, bool isReadOnly)
{
    state.readOnly = isReadOnly;
    state.editable = !isReadOnly;
    state.selectableText = true;
}

} // namespace

QAccessibleInterface* ZNTFieldAccessible::make(const QString&, QObject* object)
{
    if (auto* line = qobject_cast<QLineEdit*>(object))
        return new ZNTFieldAccessible(*line);
    auto* box = qobject_cast<QAbstractSpinBox*>(object);
    const bool isNumber = qobject_cast<QSpinBox*>(box) || qobject_cast<QDoubleSpinBox*>(box);
    return isNumber ? new ZNTNumberFieldAccessible(*box) : nullptr;
}

ZNTFieldAccessible::ZNTFieldAccessible(QLineEdit& line) : QAccessibleWidget(&line, QAccessible::EditableText)
{
}

QLineEdit& ZNTFieldAccessible::field() const { return *static_cast<QLineEdit*>(object()); }

void* ZNTFieldAccessible::interface_cast(QAccessible::InterfaceType type)
{
    void* found = asTextOrEditableText(this, type);
    return found ? found : QAccessibleWidget::interface_cast(type);
}

QAccessible::State ZNTFieldAccessible::state() const
{
    auto state = QAccessibleWidget::state();
    noteEditing(state, field().isReadOnly());
    state.passwordEdit = field().echoMode() != QLineEdit::Normal;
    state.hasPopup = field().contextMenuPolicy() != Qt::NoContextMenu &&
                     field().contextMenuPolicy() != Qt::PreventContextMenu;
    return state;
}

QString ZNTFieldAccessible::text(QAccessible::Text kind) const
{
    if (kind == QAccessible::Value)
        return shownText(field());
    const QString words = QAccessibleWidget::text(kind);
    return words.isEmpty() && kind == QAccessible::Description ? field().placeholderText() : words;
}

void ZNTFieldAccessible::setText(QAccessible::Text kind, const QString& text)
{
    if (kind != QAccessible::Value)
        return QAccessibleWidget::setText(kind, text);
    QString wanted = text;
    int caret = 0;
    const QValidator* validator = field().validator();
    if (!validator || validator->validate(wanted, caret) == QValidator::Acceptable)
        field().setText(wanted);
}

ZNTNumberFieldAccessible::ZNTNumberFieldAccessible(QAbstractSpinBox& box)
    : QAccessibleWidget(&box, QAccessible::SpinBox)
{
}

/// QAbstractSpinBox shows its line to subclasses only. It has one at all times.
QLineEdit& ZNTNumberFieldAccessible::field() const
{
    return *object()->findChild<QLineEdit*>(QString(), Qt::FindDirectChildrenOnly);
}

void* ZNTNumberFieldAccessible::interface_cast(QAccessible::InterfaceType type)
{
    if (type == QAccessible::ValueInterface)
        return static_cast<QAccessibleValueInterface*>(this);
    void* found = asTextOrEditableText(this, type);
    return found ? found : QAccessibleWidget::interface_cast(type);
}

QAccessible::State ZNTNumberFieldAccessible::state() const
{
    auto state = QAccessibleWidget::state();
    noteEditing(state, field().isReadOnly());
    return state;
}

QString ZNTNumberFieldAccessible::text(QAccessible::Text kind) const
{
    return kind == QAccessible::Value ? shownText(field()) : QAccessibleWidget::text(kind);
}

QVariant ZNTNumberFieldAccessible::currentValue() const { return object()->property("value"); }

void ZNTNumberFieldAccessible::setCurrentValue(const QVariant& value)
{
    object()->setProperty("value", value);
}

QVariant ZNTNumberFieldAccessible::maximumValue() const { return object()->property("maximum"); }

QVariant ZNTNumberFieldAccessible::minimumValue() const { return object()->property("minimum"); }

QVariant ZNTNumberFieldAccessible::minimumStepSize() const { return object()->property("singleStep"); }
