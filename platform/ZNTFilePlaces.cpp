#include "ZNTFilePlaces.h"

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <pwd.h>
#include <unistd.h>
#include <vector>

namespace
{

std::string environment(const char* name)
{
    const char* value = std::getenv(name);
    return value ? value : "";
}

/// Empty if the user database does not know the user.
std::string homeInUserDatabase()
{
    std::vector<char> buffer(16 * 1024); // grows for a database whose entries are larger
    passwd entry{};
    passwd* found = nullptr;
    while (::getpwuid_r(::getuid(), &entry, buffer.data(), buffer.size(), &found) == ERANGE)
        buffer.resize(buffer.size() * 2);
    return found && found->pw_dir ? found->pw_dir : "";
}

std::string resourceFolder()
{
    std::error_code ignored;
    const auto program = std::filesystem::read_symlink("/proc/self/exe", ignored);
    const auto installed = program.parent_path().parent_path() / "share" / "zantor";
    if (!program.empty() && std::filesystem::is_directory(installed, ignored))
        return installed.string();
    return ZANTOR_RESOURCES;
}

} // namespace

ZNTFilePlaces ZNTFilePlaces::forThisProcess()
{
    ZNTFilePlaces places;
    places.home = environment("HOME");
    if (!places.home.starts_with('/'))
        places.home = homeInUserDatabase();
    while (places.home.size() > 1 && places.home.ends_with('/'))
        places.home.pop_back();
    places.resources = resourceFolder();
    const auto cacheHome = environment("XDG_CACHE_HOME");
    places.cache = (cacheHome.starts_with('/') ? cacheHome : places.home + "/.cache") + "/zantor";
    return places;
}

std::string ZNTFilePlaces::resource(std::string_view fileName) const
{
    return resources + "/" + std::string(fileName);
}

std::string ZNTFilePlaces::soundFolder() const { return home + "/Music/Zantor/sounds/"; }
