#include "FuzzInput.h"
#include "ZNTDatabaseAndPropertyUpdater.h"
#include "ZNTTestPlatform.h"

#include <filesystem>
#include <string>

namespace
{

constexpr const char* folder = "Library/Zantor/database";
constexpr const char* file = "Library/Zantor/database/database_properties.plist";

} // namespace

/// The property list as a player's home may hold it. An input that is a number stands in a list that is
/// whole.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const ZNTTemporaryFolder home;
    static const ZNTFilePlaces places{home.path(), home.path("no resources"), home.path("cache")};
    ZNTRecordedLog log;
    const auto bytes = FuzzInput(data, size).rest();
    const bool isNumber = bytes.size() < 10 && bytes.find_first_not_of("0123456789") == bytes.npos;
    auto content = std::string(bytes);
    if (isNumber)
        content = "<plist version=\"1.0\"><dict><key>update_db</key><integer>" + content +
                  "</integer></dict></plist>\n";
    home.write(file, content);

    ZNTDatabaseAndPropertyUpdater updater(places, log);
    const auto counter = updater.update_db();
    require(home.read(file) == content, "reading a list changes nothing");

    updater.runDatabaseUpdates([](std::string_view) {});
    if (counter == 1)
        require(ZNTDatabaseAndPropertyUpdater(places, log).update_db() == 3, "the saved list is whole");
    else
        require(home.read(file) == content, "a list is not written where the first step did not run");
    const std::filesystem::directory_iterator entries(home.path(folder));
    require(std::distance(begin(entries), end(entries)) == 1, "no other file is left behind");
    return 0;
}
