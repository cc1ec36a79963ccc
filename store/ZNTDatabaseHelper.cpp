#include "ZNTDatabaseHelper.h"

#include "ZNTDatabase.h"
#include "ZNTDatabaseAndPropertyUpdater.h"
#include "ZNTStoreHealth.h"
#include "ZNTStoreMaker.h"
#include "ZNTTriggerColumns.h"

#include <algorithm>
#include <utility>

namespace
{

ZNTDatabaseValue value(const std::u16string& text) { return text; }
ZNTDatabaseValue value(const std::optional<std::u16string>& text)
{
    return text ? ZNTDatabaseValue(*text) : ZNTDatabaseValue();
}
ZNTDatabaseValue value(std::int64_t number) { return number; }
ZNTDatabaseValue value(bool isSet) { return std::int64_t{isSet ? 1 : 0}; }

ZNTMacro macroFrom(const ZNTDatabaseRow& row)
{
    return {.oid = row.longValue("oid"),
            .groupOid = row.longValue("zntMacroGroupFK"),
            .name = row.text("name").value_or(u""),
            .dataToExecute = row.text("dataToExecute").value_or(u"")};
}

ZNTMacroGroup groupFrom(const ZNTDatabaseRow& row)
{
    // Group keys are read as 32 bits, unlike all others. The macros of a group are found by this narrow key.
    return {.oid = static_cast<std::int32_t>(row.longValue("oid")),
            .groupName = row.text("groupName").value_or(u""),
            .macrosList = {}};
}

void read(std::u16string& field, const ZNTDatabaseRow& row, std::string_view column)
{
    field = row.text(column).value_or(u"");
}
void read(std::optional<std::u16string>& field, const ZNTDatabaseRow& row, std::string_view column)
{
    field = row.text(column);
}
void read(bool& field, const ZNTDatabaseRow& row, std::string_view column) { field = row.boolValue(column); }

ZNTTrigger triggerFrom(const ZNTDatabaseRow& row)
{
    ZNTTrigger trigger;
    trigger.oid = row.longValue("oid");
    for (const auto& column : ZNTTriggerColumns)
        std::visit([&](auto field) { read(trigger.*field, row, column.stored); }, column.field);
    return trigger;
}

ZNTDatabaseValue valueOf(const ZNTTrigger& trigger, const ZNTTriggerColumn& column)
{
    return std::visit([&](auto field) { return value(trigger.*field); }, column.field);
}

/// "insert into ZNTTrigger (name, ...) values (?, ...)"
std::string insertOfTriggers()
{
    std::string columns, marks;
    for (const auto& column : ZNTTriggerColumns) {
        columns += (columns.empty() ? "" : ", ") + std::string(column.stored);
        marks += marks.empty() ? "?" : ", ?";
    }
    return "insert into ZNTTrigger (" + columns + ") values (" + marks + ")";
}

/// The columns in the order of the statement that updates a trigger.
auto columnsOfUpdate()
{
    auto columns = ZNTTriggerColumns;
    std::ranges::sort(columns, {}, &ZNTTriggerColumn::placeInUpdate);
    return columns;
}

ZNTMudList mudFrom(const ZNTDatabaseRow& row)
{
    return {.oid = row.longValue("oid"),
            .name = row.text("name").value_or(u""),
            .url = row.text("url").value_or(u""),
            .telnetURL = row.text("telnetURL").value_or(u""),
            .port = row.longValue("port"),
            .defaultConnection = row.boolValue("defaultConnection"),
            .active = row.boolValue("active"),
            .userCreated = row.boolValue("userCreated"),
            .displayToUser = row.boolValue("displayToUser")};
}

/// One record for each row of the result, in its order.
template <typename MakeRecord>
auto recordsFrom(ZNTDatabase& database, std::string_view sql, const std::vector<ZNTDatabaseValue>& parameters,
                 MakeRecord makeRecord)
{
    std::vector<decltype(makeRecord(std::declval<const ZNTDatabaseRow&>()))> records;
    database.query(sql, parameters, [&](const ZNTDatabaseRow& row) { records.push_back(makeRecord(row)); });
    return records;
}

} // namespace

ZNTDatabaseHelper::ZNTDatabaseHelper(ZNTFilePlaces places, ZNTPlatformLog& log)
    : ZNTDatabaseHelper(std::move(places), log, std::make_unique<ZNTSystemClock>())
{
}

ZNTDatabaseHelper::ZNTDatabaseHelper(ZNTFilePlaces places, ZNTPlatformLog& log,
                                     std::unique_ptr<ZNTClock> ownClock)
    : places(std::move(places)),
      log(log),
      ownClock(std::move(ownClock)),
      wait(*this->ownClock, log)
{
}

ZNTDatabaseHelper::~ZNTDatabaseHelper() = default;

ZNTDatabase& ZNTDatabaseHelper::database()
{
    if (!opened)
        openDatabase();
    return *opened;
}

void ZNTDatabaseHelper::openDatabase()
{
    ZNTStoreMaker maker(places, log, wait);
    const auto path = maker.preparedDatabasePath();
    isFirstStart_ = maker.hasMadeStore();
    ZNTDatabaseAndPropertyUpdater updater(places, log);
    opened = std::make_unique<ZNTDatabase>(path, wait);
    if (!opened->isOpen()) {
        log.log("Could not open db.");
        return;
    }
    updater.runDatabaseUpdates([this](std::string_view statement) { runSQL(statement); });
    updater.runLaterSteps(*opened);
    if (path != ZNTDatabase::inMemory)
        nameBrokenStore(path);
}

void ZNTDatabaseHelper::nameBrokenStore(const std::string& path)
{
    const auto health = ZNTStoreHealth::of(*opened, ZNTStoreHealth::Look::AtTheTables);
    if (health.state == ZNTStoreHealth::State::Broken)
        log.log("The database " + path +
                " is missing or damaged, so nothing can be stored. The command zantor-console --mend-home "
                "puts it aside and makes a new one.");
}

std::optional<ZNTMacro> ZNTDatabaseHelper::getMacroFromDatabaseByName(std::u16string_view name)
{
    std::optional<ZNTMacro> last;
    database().query("select * from ZNTMacro where name =  ?", {std::u16string(name)},
                     [&](const ZNTDatabaseRow& row) { last = macroFrom(row); });
    return last;
}

std::vector<ZNTMacroGroup> ZNTDatabaseHelper::getAllMacroGroupsFromDatabase()
{
    return recordsFrom(database(), "select * from ZNTMacroGroup", {}, groupFrom);
}

std::vector<std::u16string> ZNTDatabaseHelper::getAllMacroNames()
{
    return recordsFrom(database(), "select name from ZNTMacro", {},
                       [](const ZNTDatabaseRow& row) { return row.text("name").value_or(u""); });
}

std::vector<ZNTMacro> ZNTDatabaseHelper::getAllMacrosFromDatabaseByMacroGroupId(std::int64_t groupOid)
{
    return recordsFrom(database(), "select * from ZNTMacro where zntMacroGroupFK = ?", {groupOid}, macroFrom);
}

std::vector<ZNTTrigger> ZNTDatabaseHelper::loadTriggers()
{
    return recordsFrom(database(), "select * from ZNTTrigger where enabled = 1", {}, triggerFrom);
}

std::vector<ZNTTrigger> ZNTDatabaseHelper::loadAllTriggers()
{
    return recordsFrom(database(), "select * from ZNTTrigger", {}, triggerFrom);
}

std::vector<ZNTMudList> ZNTDatabaseHelper::getAllMudsFromMudList()
{
    return recordsFrom(database(), "select * from ZNTMudList where displayToUser = 1 order by name", {},
                       mudFrom);
}

std::optional<ZNTRecords> ZNTDatabaseHelper::allRecords()
{
    ZNTRecords all;
    const auto read = [this](std::string_view sql, const std::vector<ZNTDatabaseValue>& parameters,
                             auto& records, auto makeRecord) {
        return database().query(sql, parameters,
                                [&](const ZNTDatabaseRow& row) { records.push_back(makeRecord(row)); });
    };
    bool isWhole =
        read("select * from ZNTTrigger order by oid", {}, all.triggers, triggerFrom) &&
        read("select * from ZNTMacroGroup order by oid", {}, all.groups, groupFrom) &&
        read("select * from ZNTMudList where displayToUser = 1 order by name, oid", {}, all.games, mudFrom);
    for (auto& group : all.groups)
        isWhole = isWhole && read("select * from ZNTMacro where zntMacroGroupFK = ? order by oid",
                                  {group.oid}, group.macrosList, macroFrom);
    return isWhole ? std::optional(std::move(all)) : std::nullopt;
}

void ZNTDatabaseHelper::change(std::string_view sql, const std::vector<ZNTDatabaseValue>& parameters)
{
    hasLastChangeSucceeded = database().execute(sql, parameters) && database().lastChangedRows() > 0;
}

void ZNTDatabaseHelper::insertTrigger(ZNTTrigger& trigger)
{
    std::vector<ZNTDatabaseValue> values;
    for (const auto& column : ZNTTriggerColumns)
        values.push_back(valueOf(trigger, column));
    change(insertOfTriggers(), values);
    trigger.oid = database().lastInsertRowId();
    trigger.isUnsaved = !hasLastChangeSucceeded;
}

void ZNTDatabaseHelper::updateTrigger(const ZNTTrigger& trigger)
{
    std::string assignments;
    std::vector<ZNTDatabaseValue> values;
    for (const auto& column : columnsOfUpdate()) {
        assignments += (assignments.empty() ? "" : ", ") + std::string(column.assignment);
        values.push_back(valueOf(trigger, column));
    }
    values.push_back(value(trigger.oid));
    change("UPDATE ZNTTrigger set " + assignments + " where oid=?", values);
}

void ZNTDatabaseHelper::deleteTrigger(const ZNTTrigger& trigger)
{
    change("delete from ZNTTrigger where oid = ?", {value(trigger.oid)});
}

void ZNTDatabaseHelper::insertMacroGroup(ZNTMacroGroup& group)
{
    change("insert into ZNTMacroGroup (groupName) values (?)", {value(group.groupName)});
    group.oid = database().lastInsertRowId();
}

void ZNTDatabaseHelper::deleteMacroByOid(std::int64_t groupOid)
{
    change("delete from ZNTMacro where zntMacroGroupFK = ?", {groupOid});
    change("delete from ZNTMacroGroup   where oid = ?", {groupOid});
}

void ZNTDatabaseHelper::insertMacroSetWithMacroGroup(ZNTMacro& macro)
{
    change("insert into ZNTMacro (name, dataToExecute, zntMacroGroupFK) values (?, ?, ?)",
           {value(macro.name), value(macro.dataToExecute), value(macro.groupOid)});
    macro.oid = database().lastInsertRowId();
    macro.isUnsaved = !hasLastChangeSucceeded;
}

void ZNTDatabaseHelper::updateMacro(const ZNTMacro& macro)
{
    change("UPDATE ZNTMacro set name=?, dataToExecute=? where oid=?",
           {value(macro.name), value(macro.dataToExecute), value(macro.oid)});
}

void ZNTDatabaseHelper::deleteMacro(const ZNTMacro& macro)
{
    change("delete from ZNTMacro where oid = ?", {value(macro.oid)});
}

void ZNTDatabaseHelper::addNewRowMudList(ZNTMudList& entry)
{
    change("insert into ZNTMudList (name, url, port, telnetURL) values (?, ?, ?, ?)",
           {value(entry.name), value(entry.url), value(entry.port), value(entry.telnetURL)});
    entry.oid = database().lastInsertRowId();
    entry.isUnsaved = !hasLastChangeSucceeded;
}

void ZNTDatabaseHelper::updateMudListObject(const ZNTMudList& entry)
{
    change("UPDATE ZNTMudList set name=?, url=?, telnetURL = ?, port = ?, defaultConnection = ?, "
           "active = ?, displayToUser = ?, userCreated = ? where oid=?",
           {value(entry.name), value(entry.url), value(entry.telnetURL), value(entry.port),
            value(entry.defaultConnection), value(entry.active), value(true), value(true), value(entry.oid)});
}

void ZNTDatabaseHelper::hideZNTMudListValueFromUser(std::u16string_view, std::int64_t objectIdOfRemovalObject)
{
    change("UPDATE ZNTMudList set displayToUser = ? where oid=?", {value(false), objectIdOfRemovalObject});
}

void ZNTDatabaseHelper::restoreSystemDefaultMudList()
{
    change("UPDATE ZNTMudList set displayToUser = ?", {value(true)});
}

void ZNTDatabaseHelper::removeZNTMudListObjectFromTable(std::u16string_view tableName, std::int64_t)
{
    change("delete from ZNTMudList where oid = ?", {std::u16string(tableName)});
}

void ZNTDatabaseHelper::runSQL(std::string_view statement) { database().execute(statement); }

bool ZNTDatabaseHelper::inOneTransaction(const std::function<bool()>& changes)
{
    // At once for writing, so that no other program changes what `changes` has read.
    if (!database().execute("begin immediate"))
        return false;
    if (changes() && database().execute("commit"))
        return true;
    database().execute("rollback");
    return false;
}
