#pragma once

#include "ZNTResult.h"

#include <cstdint>
#include <list>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <variant>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;
class ZNTStoreWait;

/// A value bound to a "?": NULL, an integer or a text.
using ZNTDatabaseValue = std::variant<std::monostate, std::int64_t, std::u16string>;

/// One row of a result, read by the names of its columns. Valid while its query hands it out.
class ZNTDatabaseRow
{
public:
    explicit ZNTDatabaseRow(sqlite3_stmt* statement) : statement(statement) {}

    /// 0 if the column is NULL or missing.
    [[nodiscard]] std::int64_t longValue(std::string_view column) const;
    [[nodiscard]] bool boolValue(std::string_view column) const { return longValue(column) != 0; }
    /// None if the column is NULL or missing.
    [[nodiscard]] std::optional<std::u16string> text(std::string_view column) const;

private:
    [[nodiscard]] int indexOf(std::string_view column) const;
    sqlite3_stmt* statement;
};

/// One SQLite connection. Statements are compiled once each and kept by their text. If another program has
/// locked the file, a call is repeated every 20 microseconds until the wait's patience ends. A statement that
/// takes SQLite about a second of work fails: only a damaged or foreign file makes one take so long.
class ZNTDatabase
{
public:
    /// Opens the file. A missing file is made, readable by its owner alone. If that fails, every statement
    /// fails. The path `inMemory` makes a database without a file. `wait` outlives this.
    ZNTDatabase(const std::string& path, ZNTStoreWait& wait);
    ~ZNTDatabase();
    ZNTDatabase(const ZNTDatabase&) = delete;
    ZNTDatabase& operator=(const ZNTDatabase&) = delete;

    static constexpr const char* inMemory = ":memory:";

    [[nodiscard]] bool isOpen() const { return connection != nullptr; }

    /// Runs `sql` and hands each row to `eachRow`. False if SQLite refused it; rows before the failure have
    /// been handed out.
    template <typename EachRow>
    bool query(std::string_view sql, const std::vector<ZNTDatabaseValue>& parameters, EachRow eachRow)
    {
        sqlite3_stmt* statement = boundStatement(sql, parameters);
        if (!statement)
            return false;
        StepResult result;
        while ((result = step(statement)) == StepResult::Row)
            eachRow(ZNTDatabaseRow(statement));
        finish(statement);
        return result == StepResult::Done;
    }
    bool execute(std::string_view sql, const std::vector<ZNTDatabaseValue>& parameters = {})
    {
        return query(sql, parameters, [](const ZNTDatabaseRow&) {});
    }
    [[nodiscard]] std::int64_t lastInsertRowId() const;
    /// How many rows the last successful insert, update or delete changed.
    [[nodiscard]] std::int64_t lastChangedRows() const;
    /// The error of the last opening or statement that failed. The code is SQLite's.
    [[nodiscard]] const ZNTError& lastError() const { return error; }

private:
    enum class StepResult { Row, Done, Failed };
    bool mustTryAgain(int result);
    void noteError(int result);
    sqlite3_stmt* statementFor(std::string_view sql);
    sqlite3_stmt* boundStatement(std::string_view sql, const std::vector<ZNTDatabaseValue>& parameters);
    StepResult step(sqlite3_stmt* statement);
    static void finish(sqlite3_stmt* statement);

    sqlite3* connection = nullptr;
    int looks = 0; ///< how often the present statement was checked for taking too long
    ZNTStoreWait& wait;
    ZNTError error;
    std::unordered_map<std::string, sqlite3_stmt*> statements; ///< by their text; there are some two dozen
};
