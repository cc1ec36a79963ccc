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

/// What the sheets that add and edit a macro have in common.
class ZNTMacroSheetController
{
public:
    /// All arguments outlive this.
    ZNTMacroSheetController(const ZNTPlatform& platform, ZNTDatabaseHelper& database,
                            ZNTMacroGroupDropDownController& dropDownController,
                            ZNTMudMacroTableViewController& mmtvc, ZNTMacroSheetElements elements);
    ZNTMacroSheetController(const ZNTMacroSheetController&) = delete;
    ZNTMacroSheetController& operator=(const ZNTMacroSheetController&) = delete;

    /// Closes. The typed text stays for the next time.
    void cancelEditing() { closeSheet(); }
    void closeSheet() { elements.theSheet.close(); }

protected:
    ~ZNTMacroSheetController() = default;

    void showNameOfCurrentGroup();
    /// Notifies the lists of macros, empties the fields and closes.
    void finishEditing();

    ZNTPlatform platform;
    ZNTDatabaseHelper& database;
    ZNTMacroGroupDropDownController& dropDownController;
    ZNTMudMacroTableViewController& mmtvc;
    ZNTMacroSheetElements elements;
};
