#pragma once

#include "ZNTDatabaseHelper.h"
#include "ZNTTestPlatform.h"

#include <sqlite3.h>

/// A player's database and the property list beside it, read and changed past the code under test.
class ZNTStoredFiles
{
public:
    static constexpr const char* folder = "Library/Zantor/database";
    static constexpr const char* database = "Library/Zantor/database/.zantorDB.db";
    static constexpr const char* properties = "Library/Zantor/database/database_properties.plist";

    explicit ZNTStoredFiles(const ZNTTemporaryFolder& home) : home(home) {}

    /// One text a row, its columns parted by "|". A failure is SQLite's message alone.
    [[nodiscard]] std::vector<std::string> rows(const std::string& sql) const
    {
        sqlite3* opened = nullptr;
        sqlite3_open_v2(home.path(database).c_str(), &opened, SQLITE_OPEN_READWRITE, nullptr);
        const std::unique_ptr<sqlite3, int (*)(sqlite3*)> connection(opened, &sqlite3_close);
        std::vector<std::string> read;
        const auto addRow = [](void* list, int count, char** values, char**) {
            std::string row;
            for (int column = 0; column < count; ++column)
                row += (column ? "|" : "") + std::string(values[column] ? values[column] : "NULL");
            static_cast<std::vector<std::string>*>(list)->push_back(row);
            return 0;
        };
        if (sqlite3_exec(connection.get(), sql.c_str(), addRow, &read, nullptr) != SQLITE_OK)
            return {sqlite3_errmsg(connection.get())};
        return read;
    }
    [[nodiscard]] std::string value(const std::string& sql) const
    {
        const auto read = rows(sql);
        return read.size() == 1 ? read[0] : std::to_string(read.size()) + " rows";
    }
    [[nodiscard]] bool hasTable(const std::string& name) const
    {
        return value("select count(*) from sqlite_master where type = 'table' and name = '" + name + "'") ==
               "1";
    }

    [[nodiscard]] static std::string propertiesWith(const std::string& update_db)
    {
        return R"(<?xml version="1.0" encoding="UTF-8"?>
<!DOCTYPE plist PUBLIC "-//Apple//DTD PLIST 1.0//EN" "http://www.apple.com/DTDs/PropertyList-1.0.dtd">
<plist version="1.0">
<dict>
	<key>update_db</key>
	)" + update_db +
               "\n</dict>\n</plist>\n";
    }
    [[nodiscard]] static std::string counter(int number)
    {
        return propertiesWith("<integer>" + std::to_string(number) + "</integer>");
    }

private:
    const ZNTTemporaryFolder& home;
};

/// A player's machine, with the files of the store.
struct ZNTStoreFixture : testing::Test {
    ZNTTestPlatform machine;
    const ZNTFilePlaces& places = machine.platform.places;
    const ZNTStoredFiles files{machine.home};

    /// Its key is 0 if it could not be stored.
    static ZNTMacro storedMacro(ZNTDatabaseHelper& store, std::u16string name, std::u16string text,
                                std::int64_t group = 1)
    {
        ZNTMacro macro{
            .oid = 0, .groupOid = group, .name = std::move(name), .dataToExecute = std::move(text)};
        store.insertMacroSetWithMacroGroup(macro);
        return macro;
    }
};
