#include "ZNTPlainInput.h"

#include <array>
#include <cerrno>
#include <unistd.h>
#include <utility>

void ZNTPlainInput::start(Handlers given)
{
    handlers = std::move(given);
    watch = runLoop.watchDescriptor(descriptor, RunLoopInterest::Readable,
                                    [this](RunLoopInterest) { readSome(); });
    if (!watch)
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
            end = longestLine;
        std::string line = unfinished.substr(0, end);
        unfinished.erase(0, isWhole ? end + 1 : end);
        if (line.ends_with('\r'))
            line.pop_back();
        handlers.line(std::move(line));
    }
}

void ZNTPlainInput::finish()
{
    watch.reset();
    nextRead.reset();
    if (!unfinished.empty())
        handlers.line(std::exchange(unfinished, {}));
    handlers.end();
}
