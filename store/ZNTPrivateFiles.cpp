#include "ZNTPrivateFiles.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

/// Writes a new file in one go, or removes what there is of it.
ZNTResult<void> writeNewFile(const std::string& path, std::string_view content)
{
    const int descriptor = ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, S_IRUSR | S_IWUSR);
    if (descriptor < 0)
        return posixError(errno);
    int failure = 0;
    while (!content.empty() && failure == 0) {
        const auto count = ::write(descriptor, content.data(), content.size());
        if (count >= 0)
            content.remove_prefix(static_cast<std::size_t>(count));
        else if (errno != EINTR)
            failure = errno;
    }
    if (failure == 0 && ::fsync(descriptor) != 0)
        failure = errno;
    if (::close(descriptor) != 0 && failure == 0)
        failure = errno;
    if (failure == 0)
        return {};
    ::unlink(path.c_str());
    return posixError(failure);
}

ZNTResult<void> writeAndRename(const std::string& path, std::string_view content)
{
    const std::string temporary = path + ".new";
    if (auto written = writeNewFile(temporary, content); !written)
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

void makePrivateFolder(const std::string& folder)
{
    std::filesystem::path made;
    for (const auto& part : std::filesystem::path(folder)) {
        made /= part;
        ::mkdir(made.c_str(), S_IRWXU);
    }
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
