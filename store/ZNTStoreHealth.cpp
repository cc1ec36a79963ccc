#include "ZNTStoreHealth.h"

#include "ZNTDatabase.h"

#include <sqlite3.h>

namespace
{

constexpr std::string_view countTables =
    "select count(*) as found from sqlite_master where type = 'table' and name in ('ZNTMacroGroup', "
    "'ZNTMacro', 'ZNTTrigger', 'ZNTMudList')";
constexpr std::int64_t tables = 4;

ZNTStoreHealth afterFailure(const ZNTError& error)
{
    using State = ZNTStoreHealth::State;
    switch (error.code & 0xFF) {
    case SQLITE_NOTADB:
    case SQLITE_CORRUPT:
        return {.state = State::Broken, .reason = error.description};
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return {.state = State::Locked, .reason = error.description};
    default:
        return {.state = State::Unreadable, .reason = error.description};
    }
}

} // namespace

ZNTStoreHealth ZNTStoreHealth::of(ZNTDatabase& database, Look look)
{
    bool isWhole = false;
    const auto readTables = [&](const ZNTDatabaseRow& row) { isWhole = row.longValue("found") == tables; };
    const auto readCheck = [&](const ZNTDatabaseRow& row) { isWhole = row.text("quick_check") == u"ok"; };
    if (!database.query(countTables, {}, readTables))
        return afterFailure(database.lastError());
    if (isWhole && look == Look::AtEveryPage && !database.query("pragma quick_check(1)", {}, readCheck))
        return afterFailure(database.lastError());
    return {.state = isWhole ? State::Usable : State::Broken, .reason = {}};
}
