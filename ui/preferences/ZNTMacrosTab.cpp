#include "ZNTMacrosTab.h"

#include "ZNTHintedTable.h"
#include "ZNTMacroGroupDropDownController.h"
#include "ZNTMudMacroTableViewController.h"
#include "ZNTPlainKeys.h"
#include "ZNTPreferencesHost.h"
#include "ZNTQtComboBox.h"
#include "ZNTQtTableView.h"
#include "ui_PreferencesView.h"

#include <QHeaderView>

ZNTMacrosTab::ZNTMacrosTab(Ui::PreferencesView& form, ZNTPreferencesHost& host)
{
    showMainWindowsMacros(form, host);
    const auto click = [](QPushButton* button, auto task) {
        QObject::connect(button, &QPushButton::clicked, button, task);
    };
    auto& groups = host.macroGroupDropDownController();
    auto& macros = host.mudMacroTableViewController();
    click(form.createMacroGroupButton, [&groups] { groups.createNewMacroGroup(); });
    new ZNTPlainKeys(*form.preferencesMacroGroupComboBox, {Qt::Key_Return, Qt::Key_Enter},
                     [&groups] { return groups.createNamedMacroGroup(); });
    click(form.deleteMacroGroupButton, [&groups] { groups.deleteMacroGroup(); });
    click(form.addMacroButton, [&host] { host.showZNTAddMacroViewController(); });
    click(form.editMacroButton, [&host] { host.showZNTEditMacroViewController(); });
    click(form.removeMacroButton, [&macros] { macros.removeItem(); });
}

void ZNTMacrosTab::showMainWindowsMacros(Ui::PreferencesView& form, ZNTPreferencesHost& host)
{
    const auto elements = host.macroElements();
    elements.groupSelector.addBox(form.preferencesMacroGroupComboBox);
    auto& table = *form.preferencesMacroTable;
    ZNTQtTableView::furnish(table, elements.rows);
    table.setSelectionModel(elements.table.selectionModel());
    table.setEmptyHint(elements.list.emptyHint());
    QObject::connect(&elements.list, &ZNTHintedTable::emptyHintChanged, &table,
                     &ZNTHintedTable::setEmptyHint);
    table.horizontalHeader()->hide();
    table.horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
}
