#include "ZNTMacroGroups.h"

#include "ZNTDatabaseHelper.h"
#include "ZNTText.h"

#include <algorithm>
#include <utility>

ZNTMacroGroups::ZNTMacroGroups(ZNTDatabaseHelper& database, ZNTPlatformLog& log)
    : database(database),
      log(log),
      groups(database.getAllMacroGroupsFromDatabase())
{
}

const ZNTMacroGroup* ZNTMacroGroups::named(std::u16string_view name) const
{
    if (name.empty())
        return nullptr;
    const auto wanted = znt::trimmedOfBlanks(name);
    const auto found = std::find_if(groups.begin(), groups.end(),
                                    [&](const ZNTMacroGroup& group) { return group.groupName == wanted; });
    return found == groups.end() ? nullptr : &*found;
}

bool ZNTMacroGroups::add(std::u16string_view name)
{
    ZNTMacroGroup group;
    group.groupName = name;
    database.insertMacroGroup(group);
    const bool isStored = database.didLastChangeSucceed();
    if (!isStored)
        log.log("The macro group was not saved: the database could not be written.");
    groups.push_back(std::move(group));
    return isStored;
}

bool ZNTMacroGroups::remove(std::int64_t oid)
{
    database.deleteMacroByOid(oid);
    std::erase_if(groups, [oid](const ZNTMacroGroup& group) { return group.oid == oid; });
    return database.didLastChangeSucceed();
}

void ZNTMacroGroups::reload() { groups = database.getAllMacroGroupsFromDatabase(); }
