#include "ZNTSoundCache.h"

#include "ZNTDescriptors.h"
#include "ZNTPrivateFiles.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string_view>
#include <unistd.h>
#include <vector>

namespace fs = std::filesystem;

namespace
{

constexpr std::string_view extension = ".sound";

/// FNV-1a. Two keys may share it, so each file begins with its whole key.
std::uint64_t hashOf(std::string_view text)
{
    std::uint64_t hash = 0xcbf29ce484222325U;
    for (const char character : text)
        hash = (hash ^ static_cast<unsigned char>(character)) * 0x100000001b3U;
    return hash;
}

} // namespace

ZNTSoundCache::ZNTSoundCache(std::string folder, std::size_t mostBytes)
    : folder(std::move(folder)),
      mostBytes(mostBytes)
{
}

ZNTSoundCache::Content ZNTSoundCache::contentFor(const std::string& key) const
{
    const auto path = pathFor(key);
    std::ifstream file(path, std::ios::binary);
    std::string keptKey;
    if (!std::getline(file, keptKey) || keptKey != key)
        return {};
    auto content =
        std::make_shared<std::string>(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
    std::error_code ignored;
    fs::last_write_time(path, fs::file_time_type::clock::now(), ignored); // for the order of use
    return content;
}

void ZNTSoundCache::keep(const std::string& key, const std::string& content) const
{
    if (content.size() > mostBytes)
        return;
    std::error_code failure;
    fs::create_directories(fs::path(folder).parent_path(), failure);
    static_cast<void>(znt::makePrivateFolder(folder)); // the file cannot be made then, either
    auto unfinished = folder + "/unfinished-XXXXXX";
    const int descriptor = mkostemp(unfinished.data(), O_CLOEXEC);
    if (descriptor < 0)
        return;
    const bool isWritten = znt::writeAll(descriptor, key + "\n") && znt::writeAll(descriptor, content);
    if (close(descriptor) != 0 || !isWritten || std::rename(unfinished.c_str(), pathFor(key).c_str()) != 0)
        unlink(unfinished.c_str());
    makeRoom();
}

std::string ZNTSoundCache::pathFor(const std::string& key) const
{
    std::array<char, 17> name{};
    std::snprintf(name.data(), name.size(), "%016llx", static_cast<unsigned long long>(hashOf(key)));
    return folder + "/" + name.data() + std::string(extension);
}

void ZNTSoundCache::makeRoom() const
{
    struct Kept {
        fs::file_time_type used;
        std::uintmax_t size;
        fs::path path;
    };
    std::vector<Kept> files;
    std::uintmax_t total = 0;
    std::error_code failure;
    for (fs::directory_iterator entry(folder, failure), end; !failure && entry != end;
         entry.increment(failure)) {
        std::error_code gone;
        const auto size = entry->file_size(gone);
        const auto used = entry->last_write_time(gone);
        if (gone)
            continue;
        files.push_back({used, size, entry->path()});
        total += size;
    }
    std::sort(files.begin(), files.end(), [](const Kept& a, const Kept& b) { return a.used < b.used; });
    for (const auto& file : files) {
        if (total <= mostBytes)
            return;
        fs::remove(file.path, failure);
        total -= file.size;
    }
}
