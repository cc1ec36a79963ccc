#pragma once

#include "ZNTMacroSheetController.h"

/// The sheet that adds a macro to the current group.
class ZNTAddMacroViewController final : public ZNTMacroSheetController
{
public:
    ZNTAddMacroViewController(const ZNTPlatform& platform, ZNTDatabaseHelper& database,
                              ZNTMacroGroupDropDownController& dropDownController,
                              ZNTMudMacroTableViewController& mmtvc, ZNTMacroSheetElements elements);

    void showWindow();
    void setMacroGroupName() { showNameOfCurrentGroup(); }
    /// Stores the fields as they are, also if they are empty, and closes.
    void doneEditing();
};
