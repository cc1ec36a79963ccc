#pragma once

#include "ZNTAddMacroViewController.h"
#include "ZNTMacro.h"

/// The sheet that edits the selected macro.
class ZNTEditMacroViewController
{
public:
    /// All of it outlives this.
    ZNTEditMacroViewController(const ZNTPlatform& platform, ZNTDatabaseHelper& database,
                               ZNTMacroGroupDropDownController& dropDownController,
                               ZNTMudMacroTableViewController& mmtvc, ZNTMacroSheetElements elements);

    /// Shows the selected macro. Without one it says so and stays closed.
    void showWindow();
    /// Fills the fields from the list's selected row. False, and nothing is changed, where none is selected.
    bool setEditableData();
    void setMacroGroupName();
    /// Stores the fields as they stand, and closes.
    void doneEditing();
    void cancelEditing() { closeSheet(); }
    void closeSheet() { elements.theSheet.close(); }

private:
    ZNTPlatform platform;
    ZNTDatabaseHelper& database;
    ZNTMacroGroupDropDownController& dropDownController;
    ZNTMudMacroTableViewController& mmtvc;
    ZNTMacroSheetElements elements;
    ZNTMacro macroSelected;
    std::int64_t index = -1; ///< its row in the list when the fields were filled
};
