#include "ZNTPlainInput.h"

#include <array>
#include <cerrno>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace
{

/// A file or a device such as /dev/null, which need not be watched, since a read of it never waits.
bool isAlwaysReady(int descriptor)
{
    struct stat about {
    };
    return ::fstat(descriptor, &about) == 0 && !S_ISFIFO(about.st_mode) && !S_ISSOCK(about.st_mode) &&
           ::isatty(descriptor) == 0;
}

} // namespace

bool ZNTPlainInput::start(Handlers given)
{
    handlers = std::move(given);
    watch = runLoop.watchDescriptor(descriptor, RunLoopInterest::Readable,
                                    [this](RunLoopInterest) { readSome(); });
    if (watch)
        return true;
    if (!isAlwaysReady(descriptor))
        return false;
    readOnNextTurn();
    return true;
}

void ZNTPlainInput::setPaused(bool paused)
{
    if (std::exchange(isPaused, paused) == paused || hasEnded)
        return;
    if (watch)
        watch->setInterest(paused ? RunLoopInterest::None : RunLoopInterest::Readable);
    else if (paused)
        nextRead.reset();
    else
        readOnNextTurn();
}

void ZNTPlainInput::readOnNextTurn()
{
    nextRead = runLoop.startTimer(0, RunLoopRepeat::Once, [this] { readSome(); });
}

void ZNTPlainInput::readSome()
{
    std::array<char, 4096> bytes;
    const auto count = ::read(descriptor, bytes.data(), bytes.size());
    if (count < 0 && (errno == EAGAIN || errno == EINTR))
        return;
    if (count <= 0) {
        finish();
        return;
    }
    unfinished.append(bytes.data(), static_cast<std::size_t>(count));
    if (!watch)
        readOnNextTurn();
    deliverLines();
}

void ZNTPlainInput::deliverLines()
{
    for (;;) {
        auto end = unfinished.find('\n');
        if (end == std::string::npos && unfinished.size() < longestLine)
            return;
        const bool isWhole = end != std::string::npos;
        if (!isWhole)
            end = endOfPiece();
        std::string line = unfinished.substr(0, end);
        unfinished.erase(0, isWhole ? end + 1 : end);
        if (isWhole && line.ends_with('\r'))
            line.pop_back();
        handlers.line(std::move(line));
    }
}

std::size_t ZNTPlainInput::endOfPiece() const
{
    constexpr std::size_t longestCharacter = 4;
    auto end = unfinished.size() - 1; // a CR at the very end may belong to a line feed still to come
    for (std::size_t back = 1; back < longestCharacter; ++back, --end)
        if ((static_cast<unsigned char>(unfinished[end]) & 0xC0) != 0x80)
            break;
    return end;
}

void ZNTPlainInput::finish()
{
    hasEnded = true;
    watch.reset();
    nextRead.reset();
    if (unfinished.ends_with('\r'))
        unfinished.pop_back();
    if (!unfinished.empty())
        handlers.line(std::exchange(unfinished, {}));
    handlers.end();
}
