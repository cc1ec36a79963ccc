#include "ZNTTemporaryFolder.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

ZNTTemporaryFolder::ZNTTemporaryFolder()
{
    folder = (std::filesystem::temp_directory_path() / "zantor-test-XXXXXX").string();
    if (!::mkdtemp(folder.data()))
        throw std::runtime_error("cannot make a temporary folder");
}

ZNTTemporaryFolder::~ZNTTemporaryFolder()
{
    std::error_code ignored;
    std::filesystem::remove_all(folder, ignored);
}

void ZNTTemporaryFolder::write(std::string_view below, std::string_view content) const
{
    std::filesystem::create_directories(std::filesystem::path(path(below)).parent_path());
    std::ofstream(path(below), std::ios::binary) << content;
}

std::string ZNTTemporaryFolder::read(std::string_view below) const
{
    std::ifstream file(path(below), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

bool ZNTTemporaryFolder::has(std::string_view below) const { return std::filesystem::exists(path(below)); }
