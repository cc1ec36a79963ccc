#pragma once

#include "ZNTDatabaseHelper.h"

/// The store's operations on triggers. Kept as part of the interface: automation's own names for them.
class ZNTTriggerHelper
{
public:
    /// `database` outlives this.
    explicit ZNTTriggerHelper(ZNTDatabaseHelper& database) : database(database) {}

    /// The active ones, in the order of their rows.
    [[nodiscard]] std::vector<ZNTTrigger> loadTriggers() const { return database.loadTriggers(); }
    void insertTrigger(ZNTTrigger& trigger) const { database.insertTrigger(trigger); }
    void updateTrigger(const ZNTTrigger& trigger) const { database.updateTrigger(trigger); }

private:
    ZNTDatabaseHelper& database;
};
