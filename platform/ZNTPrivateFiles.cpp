#include "ZNTPrivateFiles.h"

#include "ZNTDescriptors.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

/// Writes and closes a new file. Removes it if that fails.
ZNTResult<void> writeNewFile(int descriptor, const std::string& path, std::string_view content)
{
    auto written = znt::writeAll(descriptor, content);
    if (written && ::fsync(descriptor) != 0)
        written = posixError(errno);
    if (::close(descriptor) != 0 && written)
        written = posixError(errno);
    if (!written)
        ::unlink(path.c_str());
    return written;
}

ZNTResult<void> writeAndRename(const std::string& path, std::string_view content)
{
    // Each writer has a temporary file of its own, because two programs may write the same file at once.
    // mkostemp makes it readable by the user alone.
    const std::filesystem::path target(path);
    std::string temporary = (target.parent_path() / ("." + target.filename().string() + ".XXXXXX")).string();
    const int descriptor = ::mkostemp(temporary.data(), O_CLOEXEC);
    if (descriptor < 0)
        return posixError(errno);
    if (auto written = writeNewFile(descriptor, temporary, content); !written)
        return written;
    if (std::rename(temporary.c_str(), path.c_str()) != 0) {
        const int failure = errno;
        ::unlink(temporary.c_str());
        return posixError(failure);
    }
    return {};
}

} // namespace

namespace znt
{

ZNTResult<void> makePrivateFolder(const std::string& folder)
{
    std::filesystem::path made;
    int failure = 0;
    for (const auto& part : std::filesystem::path(folder)) {
        made /= part;
        if (::mkdir(made.c_str(), S_IRWXU) == 0 || failure != 0)
            continue;
        const int refusal = errno; // of a folder that exists, too, for example on a read-only file system
        if (::access(made.c_str(), F_OK) != 0)
            failure = refusal;
    }
    return failure == 0 ? ZNTResult<void>() : posixError(failure);
}

ZNTResult<void> copyToPrivateFile(const std::string& source, const std::string& target)
{
    std::ifstream file(source, std::ios::binary);
    if (!file)
        return posixError(ENOENT);
    return writeAndRename(target, std::string{std::istreambuf_iterator<char>(file), {}});
}

ZNTResult<void> replacePrivateFile(const std::string& path, std::string_view content)
{
    return writeAndRename(path, content);
}

std::string contentOfFile(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

} // namespace znt
