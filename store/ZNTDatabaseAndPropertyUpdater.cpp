#include "ZNTDatabaseAndPropertyUpdater.h"

#include "ZNTDatabase.h"
#include "ZNTDatabaseLocation.h"
#include "ZNTPrivateFiles.h"
#include "ZNTPropertyList.h"
#include "ZNTText.h"

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

/// One statement of the later steps, made from a row.
struct LaterChange {
    int step;
    std::string sql;
    std::string_view column; ///< that it adds; empty if it does something else
};

/// In the order in which they run.
std::vector<LaterChange>
laterChanges(std::span<const ZNTTriggerColumn> columns,
             std::span<const ZNTDatabaseAndPropertyUpdater::LaterStatement> statements)
{
    std::vector<LaterChange> changes;
    for (const auto& column : columns) {
        const auto* type = std::holds_alternative<bool ZNTTrigger::*>(column.field) ? " integer" : " text";
        if (column.addedByStep > 0)
            changes.push_back({column.addedByStep,
                               "ALTER TABLE ZNTTrigger ADD " + std::string(column.stored) + type,
                               column.stored});
    }
    for (const auto& statement : statements)
        changes.push_back({statement.step, std::string(statement.sql), {}});
    std::ranges::stable_sort(changes, {}, &LaterChange::step);
    return changes;
}

/// False also if the database cannot be read.
bool lacksTriggerColumn(ZNTDatabase& database, std::string_view column)
{
    bool isThere = false;
    const bool isRead =
        database.query("select 1 from pragma_table_info('ZNTTrigger') where name = ? collate nocase",
                       {znt::textFromUtf8(column)}, [&](const ZNTDatabaseRow&) { isThere = true; });
    return isRead && !isThere;
}

/// Without a known number these are the columns alone. A column that the table has is never due: it was added
/// while the number was lost.
std::vector<std::string> dueStatements(ZNTDatabase& database, const std::vector<LaterChange>& changes,
                                       bool isNumberKnown)
{
    const auto last = changes.empty() ? 0 : changes.back().step;
    const auto done = isNumberKnown ? laterStepsDone(database) : 0;
    if (done < 0 || done >= last)
        return {};
    std::vector<std::string> due;
    for (const auto& change : changes) {
        const bool isColumn = !change.column.empty();
        if (change.step > done && (isColumn ? lacksTriggerColumn(database, change.column) : isNumberKnown))
            due.push_back(change.sql);
    }
    if (isNumberKnown)
        due.push_back("pragma user_version = " + std::to_string(last));
    return due;
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

void ZNTDatabaseAndPropertyUpdater::runLaterSteps(ZNTDatabase& database,
                                                  std::span<const ZNTTriggerColumn> columns,
                                                  std::span<const LaterStatement> statements)
{
    const auto changes = laterChanges(columns, statements);
    const auto due = [&] { return dueStatements(database, changes, update_db_ >= lastCounter); };
    if (due().empty() || !database.execute("begin immediate"))
        return;
    // Looked at again: another program may have run them since.
    const auto runs = [&](const std::string& statement) { return database.execute(statement); };
    if (std::ranges::all_of(due(), runs) && database.execute("commit"))
        return;
    log.log("The database could not be brought up to date: " + database.lastError().description);
    database.execute("rollback");
}
