#pragma once

#include "ZNTFieldText.h"

#include <QAccessibleWidget>

class QAbstractSpinBox;

/// One-line fields for screen readers: every QLineEdit, also one inside a combo box or a table.
class ZNTFieldAccessible final : public QAccessibleWidget, public ZNTFieldText
{
public:
    explicit ZNTFieldAccessible(QLineEdit& line);

    /// For QAccessible::installFactory; installing it again changes nothing. Also makes those of number
    /// fields.
    static QAccessibleInterface* make(const QString& className, QObject* object);

    void* interface_cast(QAccessible::InterfaceType type) override;
    [[nodiscard]] QAccessible::State state() const override;
    using ZNTFieldText::text;
    [[nodiscard]] QString text(QAccessible::Text kind) const override;
    void setText(QAccessible::Text kind, const QString& text) override;

protected:
    [[nodiscard]] QLineEdit& field() const override;
};

/// Number fields (QSpinBox and QDoubleSpinBox) for screen readers: a text and a value.
class ZNTNumberFieldAccessible final : public QAccessibleWidget,
                                       public ZNTFieldText,
                                       public QAccessibleValueInterface
{
public:
    explicit ZNTNumberFieldAccessible(QAbstractSpinBox& box);

    void* interface_cast(QAccessible::InterfaceType type) override;
    [[nodiscard]] QAccessible::State state() const override;
    using ZNTFieldText::text;
    [[nodiscard]] QString text(QAccessible::Text kind) const override;

    [[nodiscard]] QVariant currentValue() const override;
    void setCurrentValue(const QVariant& value) override;
    [[nodiscard]] QVariant maximumValue() const override;
    [[nodiscard]] QVariant minimumValue() const override;
    [[nodiscard]] QVariant minimumStepSize() const override;

protected:
    [[nodiscard]] QLineEdit& field() const override;
};
