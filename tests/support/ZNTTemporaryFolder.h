#pragma once

#include <string>
#include <string_view>

/// A new empty folder of this test's own, removed with everything in it at the end.
class ZNTTemporaryFolder
{
public:
    ZNTTemporaryFolder();
    ~ZNTTemporaryFolder();
    ZNTTemporaryFolder(const ZNTTemporaryFolder&) = delete;
    ZNTTemporaryFolder& operator=(const ZNTTemporaryFolder&) = delete;

    [[nodiscard]] const std::string& path() const { return folder; }
    [[nodiscard]] std::string path(std::string_view below) const { return folder + "/" + std::string(below); }
    /// Makes the folders on the way.
    void write(std::string_view below, std::string_view content) const;
    /// Empty if there is no such file.
    [[nodiscard]] std::string read(std::string_view below) const;
    [[nodiscard]] bool has(std::string_view below) const;

private:
    std::string folder;
};
