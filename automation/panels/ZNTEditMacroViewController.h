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

    /// Shows the selected macro. If none is selected, it says so and stays closed.
    void showWindow();
    /// Fills the fields from the list's selected row. If none is selected, nothing changes and the answer is
    /// false.
    bool setEditableData();
    void setMacroGroupName();
    /// Stores the fields as they are, and closes.
    void doneEditing();

private:
    ZNTMacro macroSelected;
    std::int64_t index = -1; ///< its row in the list when the fields were filled
};
