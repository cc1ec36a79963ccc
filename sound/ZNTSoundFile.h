#pragma once

#include <memory>
#include <string>

/// A file open for reading, held by its descriptor. The file that was checked is the file that is played,
/// even if its path is given to another file meanwhile.
class ZNTSoundFile
{
public:
    /// Takes the descriptor over. `path` is for people.
    ZNTSoundFile(int descriptor, std::string path);
    ~ZNTSoundFile();
    ZNTSoundFile(ZNTSoundFile&& other) noexcept;
    ZNTSoundFile& operator=(ZNTSoundFile&& other) = delete;

    [[nodiscard]] int descriptor() const { return descriptor_; }
    [[nodiscard]] const std::string& path() const { return path_; }

private:
    int descriptor_;
    std::string path_;
};
