#pragma once

#include "ZNTFilePlaces.h"
#include "ZNTSoundFile.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// The folder of the player's sound files. Files come from this folder only: an entry whose real path (all
/// links followed) lies outside it counts as missing. Paths are those of the file system.
class ZNTSoundFolder
{
public:
    explicit ZNTSoundFolder(const ZNTFilePlaces& places);

    /// The folder with its trailing slash.
    [[nodiscard]] const std::string& path() const { return root; }
    /// `path` with the player's home in place of a leading tilde.
    [[nodiscard]] std::string tildeExpanded(const std::string& path) const;

    /// A regular file below the folder.
    [[nodiscard]] std::optional<ZNTSoundFile> openFile(const std::string& path) const;
    /// Whether `path` exists and really lies in the folder.
    [[nodiscard]] bool isInside(const std::string& path) const { return realPathInside(path).has_value(); }
    /// The names in `directory` that `isWanted`, in the order of the file system. Their real paths are not
    /// checked here, because that costs several system calls for each name.
    [[nodiscard]] std::vector<std::string>
    entries(const std::string& directory, const std::function<bool(std::string_view name)>& isWanted) const;

private:
    /// The real path, if it is the folder or lies below it.
    [[nodiscard]] std::optional<std::string> realPathInside(const std::string& path) const;
    /// Opens `path` if its real path lies inside, and checks the opened file's path once more.
    [[nodiscard]] int openInside(const std::string& path, int flags) const;

    std::string home, root;
};
