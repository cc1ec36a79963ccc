#include "ZNTDatabaseAndPropertyUpdater.h"

#include "ZNTDatabaseLocation.h"
#include "ZNTPrivateFiles.h"

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <plist/plist.h>

namespace
{

constexpr const char* counterKey = "update_db";

struct FreePlist {
    void operator()(void* node) const { plist_free(node); }
};
using Plist = std::unique_ptr<void, FreePlist>;

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

/// The number under the key, 0 where the text is no property list or has no such number.
std::int32_t counterFrom(const std::string& propertyList)
{
    plist_t read = nullptr;
    plist_from_xml(propertyList.data(), static_cast<std::uint32_t>(propertyList.size()), &read);
    const Plist root(read);
    if (!root || plist_get_node_type(root.get()) != PLIST_DICT)
        return 0;
    auto* node = plist_dict_get_item(root.get(), counterKey);
    if (!node || plist_get_node_type(node) != PLIST_UINT)
        return 0;
    std::uint64_t number = 0;
    plist_get_uint_val(node, &number);
    return static_cast<std::int32_t>(number);
}

/// Empty where it could not be made.
std::string propertyListWith(std::int32_t counter)
{
    const Plist root(plist_new_dict());
    plist_dict_set_item(root.get(), counterKey, plist_new_uint(static_cast<std::uint64_t>(counter)));
    char* text = nullptr;
    std::uint32_t length = 0;
    plist_to_xml(root.get(), &text, &length);
    std::string propertyList(text ? text : "", length);
    std::free(text);
    return propertyList;
}

} // namespace

ZNTDatabaseAndPropertyUpdater::ZNTDatabaseAndPropertyUpdater(const ZNTFilePlaces& places, ZNTPlatformLog& log)
    : path(ZNTDatabaseLocation(places, log).propertiesPath()),
      log(log)
{
    std::error_code ignored;
    if (!std::filesystem::exists(path, ignored))
        static_cast<void>(znt::copyToPrivateFile(places.resource("database_properties.plist"), path));
    update_db_ = counterFrom(znt::contentOfFile(path));
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
        update_db_ = 3;
    }
    // A database that came with 2 keeps it: the table is then tried again at each start, which does no harm.
    if (hasRunFirstStep)
        saveOutThePropertiesFile();
    return hasRunFirstStep;
}

void ZNTDatabaseAndPropertyUpdater::saveOutThePropertiesFile()
{
    log.log("Root ZNTDatabaseAndPropertyUpdater: " + path);
    const auto propertyList = propertyListWith(update_db_);
    if (propertyList.empty()) {
        log.log("The property list could not be written as XML.");
        return;
    }
    static_cast<void>(znt::replacePrivateFile(path, propertyList));
}
