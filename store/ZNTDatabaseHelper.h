#pragma once

#include "ZNTDatabase.h"
#include "ZNTFilePlaces.h"
#include "ZNTMacro.h"
#include "ZNTMacroGroup.h"
#include "ZNTMudList.h"
#include "ZNTPlatformLog.h"
#include "ZNTRecords.h"
#include "ZNTStoreWait.h"
#include "ZNTTrigger.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Everything that outlives a run: macros and their groups, triggers, the address book. The only code that
/// speaks SQL; one a program, on the run loop's thread.
///
/// The database is found, made on a first run and brought up to date when the first operation needs it, and
/// stays open from then on. No operation reports a failure: a query that fails yields nothing, an update that
/// fails changes nothing. While another program holds the file, an operation waits for it; after a second the
/// platform log and the front end's notice say so.
class ZNTDatabaseHelper
{
public:
    /// `log` outlives this.
    ZNTDatabaseHelper(ZNTFilePlaces places, ZNTPlatformLog& log);
    /// The same with a clock to wait by.
    ZNTDatabaseHelper(ZNTFilePlaces places, ZNTPlatformLog& log, std::unique_ptr<ZNTClock> ownClock);
    ~ZNTDatabaseHelper();
    ZNTDatabaseHelper(const ZNTDatabaseHelper&) = delete;
    ZNTDatabaseHelper& operator=(const ZNTDatabaseHelper&) = delete;

    /// Opens the database now. A front end calls this before it makes anything else, so that a wait for
    /// another program comes at a moment at which it can show that.
    void open() { static_cast<void>(database()); }
    /// Whether this start made the player's store: it is the first one. Known when the database is open.
    [[nodiscard]] bool isFirstStart() const { return isFirstStart_; }
    void setWaitNotice(ZNTStoreWait::Notice notice) { wait.setNotice(std::move(notice)); }

    /// Of several macros with that name, the one that the database reads last.
    std::optional<ZNTMacro> getMacroFromDatabaseByName(std::u16string_view name);
    std::vector<ZNTMacroGroup> getAllMacroGroupsFromDatabase();
    std::vector<std::u16string> getAllMacroNames();
    std::vector<ZNTMacro> getAllMacrosFromDatabaseByMacroGroupId(std::int64_t groupOid);
    /// The active ones only.
    std::vector<ZNTTrigger> loadTriggers();
    /// The inactive ones too.
    std::vector<ZNTTrigger> loadAllTriggers();
    /// Those the player has not hidden, by name.
    std::vector<ZNTMudList> getAllMudsFromMudList();
    /// All triggers, all groups with their macros, and the games that are not hidden. None if one of the
    /// queries fails, so that what is left is not taken for everything.
    std::optional<ZNTRecords> allRecords();

    // Inserts give the record its row key. One that fails gives it that of the insert before, or 0, and marks
    // it as unsaved (ZNTShownRows.h).
    void insertTrigger(ZNTTrigger& trigger);
    void updateTrigger(const ZNTTrigger& trigger);
    void deleteTrigger(const ZNTTrigger& trigger);
    void insertMacroGroup(ZNTMacroGroup& group);
    /// Deletes a whole group, its macros first; the key is the group's.
    void deleteMacroByOid(std::int64_t groupOid);
    void insertMacroSetWithMacroGroup(ZNTMacro& macro);
    /// A macro never changes its group.
    void updateMacro(const ZNTMacro& macro);
    void deleteMacro(const ZNTMacro& macro);
    void addNewRowMudList(ZNTMudList& entry);
    /// The stored row always becomes visible and the player's own; these two fields of the record are
    /// ignored.
    void updateMudListObject(const ZNTMudList& entry);
    /// Keeps the row but does not read it any more. `tableName` is not used.
    void hideZNTMudListValueFromUser(std::u16string_view tableName, std::int64_t objectIdOfRemovalObject);
    void restoreSystemDefaultMudList();
    /// Kept as part of the interface: it binds `tableName` in place of the key and so deletes nothing.
    void removeZNTMudListObjectFromTable(std::u16string_view tableName, std::int64_t objectIdOfRemovalObject);
    void runSQL(std::string_view statement);
    /// Runs `changes`, and keeps what it has changed only if it returns true. Returns whether that is kept.
    /// It may not be used within itself.
    bool inOneTransaction(const std::function<bool()>& changes);
    /// Kept as part of the interface: recorded commands are not stored.
    void insertRecordedCommands() {}

    /// Whether the last insert, update, delete, hiding or restoring wrote at least one row. False if the
    /// database could not be written or no row has the key. For a group: whether the group itself was
    /// deleted. Reads and `runSQL` do not change the answer.
    [[nodiscard]] bool didLastChangeSucceed() const { return hasLastChangeSucceeded; }

private:
    ZNTDatabase& database();
    void change(std::string_view sql, const std::vector<ZNTDatabaseValue>& parameters);
    void openDatabase();
    void nameBrokenStore(const std::string& path);

    ZNTFilePlaces places;
    ZNTPlatformLog& log;
    std::unique_ptr<ZNTClock> ownClock;
    ZNTStoreWait wait;
    std::unique_ptr<ZNTDatabase> opened;
    bool isFirstStart_ = false;
    bool hasLastChangeSucceeded = false;
};
