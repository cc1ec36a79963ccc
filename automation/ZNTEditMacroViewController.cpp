#include "ZNTEditMacroViewController.h"

#include "ZNTDatabaseHelper.h"
#include "ZNTMacroGroupDropDownController.h"
#include "ZNTMudMacroTableViewController.h"

ZNTEditMacroViewController::ZNTEditMacroViewController(const ZNTPlatform& platform,
                                                       ZNTDatabaseHelper& database,
                                                       ZNTMacroGroupDropDownController& dropDownController,
                                                       ZNTMudMacroTableViewController& mmtvc,
                                                       ZNTMacroSheetElements elements)
    : platform(platform),
      database(database),
      dropDownController(dropDownController),
      mmtvc(mmtvc),
      elements(elements)
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
    const auto* group = dropDownController.getCurrentMacroGroup();
    elements.macroGroupNameLabel.setText(group ? group->groupName : u"");
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
    database.updateMacro(macroSelected);
    mmtvc.updateMacroInList(macroSelected, mmtvc.getCurrentSelectedMacroIndex());
    platform.notifications.post("MACRO_ADDED", this);
    elements.commandText.setText(u"");
    elements.macroNameTF.setText(u"");
    closeSheet();
}
