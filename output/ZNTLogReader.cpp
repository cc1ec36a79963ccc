#include "ZNTLogReader.h"

#include "ZNTText.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

bool continuesCharacter(char unit) { return (static_cast<unsigned char>(unit) & 0xC0) == 0x80; }

/// How many bytes the character that begins with `lead` has; 1 for what begins none.
std::size_t lengthOfCharacter(char lead)
{
    const auto bits = static_cast<unsigned char>(lead);
    return bits >= 0xF0 ? 4 : bits >= 0xE0 ? 3 : bits >= 0xC0 ? 2 : 1;
}

/// How many of the last bytes begin a character that is not all there.
std::size_t lengthOfCutCharacter(const std::string& bytes)
{
    for (std::size_t length = 1; length <= std::min<std::size_t>(3, bytes.size()); ++length) {
        const char unit = bytes[bytes.size() - length];
        if (!continuesCharacter(unit))
            return lengthOfCharacter(unit) > length ? length : 0;
    }
    return 0;
}

} // namespace

ZNTLogReader::ZNTLogReader(const std::string& path, std::uintmax_t most)
    : file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK))
{
    struct stat facts {
    };
    if (file < 0 || ::fstat(file, &facts) != 0)
        openingFailure = errno;
    else if (!S_ISREG(facts.st_mode))
        openingFailure = S_ISDIR(facts.st_mode) ? EISDIR : EINVAL;
    if (openingFailure != 0)
        return;
    const auto size = static_cast<std::uintmax_t>(facts.st_size);
    total = std::min(size, most);
    leftOut = size - total;
    ::lseek(file, static_cast<off_t>(leftOut), SEEK_SET);
}

ZNTLogReader::~ZNTLogReader()
{
    if (file >= 0)
        ::close(file);
}

ZNTResult<std::u16string> ZNTLogReader::fail(int errorNumber)
{
    isDone = true;
    return posixError(errorNumber);
}

ZNTResult<std::u16string> ZNTLogReader::nextPart()
{
    if (openingFailure != 0)
        return fail(openingFailure);
    char part[partSize];
    const auto wanted = static_cast<std::size_t>(std::min<std::uintmax_t>(partSize, total - done));
    const auto count = wanted > 0 ? ::read(file, part, wanted) : 0;
    if (count < 0 && errno != EINTR)
        return fail(errno);
    if (count > 0) {
        const bool isFirst = done == 0;
        pending.append(part, static_cast<std::size_t>(count));
        done += static_cast<std::uintmax_t>(count);
        if (isFirst && leftOut > 0) // the beginning may have cut a character
            pending.erase(0, static_cast<std::size_t>(std::ranges::find_if_not(pending, continuesCharacter) -
                                                      pending.begin()));
    }
    isDone = count == 0 || done == total; // a file that became shorter ends early
    return wholeCharacters();
}

std::u16string ZNTLogReader::wholeCharacters()
{
    const auto kept = isDone ? 0 : lengthOfCutCharacter(pending);
    const auto ready = pending.size() - kept;
    auto text = znt::textFromUtf8(std::string_view(pending).substr(0, ready));
    pending.erase(0, ready);
    return text;
}
