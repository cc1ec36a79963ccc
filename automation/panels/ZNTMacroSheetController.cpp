#include "ZNTMacroSheetController.h"

#include "ZNTMacroGroupDropDownController.h"

ZNTMacroSheetController::ZNTMacroSheetController(const ZNTPlatform& platform, ZNTDatabaseHelper& database,
                                                 ZNTMacroGroupDropDownController& dropDownController,
                                                 ZNTMudMacroTableViewController& mmtvc,
                                                 ZNTMacroSheetElements elements)
    : platform(platform),
      database(database),
      dropDownController(dropDownController),
      mmtvc(mmtvc),
      elements(elements)
{
}

void ZNTMacroSheetController::showNameOfCurrentGroup()
{
    const auto* group = dropDownController.getCurrentMacroGroup();
    elements.macroGroupNameLabel.setText(group ? group->groupName : u"");
}

void ZNTMacroSheetController::finishEditing()
{
    platform.notifications.post("MACRO_ADDED", this);
    elements.commandText.setText(u"");
    elements.macroNameTF.setText(u"");
    closeSheet();
}
