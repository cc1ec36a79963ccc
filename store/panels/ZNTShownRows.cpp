#include "ZNTShownRows.h"

#include "ZNTDatabaseHelper.h"

namespace znt
{

void saveShownRow(ZNTDatabaseHelper& database, ZNTTrigger& trigger)
{
    if (trigger.isUnsaved)
        database.insertTrigger(trigger);
    else
        database.updateTrigger(trigger);
}

void saveShownRow(ZNTDatabaseHelper& database, ZNTMacro& macro)
{
    if (macro.isUnsaved)
        database.insertMacroSetWithMacroGroup(macro);
    else
        database.updateMacro(macro);
}

void saveShownRow(ZNTDatabaseHelper& database, ZNTMudList& entry)
{
    if (entry.isUnsaved)
        database.addNewRowMudList(entry);
    // An insert gives a game the default flags, so one that succeeded is followed by the update, too.
    if (!entry.isUnsaved)
        database.updateMudListObject(entry);
}

void deleteShownRow(ZNTDatabaseHelper& database, const ZNTTrigger& trigger)
{
    if (!trigger.isUnsaved)
        database.deleteTrigger(trigger);
}

void deleteShownRow(ZNTDatabaseHelper& database, const ZNTMacro& macro)
{
    if (!macro.isUnsaved)
        database.deleteMacro(macro);
}

void deleteShownRow(ZNTDatabaseHelper& database, const ZNTMudList& entry)
{
    if (!entry.isUnsaved)
        database.hideZNTMudListValueFromUser(u"ZNTMudList", entry.oid);
}

} // namespace znt
