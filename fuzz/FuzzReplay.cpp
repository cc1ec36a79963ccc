// Runs a fuzz target over the given files and folders, with any compiler. So every input that the fuzzer
// found or learned from is tried again.
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace fs = std::filesystem;

int main(int argc, char** argv)
{
    std::set<fs::path> inputs;
    for (int at = 1; at < argc; ++at)
        if (fs::is_directory(argv[at]))
            inputs.insert(fs::directory_iterator(argv[at]), {});
        else
            inputs.insert(argv[at]);
    for (const auto& path : inputs) {
        std::ifstream file(path, std::ios::binary);
        const std::string bytes{std::istreambuf_iterator<char>(file), {}};
        // If the process crashes, the last line names the input.
        std::printf("%s\n", path.c_str());
        std::fflush(stdout);
        LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    }
    std::printf("%zu inputs replayed\n", inputs.size());
    return inputs.empty() ? 1 : 0;
}
