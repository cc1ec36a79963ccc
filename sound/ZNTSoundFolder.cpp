#include "ZNTSoundFolder.h"

#include <cstdlib>
#include <dirent.h>
#include <fcntl.h>
#include <filesystem>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

std::optional<std::string> realPath(const std::string& path)
{
    // The system would stop reading the path at a NUL; we would not.
    if (path.find('\0') != path.npos)
        return {};
    const std::unique_ptr<char, void (*)(void*)> real(realpath(path.c_str(), nullptr), std::free);
    if (real == nullptr)
        return {};
    return std::string(real.get());
}

bool isBelow(const std::string& path, const std::string& folder)
{
    return path == folder || (path.starts_with(folder) && (folder == "/" || path[folder.size()] == '/'));
}

} // namespace

ZNTSoundFolder::ZNTSoundFolder(const ZNTFilePlaces& places) : home(places.home)
{
    root = tildeExpanded(places.soundFolder());
}

std::string ZNTSoundFolder::tildeExpanded(const std::string& path) const
{
    if (path == "~" || path.starts_with("~/"))
        return home + path.substr(1);
    return path;
}

std::optional<ZNTSoundFile> ZNTSoundFolder::openFile(const std::string& path) const
{
    // Without O_NONBLOCK, opening a pipe waits until another program opens its other end.
    const int descriptor = openInside(path, O_NONBLOCK);
    if (descriptor < 0)
        return {};
    ZNTSoundFile file(descriptor, path);
    struct stat status {
    };
    if (fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode))
        return {};
    return file;
}

std::vector<std::string>
ZNTSoundFolder::entries(const std::string& directory,
                        const std::function<bool(std::string_view name)>& isWanted) const
{
    std::vector<std::string> names;
    const int descriptor = openInside(directory, O_DIRECTORY);
    if (descriptor < 0)
        return names;
    const std::unique_ptr<DIR, int (*)(DIR*)> listing(fdopendir(descriptor), closedir);
    if (listing == nullptr) {
        close(descriptor);
        return names;
    }
    while (const auto* entry = readdir(listing.get())) {
        const std::string name = entry->d_name;
        if (name != "." && name != ".." && isWanted(name))
            names.push_back(name);
    }
    return names;
}

std::optional<std::string> ZNTSoundFolder::realPathInside(const std::string& path) const
{
    const auto realRoot = realPath(root);
    auto real = realPath(path);
    if (!realRoot || !real || !isBelow(*real, *realRoot))
        return {};
    return real;
}

int ZNTSoundFolder::openInside(const std::string& path, int flags) const
{
    const auto real = realPathInside(path);
    if (!real)
        return -1;
    const int descriptor = open(real->c_str(), O_RDONLY | O_NOFOLLOW | O_CLOEXEC | flags);
    if (descriptor < 0)
        return -1;
    // A folder in the path may have been replaced by a link between the check and the opening.
    std::error_code unreadable;
    const auto opened =
        std::filesystem::read_symlink("/proc/self/fd/" + std::to_string(descriptor), unreadable);
    const auto realRoot = realPath(root);
    if (!unreadable && realRoot && isBelow(opened.string(), *realRoot))
        return descriptor;
    close(descriptor);
    return -1;
}
