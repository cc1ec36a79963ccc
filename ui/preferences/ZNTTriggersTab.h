#pragma once

#include "ZNTQtElements.h"
#include "ZNTQtTableView.h"
#include "ZNTRowModel.h"
#include "ZNTTriggersDataSource.h"

#include <vector>

class ZNTPreferencesHost;
namespace Ui
{
class PreferencesView;
}

/// The tab with the player's triggers: a table, a pane for the pattern and the command of the selected one,
/// and the button that takes them into the game.
class ZNTTriggersTab
{
public:
    /// Both outlive this.
    ZNTTriggersTab(Ui::PreferencesView& form, ZNTPreferencesHost& host);

    void reloadTriggers();
    /// Adds triggers that an import has stored to the table.
    void showNewTriggers(const std::vector<ZNTTrigger>& newTriggers)
    {
        triggers.addObjectsToList(newTriggers);
    }

private:
    void wireTable();
    void wireButtons();
    void saveTrigger();
    void rowsChanged();
    void showWhetherActive();

    Ui::PreferencesView& form;
    ZNTPreferencesHost& host;
    ZNTRowModel triggerRows;
    ZNTQtTableView triggerTableView;
    ZNTQtTextArea triggerTextView;
    ZNTTriggersDataSource triggers;
};
