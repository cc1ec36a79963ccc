#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <string_view>

/// A new empty folder of this test's own, removed with everything in it at the end.
class ZNTTemporaryFolder
{
public:
    ZNTTemporaryFolder()
    {
        if (!::mkdtemp(folder.data()))
            throw std::runtime_error("cannot make a temporary folder");
    }
    ~ZNTTemporaryFolder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(folder, ignored);
    }
    ZNTTemporaryFolder(const ZNTTemporaryFolder&) = delete;
    ZNTTemporaryFolder& operator=(const ZNTTemporaryFolder&) = delete;

    [[nodiscard]] const std::string& path() const { return folder; }
    [[nodiscard]] std::string path(std::string_view below) const { return folder + "/" + std::string(below); }
    /// Makes the folders on the way.
    void write(std::string_view below, std::string_view content) const
    {
        std::filesystem::create_directories(std::filesystem::path(path(below)).parent_path());
        std::ofstream(path(below), std::ios::binary) << content;
    }
    /// Empty if there is no such file.
    [[nodiscard]] std::string read(std::string_view below) const
    {
        std::ifstream file(path(below), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    [[nodiscard]] bool has(std::string_view below) const { return std::filesystem::exists(path(below)); }

private:
    std::string folder = (std::filesystem::temp_directory_path() / "zantor-test-XXXXXX").string();
};
