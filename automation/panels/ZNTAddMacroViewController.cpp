#include "ZNTAddMacroViewController.h"

#include "ZNTDatabaseHelper.h"
#include "ZNTMacroGroupDropDownController.h"
#include "ZNTMudMacroTableViewController.h"

ZNTAddMacroViewController::ZNTAddMacroViewController(const ZNTPlatform& platform, ZNTDatabaseHelper& database,
                                                     ZNTMacroGroupDropDownController& dropDownController,
                                                     ZNTMudMacroTableViewController& mmtvc,
                                                     ZNTMacroSheetElements elements)
    : ZNTMacroSheetController(platform, database, dropDownController, mmtvc, elements)
{
    setMacroGroupName();
}

void ZNTAddMacroViewController::showWindow()
{
    elements.macroGroupNameLabel.setText(dropDownController.currentValueInComboBox());
    elements.theSheet.show();
}

void ZNTAddMacroViewController::doneEditing()
{
    const auto* group = dropDownController.getCurrentMacroGroup();
    ZNTMacro macro{.oid = 0,
                   .groupOid = group ? group->oid : 0,
                   .name = elements.macroNameTF.text(),
                   .dataToExecute = elements.commandText.text()};
    database.insertMacroSetWithMacroGroup(macro);
    mmtvc.addMacroToList(macro);
    finishEditing();
}
