#include "ZNTRecordsFile.h"

#include "ZNTRecordsText.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

struct Descriptor {
    int number;
    ~Descriptor()
    {
        if (number >= 0)
            ::close(number);
    }
};

ZNTResult<std::string> readAtMost(int descriptor, std::size_t most)
{
    std::string content;
    char piece[std::size_t{64} << 10];
    while (content.size() < most) {
        const auto count = ::read(descriptor, piece, std::min(sizeof piece, most - content.size()));
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return posixError(errno);
        if (count == 0)
            break;
        content.append(piece, static_cast<std::size_t>(count));
    }
    return content;
}

/// The first bytes of a regular file, `most` of them at most.
ZNTResult<std::string> startOfRegularFile(const std::string& path, std::size_t most)
{
    // A pipe without a writer would hold the program up for ever.
    const Descriptor file{::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK)};
    struct stat facts {
    };
    if (file.number < 0 || ::fstat(file.number, &facts) != 0)
        return posixError(errno);
    if (S_ISDIR(facts.st_mode))
        return posixError(EISDIR);
    if (!S_ISREG(facts.st_mode))
        return posixError(EINVAL);
    return readAtMost(file.number, most);
}

} // namespace

namespace znt::exchange
{

ZNTResult<std::string> contentOfRegularFile(const std::string& path, std::size_t most)
{
    auto content = startOfRegularFile(path, most + 1);
    if (content && content.value().size() > most)
        return posixError(EFBIG);
    return content;
}

FileThere fileAt(const std::string& path)
{
    struct stat facts {
    };
    if (::lstat(path.c_str(), &facts) != 0 && errno == ENOENT)
        return FileThere::None;
    constexpr std::size_t longEnough = 64; // for the first line
    if (::stat(path.c_str(), &facts) == 0 && !S_ISREG(facts.st_mode))
        return FileThere::NoFile;
    const auto start = startOfRegularFile(path, longEnough);
    return start && isExported(start.value()) ? FileThere::Export : FileThere::OtherFile;
}

} // namespace znt::exchange
