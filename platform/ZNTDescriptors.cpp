#include "ZNTDescriptors.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <poll.h>
#include <unistd.h>
#include <vector>

ZNTResult<void> znt::tryDescriptors(int count)
{
    // A pipe also meets the limits of the system, and not only those of the process.
    std::array<int, 2> pipe{};
    if (::pipe2(pipe.data(), O_CLOEXEC) != 0)
        return posixError(errno);
    std::vector<int> opened(pipe.begin(), pipe.end());
    ZNTResult<void> result;
    while (result && opened.size() < static_cast<std::size_t>(count)) {
        const int another = ::fcntl(pipe.front(), F_DUPFD_CLOEXEC, 0);
        if (another >= 0)
            opened.push_back(another);
        else
            result = posixError(errno);
    }
    for (const int each : opened)
        ::close(each);
    return result;
}

ZNTResult<void> znt::writeAll(int descriptor, std::string_view bytes)
{
    while (!bytes.empty()) {
        const auto count = ::write(descriptor, bytes.data(), bytes.size());
        if (count >= 0) {
            bytes.remove_prefix(static_cast<std::size_t>(count));
        } else if (errno == EAGAIN) {
            pollfd room{descriptor, POLLOUT, 0};
            ::poll(&room, 1, -1);
        } else if (errno != EINTR) {
            return posixError(errno);
        }
    }
    return {};
}
