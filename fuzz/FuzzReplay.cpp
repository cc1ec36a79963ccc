// Runs a fuzz target over the files and folders it is given, with any compiler: so that what the fuzzer once
// found, and what it learned from, is tried again in every build.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace
{

namespace fs = std::filesystem;

std::vector<fs::path> filesBelow(const fs::path& path)
{
    if (!fs::is_directory(path))
        return {path};
    std::vector<fs::path> files;
    for (const auto& entry : fs::directory_iterator(path))
        files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    return files;
}

bool replay(const fs::path& path)
{
    std::ifstream file(path, std::ios::binary);
    if (!file)
        return false;
    const std::string bytes{std::istreambuf_iterator<char>(file), {}};
    // Where the process ends in the middle, the last line names the input.
    std::printf("%s\n", path.c_str());
    std::fflush(stdout);
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    return true;
}

} // namespace

int main(int argc, char** argv)
{
    int replayed = 0;
    for (int at = 1; at < argc; ++at)
        for (const auto& path : filesBelow(argv[at])) {
            if (!replay(path)) {
                std::fprintf(stderr, "%s cannot be read.\n", path.c_str());
                return 1;
            }
            ++replayed;
        }
    if (replayed == 0) {
        std::fprintf(stderr, "Usage: %s FILE_OR_FOLDER...\n", argv[0]);
        return 1;
    }
    std::printf("%d inputs replayed\n", replayed);
    return 0;
}
