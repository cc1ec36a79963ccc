#pragma once

#include <cstddef>
#include <memory>
#include <string>

/// Keeps fetched sounds in a folder, by a key, up to a total size. Past that size, the sounds unused for
/// longest are removed. Every failure counts as a miss. Use it from one thread at a time; several processes
/// may share the folder.
class ZNTSoundCache
{
public:
    using Content = std::shared_ptr<const std::string>;

    /// The folder is made with the first sound, readable by the player alone.
    ZNTSoundCache(std::string folder, std::size_t mostBytes);

    /// Null if it is not kept. `key` has no line end.
    [[nodiscard]] Content contentFor(const std::string& key) const;
    void keep(const std::string& key, const std::string& content) const;

private:
    [[nodiscard]] std::string pathFor(const std::string& key) const;
    void makeRoom() const;

    std::string folder;
    std::size_t mostBytes;
};
