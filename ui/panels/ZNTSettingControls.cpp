#include "ZNTSettingControls.h"

#include "ZNTCheckBox.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QSpinBox>
#include <map>

namespace
{

/// The sentence of a setting as the name of its control.
QString captionOf(const ZNTSettingRow& row)
{
    auto caption = QString::fromUtf8(row.sentence.data(), static_cast<qsizetype>(row.sentence.size()));
    if (caption.endsWith(u'.'))
        caption.chop(1);
    return caption;
}

QWidget* boxFor(const ZNTSettingRow& row, bool isOn, QBoxLayout& layout,
                const ZNTSettingControls::Choose& choose)
{
    auto* box = new ZNTCheckBox(layout.parentWidget());
    box->setText(captionOf(row));
    box->setChecked(isOn);
    layout.insertWidget(layout.count() - 1, box);
    QObject::connect(box, &QCheckBox::toggled, box,
                     [choose, name = row.name](bool on) { choose(name, on ? "on" : "off"); });
    return box;
}

QWidget* numberFieldFor(const ZNTSettingRow& row, int number, QBoxLayout& layout,
                        const ZNTSettingControls::Choose& choose)
{
    auto* line = new QHBoxLayout;
    auto* caption = new QLabel(captionOf(row), layout.parentWidget());
    auto* field = new QSpinBox(layout.parentWidget());
    field->setRange(row.least, row.most);
    field->setValue(number);
    field->setAccessibleName(captionOf(row));
    caption->setBuddy(field);
    line->addWidget(caption);
    line->addWidget(field);
    line->addStretch();
    layout.insertLayout(layout.count() - 1, line);
    QObject::connect(field, &QSpinBox::valueChanged, field,
                     [choose, name = row.name](int value) { choose(name, std::to_string(value)); });
    return field;
}

} // namespace

void ZNTSettingControls::make(const ZNTSettings& settings, const TabOf& tabOf, const Choose& choose)
{
    std::map<ZNTSettingTab, QWidget*> lastMade;
    for (const auto& row : ZNTSettingsTable) {
        if (row.hasOwnControl)
            continue;
        const auto tab = tabOf(row.tab);
        QWidget* made = nullptr;
        if (const auto* isOn = std::get_if<bool ZNTSettings::*>(&row.field))
            made = boxFor(row, settings.**isOn, *tab.layout, choose);
        else if (const auto* number = std::get_if<int ZNTSettings::*>(&row.field))
            made = numberFieldFor(row, settings.**number, *tab.layout, choose);
        if (!made)
            continue; // an encoding is picked among its buttons
        auto*& last = lastMade.try_emplace(row.tab, tab.lastControl).first->second;
        QWidget::setTabOrder(last, made);
        last = made;
    }
}
