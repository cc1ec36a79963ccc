#pragma once

#include "ZNTMacro.h"
#include "ZNTMacroSheetController.h"

#include <cstdint>

/// The sheet that edits the selected macro.
class ZNTEditMacroViewController final : public ZNTMacroSheetController
{
public:
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

private:
    ZNTMacro macroSelected;
    std::int64_t index = -1; ///< its row in the list when the fields were filled
};
