#include "ZNTEditMacroViewController.h"

#include "ZNTDatabaseHelper.h"
#include "ZNTMudMacroTableViewController.h"
#include "ZNTShownRows.h"

ZNTEditMacroViewController::ZNTEditMacroViewController(const ZNTPlatform& platform,
                                                       ZNTDatabaseHelper& database,
                                                       ZNTMacroGroupDropDownController& dropDownController,
                                                       ZNTMudMacroTableViewController& mmtvc,
                                                       ZNTMacroSheetElements elements)
    : ZNTMacroSheetController(platform, database, dropDownController, mmtvc, elements)
{
    setMacroGroupName();
}

bool ZNTEditMacroViewController::setEditableData()
{
    const long row = mmtvc.getCurrentSelectedMacroIndex();
    const auto macro = mmtvc.getMacroAtIndex(row);
    if (!macro)
        return false;
    index = row;
    macroSelected = *macro;
    elements.commandText.setText(macroSelected.dataToExecute);
    elements.macroNameTF.setText(macroSelected.name);
    return true;
}

void ZNTEditMacroViewController::setMacroGroupName()
{
    showNameOfCurrentGroup();
    setEditableData();
}

void ZNTEditMacroViewController::showWindow()
{
    if (!setEditableData()) {
        platform.alert.showMessage(u"No macro is selected.",
                                   u"Please select the macro to edit in the list of macros.");
        return;
    }
    setMacroGroupName();
    elements.theSheet.show();
}

void ZNTEditMacroViewController::doneEditing()
{
    macroSelected.name = elements.macroNameTF.text();
    macroSelected.dataToExecute = elements.commandText.text();
    znt::saveShownRow(database, macroSelected);
    mmtvc.updateMacroInList(macroSelected, mmtvc.getCurrentSelectedMacroIndex());
    finishEditing();
}
