#include "ZNTDatabase.h"

#include "ZNTStoreWait.h"

#include <fcntl.h>
#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

constexpr double pauseWhenBusy = 20e-6; // seconds

bool isBusy(int result)
{
    const int primary = result & 0xFF;
    return primary == SQLITE_BUSY || primary == SQLITE_LOCKED;
}

void makeFileForOwnerAlone(const std::string& path)
{
    const int descriptor = ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, S_IRUSR | S_IWUSR);
    if (descriptor >= 0)
        ::close(descriptor);
}

// How many steps of SQLite's machine a statement may take: about a second of work, and many times what tens
// of thousands of rows need.
constexpr int stepsBetweenLooks = 100'000;
constexpr int mostLooks = 100;

/// The file may come from anywhere. Damage, a view in place of a table, or a trigger can make the simplest
/// statement endless. Our tables need no views, so these are switched off. Anything else that takes too long
/// is interrupted.
void limitStatements(sqlite3* connection, int& looks)
{
    sqlite3_db_config(connection, SQLITE_DBCONFIG_ENABLE_VIEW, 0, nullptr);
    sqlite3_db_config(connection, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    sqlite3_progress_handler(
        connection, stepsBetweenLooks,
        [](void* count) { return ++*static_cast<int*>(count) > mostLooks ? 1 : 0; }, &looks);
}

} // namespace

std::int64_t ZNTDatabaseRow::longValue(std::string_view column) const
{
    const int index = indexOf(column);
    return index < 0 ? 0 : sqlite3_column_int64(statement, index);
}

std::optional<std::u16string> ZNTDatabaseRow::text(std::string_view column) const
{
    const int index = indexOf(column);
    if (index < 0 || sqlite3_column_type(statement, index) == SQLITE_NULL)
        return std::nullopt;
    const auto* units = static_cast<const char16_t*>(sqlite3_column_text16(statement, index));
    const auto bytes = static_cast<std::size_t>(sqlite3_column_bytes16(statement, index));
    return units ? std::u16string(units, bytes / sizeof(char16_t)) : std::u16string();
}

int ZNTDatabaseRow::indexOf(std::string_view column) const
{
    for (int index = 0; index < sqlite3_column_count(statement); ++index)
        if (column == sqlite3_column_name(statement, index))
            return index;
    return -1;
}

ZNTDatabase::ZNTDatabase(const std::string& path, ZNTStoreWait& wait) : wait(wait)
{
    if (path != inMemory)
        makeFileForOwnerAlone(path);
    const int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX;
    if (sqlite3_open_v2(path.c_str(), &connection, flags, nullptr) != SQLITE_OK) {
        noteError(sqlite3_errcode(connection));
        sqlite3_close(connection);
        connection = nullptr;
        return;
    }
    limitStatements(connection, looks);
}

ZNTDatabase::~ZNTDatabase()
{
    for (const auto& [sql, statement] : statements)
        sqlite3_finalize(statement);
    sqlite3_close(connection);
}

std::int64_t ZNTDatabase::lastInsertRowId() const
{
    return connection ? sqlite3_last_insert_rowid(connection) : 0;
}

std::int64_t ZNTDatabase::lastChangedRows() const { return connection ? sqlite3_changes64(connection) : 0; }

sqlite3_stmt* ZNTDatabase::statementFor(std::string_view sql)
{
    if (!connection)
        return nullptr;
    const std::string key(sql);
    if (const auto known = statements.find(key); known != statements.end())
        return known->second;
    sqlite3_stmt* statement = nullptr;
    int result;
    do
        result = sqlite3_prepare_v2(connection, key.c_str(), -1, &statement, nullptr);
    while (mustTryAgain(result));
    if (result != SQLITE_OK || !statement) {
        noteError(result);
        return nullptr;
    }
    statements.emplace(key, statement);
    return statement;
}

sqlite3_stmt* ZNTDatabase::boundStatement(std::string_view sql,
                                          const std::vector<ZNTDatabaseValue>& parameters)
{
    sqlite3_stmt* statement = statementFor(sql);
    if (!statement)
        return nullptr;
    looks = 0;
    for (std::size_t at = 0; at < parameters.size(); ++at) {
        const int index = static_cast<int>(at) + 1;
        if (const auto* number = std::get_if<std::int64_t>(&parameters[at]))
            sqlite3_bind_int64(statement, index, *number);
        else if (const auto* text = std::get_if<std::u16string>(&parameters[at]))
            sqlite3_bind_text16(statement, index, text->data(),
                                static_cast<int>(text->size() * sizeof(char16_t)),
                                SQLITE_TRANSIENT); // NOLINT: the library's own macro
    }
    return statement;
}

ZNTDatabase::StepResult ZNTDatabase::step(sqlite3_stmt* statement)
{
    for (;;) {
        const int result = sqlite3_step(statement);
        if (result == SQLITE_ROW || result == SQLITE_DONE) {
            wait.end();
            return result == SQLITE_ROW ? StepResult::Row : StepResult::Done;
        }
        const bool isToRepeat = mustTryAgain(result);
        if (!isToRepeat)
            noteError(result);
        sqlite3_reset(statement);
        if (!isToRepeat)
            return StepResult::Failed;
    }
}

bool ZNTDatabase::mustTryAgain(int result)
{
    if (isBusy(result) && wait.pause(pauseWhenBusy))
        return true;
    wait.end();
    return false;
}

void ZNTDatabase::noteError(int result) { error = {"SQLite", result, sqlite3_errmsg(connection)}; }

void ZNTDatabase::finish(sqlite3_stmt* statement)
{
    sqlite3_reset(statement);
    sqlite3_clear_bindings(statement);
}
