#pragma once

#include "ZNTPlatform.h"
#include "ZNTScreenElements.h"

class ZNTDatabaseHelper;
class ZNTMacroGroupDropDownController;
class ZNTMudMacroTableViewController;

/// The screen elements of a sheet that edits one macro. All outlive its controller.
struct ZNTMacroSheetElements {
    ZNTLabel& macroGroupNameLabel;
    ZNTTextArea& commandText;
    ZNTTextField& macroNameTF;
    ZNTPanel& theSheet;
};

/// The sheet that adds a macro to the current group.
class ZNTAddMacroViewController
{
public:
    /// All of it outlives this.
    ZNTAddMacroViewController(const ZNTPlatform& platform, ZNTDatabaseHelper& database,
                              ZNTMacroGroupDropDownController& dropDownController,
                              ZNTMudMacroTableViewController& mmtvc, ZNTMacroSheetElements elements);

    void showWindow();
    void setMacroGroupName();
    /// Stores the macro as it stands, whatever is in the fields, and closes.
    void doneEditing();
    /// Keeps what was typed for the next time.
    void cancelEditing() { closeSheet(); }
    void closeSheet() { elements.theSheet.close(); }

private:
    ZNTPlatform platform;
    ZNTDatabaseHelper& database;
    ZNTMacroGroupDropDownController& dropDownController;
    ZNTMudMacroTableViewController& mmtvc;
    ZNTMacroSheetElements elements;
};
