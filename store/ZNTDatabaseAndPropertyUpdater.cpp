#include "ZNTDatabaseAndPropertyUpdater.h"

#include "ZNTDatabase.h"
#include "ZNTDatabaseLocation.h"
#include "ZNTPrivateFiles.h"
#include "ZNTPropertyList.h"

#include <algorithm>
#include <filesystem>
#include <plist/plist.h>

namespace
{

constexpr const char* counterKey = "update_db";

constexpr std::string_view addColumns[] = {"ALTER TABLE ZNTTrigger ADD sound_file_to_play text",
                                           "ALTER TABLE ZNTTrigger ADD gag integer"};

constexpr std::string_view seedMuds[] = {
    "insert into ZNTMudList (name, url, port, telnetURL, userCreated) values ('QuestMud', "
    "'http://www.questmud.fi', '3000', 'mud.questmud.fi', 0)",
    "insert into ZNTMudList (name, url, port, telnetURL, userCreated) values "
    "('萬  王  之  王 (King of Kings - Chinese BIG5 encoding)', 'http://kk.muds.idv.tw', '4000', "
    "'kk.muds.idv.tw', 0)",
    "insert into ZNTMudList (name, url, port, telnetURL, userCreated) values ('Anathema Online (Italian)', "
    "'http://www.anathema.it', '4000', 'mud.anathema.it', 0)"};

constexpr std::string_view createAliases =
    R"(CREATE TABLE "ZNTAlias" ("oid" integer NOT NULL PRIMARY KEY AUTOINCREMENT,"name" text NOT NULL,"dataToExecute" text NOT NULL);)";

/// The number under the key, 0 if there is none.
std::int32_t counterIn(const std::string& path)
{
    const auto root = znt::dictionaryIn(path);
    if (!root)
        return 0;
    auto* node = plist_dict_get_item(root.get(), counterKey);
    if (!node || plist_get_node_type(node) != PLIST_UINT)
        return 0;
    std::uint64_t number = 0;
    plist_get_uint_val(node, &number);
    return static_cast<std::int32_t>(number);
}

/// The list in the file with another counter, as XML. Its other entries stay. Empty if it could not be made.
std::string propertyListWith(std::int32_t counter, const std::string& path)
{
    auto root = znt::dictionaryIn(path);
    if (!root)
        root = znt::emptyDictionary();
    plist_dict_set_item(root.get(), counterKey, plist_new_uint(static_cast<std::uint64_t>(counter)));
    return znt::xmlOf(root);
}

std::int64_t laterStepsDone(ZNTDatabase& database)
{
    std::int64_t done = -1;
    database.query("pragma user_version", {},
                   [&](const ZNTDatabaseRow& row) { done = row.longValue("user_version"); });
    return done;
}

bool runFrom(ZNTDatabase& database, ZNTDatabaseAndPropertyUpdater::LaterSteps steps, std::size_t first)
{
    for (const auto& step : steps.subspan(first))
        for (const auto statement : step)
            if (!database.execute(statement))
                return false;
    return database.execute("pragma user_version = " + std::to_string(steps.size())) &&
           database.execute("commit");
}

} // namespace

ZNTDatabaseAndPropertyUpdater::ZNTDatabaseAndPropertyUpdater(const ZNTFilePlaces& places, ZNTPlatformLog& log)
    : ZNTDatabaseAndPropertyUpdater(places, log, ZNTDatabaseLocation::folderBelow(places.home))
{
}

ZNTDatabaseAndPropertyUpdater::ZNTDatabaseAndPropertyUpdater(const ZNTFilePlaces& places, ZNTPlatformLog& log,
                                                             const std::string& folder)
    : path(ZNTDatabaseLocation::propertiesIn(folder)),
      pathInUse(ZNTDatabaseLocation::propertiesIn(ZNTDatabaseLocation::folderBelow(places.home))),
      log(log)
{
    std::error_code ignored;
    if (!std::filesystem::exists(path, ignored))
        static_cast<void>(znt::copyToPrivateFile(places.resource("database_properties.plist"), path));
    update_db_ = counterIn(path);
}

bool ZNTDatabaseAndPropertyUpdater::runDatabaseUpdates(const std::function<void(std::string_view)>& runSQL)
{
    bool hasRunFirstStep = false;
    if (update_db_ == 1) {
        for (const auto statement : addColumns)
            runSQL(statement);
        for (const auto statement : seedMuds)
            runSQL(statement);
        update_db_ = 2;
        hasRunFirstStep = true;
    }
    if (update_db_ == 2) {
        runSQL(createAliases);
        update_db_ = lastCounter;
    }
    // A database that came with 2 keeps it: the table is then tried again at each start, which does no harm.
    if (hasRunFirstStep)
        saveOutThePropertiesFile();
    return hasRunFirstStep;
}

void ZNTDatabaseAndPropertyUpdater::saveOutThePropertiesFile()
{
    log.log("Root ZNTDatabaseAndPropertyUpdater: " + pathInUse);
    const auto propertyList = propertyListWith(update_db_, path);
    if (propertyList.empty()) {
        log.log("The property list could not be written as XML.");
        return;
    }
    saving = znt::replacePrivateFile(path, propertyList);
}

void ZNTDatabaseAndPropertyUpdater::runLaterSteps(ZNTDatabase& database, LaterSteps steps)
{
    const auto count = static_cast<std::int64_t>(steps.size());
    if (update_db_ < lastCounter)
        return;
    if (const auto done = laterStepsDone(database); done < 0 || done >= count)
        return;
    if (!database.execute("begin immediate"))
        return;
    // Read again: another program may have run them since.
    const auto done = std::max<std::int64_t>(laterStepsDone(database), 0);
    if (done < count && runFrom(database, steps, static_cast<std::size_t>(done)))
        return;
    if (done < count)
        log.log("The database could not be brought up to date: " + database.lastError().description);
    database.execute("rollback");
}
