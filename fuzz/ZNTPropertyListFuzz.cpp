#include "FuzzInput.h"
#include "FuzzRequire.h"
#include "ZNTDatabaseAndPropertyUpdater.h"
#include "ZNTPlatformLog.h"
#include "ZNTTemporaryFolder.h"

#include <charconv>
#include <filesystem>
#include <optional>
#include <string>

namespace
{

constexpr const char* folder = "Library/Zantor/database";
constexpr const char* file = "Library/Zantor/database/database_properties.plist";

struct SilentLog final : ZNTPlatformLog {
    void log(std::string_view) override {}
};

std::string listWith(std::string_view number)
{
    return "<plist version=\"1.0\"><dict><key>update_db</key><integer>" + std::string(number) +
           "</integer></dict></plist>\n";
}

/// The number that all of `bytes` is. The library reads one with a leading zero as an octal number.
std::optional<std::int32_t> numberOf(std::string_view bytes)
{
    const auto digits = bytes.substr(bytes.starts_with('-') ? 1 : 0);
    if (digits.size() > 1 && digits.starts_with('0'))
        return std::nullopt;
    std::int32_t number = 0;
    const auto [end, error] = std::from_chars(bytes.data(), bytes.data() + bytes.size(), number);
    if (error != std::errc() || end != bytes.data() + bytes.size())
        return std::nullopt;
    return number;
}

} // namespace

/// The property list as a player's home may hold it. An input that is a number stands in a list that is
/// whole.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const ZNTTemporaryFolder home;
    static const ZNTFilePlaces places{home.path(), home.path("no resources"), home.path("cache")};
    SilentLog log;
    const auto bytes = FuzzInput(data, size).rest();
    const auto number = numberOf(bytes);
    const auto content = number ? listWith(bytes) : std::string(bytes);
    home.write(file, content);

    ZNTDatabaseAndPropertyUpdater updater(places, log);
    const auto counter = updater.update_db();
    require(!number || counter == *number, "the counter of a whole list is read");
    require(home.read(file) == content, "reading a list changes nothing");

    std::size_t statements = 0;
    const bool hasRunFirstStep = updater.runDatabaseUpdates([&](std::string_view) { ++statements; });
    require(hasRunFirstStep == (counter == 1), "the first step runs where the counter is 1");
    require((statements > 0) == (counter == 1 || counter == 2), "no step runs where none is due");
    if (counter == 1)
        require(ZNTDatabaseAndPropertyUpdater(places, log).update_db() == 3, "the saved list is whole");
    else
        require(home.read(file) == content, "a list is not written where the first step did not run");
    const std::filesystem::directory_iterator entries(home.path(folder));
    require(std::distance(begin(entries), end(entries)) == 1, "no other file is left behind");
    return 0;
}
