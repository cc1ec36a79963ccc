#include "ZNTPreferencesForm.h"

#include "ZNTExplanation.h"
#include "ZNTHintedTable.h"

#include <QBoxLayout>
#include <QDialog>
#include <QFormLayout>
#include <QGroupBox>
#include <algorithm>

namespace
{

constexpr int betweenRows = 4, betweenColumns = 12;

QGroupBox* groupHeaded(const QWidget& page, const QString& heading)
{
    for (auto* group : page.findChildren<QGroupBox*>())
        if (QString(group->title()).remove(u'&') == heading)
            return group;
    return nullptr;
}

QFormLayout& makeGroup(QWidget& page, const QString& heading)
{
    auto* group = new QGroupBox(&page);
    group->setFlat(true); // first: the title decides on the room around the content
    group->setTitle(heading);
    auto* form = new QFormLayout(group);
    form->setContentsMargins(0, 0, 0, 0);
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    form->setRowWrapPolicy(QFormLayout::WrapLongRows);
    form->setLabelAlignment(Qt::AlignLeading | Qt::AlignVCenter);
    form->setHorizontalSpacing(betweenColumns);
    form->setVerticalSpacing(betweenRows);
    auto* column = static_cast<QBoxLayout*>(page.layout());
    const bool hasSpring = column->count() > 0 && column->itemAt(column->count() - 1)->spacerItem();
    column->insertWidget(hasSpring ? column->count() - 1 : column->count(), group);
    return *form;
}

void describeBy(QWidget& control, const QList<ZNTExplanation*>& explanations)
{
    QString words;
    for (const auto* explanation : explanations) {
        if (explanation->explains() != control.objectName() || explanation->text().isEmpty())
            continue;
        if (!words.isEmpty())
            words += words.endsWith(u'.') ? QStringLiteral(" ") : QStringLiteral(". ");
        words += explanation->text();
    }
    if (words.isEmpty())
        return;
    if (auto* table = qobject_cast<ZNTHintedTable*>(&control))
        table->setStandingDescription(words);
    else
        control.setAccessibleDescription(words);
}

/// The widgets that Tab stops at, in the order of the layout.
void collectStops(const QLayout& layout, QList<QWidget*>& stops)
{
    for (int index = 0; index < layout.count(); ++index) {
        QLayoutItem* item = layout.itemAt(index);
        QWidget* widget = item->widget();
        if (item->layout())
            collectStops(*item->layout(), stops);
        else if (widget && widget->focusPolicy() & Qt::TabFocus)
            stops << widget;
        else if (widget && widget->layout())
            collectStops(*widget->layout(), stops);
    }
}

} // namespace

QFormLayout& znt::formOfGroup(QWidget& page, const QString& heading)
{
    auto* group = groupHeaded(page, heading);
    return group ? *static_cast<QFormLayout*>(group->layout()) : makeGroup(page, heading);
}

void znt::addBelowField(QFormLayout& form, QWidget& words)
{
    const int row = form.rowCount();
    // Without an item in the label's place Qt takes the height that the words would need at another width.
    form.setItem(row, QFormLayout::LabelRole, new QSpacerItem(0, 0));
    form.setWidget(row, QFormLayout::FieldRole, &words);
}

void znt::alignLabelColumns(QDialog& dialog)
{
    QList<QWidget*> labels;
    int widest = 0;
    for (const auto* form : dialog.findChildren<QFormLayout*>())
        for (int row = 0; row < form->rowCount(); ++row)
            if (const auto* item = form->itemAt(row, QFormLayout::LabelRole); item && item->widget()) {
                labels << item->widget();
                widest = std::max(widest, item->widget()->sizeHint().width());
            }
    for (auto* label : labels)
        label->setMinimumWidth(widest);
}

void znt::describeControl(QWidget& control)
{
    describeBy(control, control.window()->findChildren<ZNTExplanation*>());
}

void znt::describeControls(QDialog& dialog)
{
    const auto explanations = dialog.findChildren<ZNTExplanation*>();
    for (auto* explanation : explanations)
        if (auto* control = dialog.findChild<QWidget*>(explanation->explains());
            control && !explanation->explains().isEmpty()) {
            explanation->standBelow(*control);
            describeBy(*control, explanations);
        }
}

QWidget* znt::tabThrough(QWidget& page, QWidget& before)
{
    QList<QWidget*> stops;
    collectStops(*page.layout(), stops);
    QWidget* last = &before;
    for (auto* stop : stops) {
        QWidget::setTabOrder(last, stop);
        last = stop;
    }
    return last;
}
