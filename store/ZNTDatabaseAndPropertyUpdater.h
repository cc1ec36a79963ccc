#pragma once

#include "ZNTFilePlaces.h"
#include "ZNTPlatformLog.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

/// Brings an older database up to the present schema. How far it has come is a number in a property list
/// beside it: the next step to run, 0 where that is not known and nothing is run.
class ZNTDatabaseAndPropertyUpdater
{
public:
    /// Reads the number, after copying the shipped property list to its place where none is. Both outlive
    /// this.
    ZNTDatabaseAndPropertyUpdater(const ZNTFilePlaces& places, ZNTPlatformLog& log);

    [[nodiscard]] std::int32_t update_db() const { return update_db_; }
    void setUpdate_db(std::int32_t number) { update_db_ = number; }

    /// Runs the steps that are due; statements that fail are passed over. Whether the first step was among
    /// them: only then is the number saved.
    bool runDatabaseUpdates(const std::function<void(std::string_view statement)>& runSQL);

    void saveOutThePropertiesFile();

private:
    std::string path;
    ZNTPlatformLog& log;
    std::int32_t update_db_ = 0;
};
