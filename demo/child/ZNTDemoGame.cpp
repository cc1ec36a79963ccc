#include "ZNTDemoGame.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <csignal>
#include <fcntl.h>
#include <linux/close_range.h>
#include <optional>
#include <string_view>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

namespace
{

constexpr double secondsToStart = 10;
constexpr std::string_view announcementStart = "listening on 127.0.0.1 ";
constexpr std::size_t longestAnnouncement = 200;

ZNTError startError(std::string why)
{
    return {"ZNTDemoGame", 1, "The demo game could not be started: " + std::move(why)};
}

ZNTError startErrorFromErrno() { return startError(posixError(errno).description); }

/// Says why the program cannot be run, and what helps.
ZNTError unusableError(const std::string& executable)
{
    const int why = errno;
    const std::string help =
        why == ENOENT
            ? "This file belongs beside the program that you started: install Zantor again, or build "
              "it again with ./run."
            : "This file must be one that you may run.";
    return startError(executable + ": " + posixError(why).description + ". " + help);
}

std::optional<std::uint16_t> portFromAnnouncement(std::string_view line)
{
    if (!line.starts_with(announcementStart))
        return std::nullopt;
    line.remove_prefix(announcementStart.size());
    std::uint16_t port = 0;
    const auto [end, error] = std::from_chars(line.data(), line.data() + line.size(), port);
    if (error != std::errc{} || end != line.data() + line.size() || port == 0)
        return std::nullopt;
    return port;
}

/// What the child does between fork and exec: only calls that are safe there when other threads exist.
[[noreturn]] void becomeTheGame(const char* path, char* const* arguments, int output, pid_t parent)
{
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getppid() != parent) // the client died before the call above
        _exit(1);
    const int nothing = open("/dev/null", O_RDONLY);
    dup2(nothing, STDIN_FILENO);
    dup2(output, STDOUT_FILENO);
    close_range(STDERR_FILENO + 1, ~0U, CLOSE_RANGE_CLOEXEC); // the client's windows and sockets stay its own
    execv(path, arguments);
    _exit(127);
}

} // namespace

ZNTDemoGame::ZNTDemoGame(RunLoop& runLoop, std::string executable)
    : runLoop(runLoop),
      executable(std::move(executable))
{
}

ZNTDemoGame::~ZNTDemoGame() { end(); }

std::string ZNTDemoGame::executableBesideThisProgram()
{
    std::array<char, 4096> path{};
    const auto length = readlink("/proc/self/exe", path.data(), path.size());
    const std::string_view self(path.data(), static_cast<std::size_t>(std::max<ssize_t>(length, 0)));
    return std::string(self.substr(0, self.rfind('/') + 1)) + "zantor-demo";
}

void ZNTDemoGame::start(ZNTStringEncoding encoding, StartedHandler whenStarted)
{
    end();
    started = std::move(whenStarted);
    const auto launched = launch(encoding);
    if (!launched)
        return failAfter(0, launched.error());
    output = launched.value();
    watch = runLoop.watchDescriptor(output, RunLoopInterest::Readable,
                                    [this](RunLoopInterest) { readAnnouncement(); });
    if (!watch)
        return failAfter(0, startError("its answer cannot be waited for"));
    failAfter(secondsToStart, startError("it did not answer in time"));
}

void ZNTDemoGame::failAfter(double seconds, ZNTError error)
{
    timeLimit =
        runLoop.startTimer(seconds, RunLoopRepeat::Once, [this, error = std::move(error)] { finish(error); });
}

ZNTResult<int> ZNTDemoGame::launch(ZNTStringEncoding encoding)
{
    if (access(executable.c_str(), X_OK) != 0)
        return unusableError(executable);
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) != 0)
        return startErrorFromErrno();
    std::string encodingName(znt::rowOf(encoding).name);
    std::string encodingOption = "--encoding";
    const std::array<char*, 4> arguments{executable.data(), encodingOption.data(), encodingName.data(),
                                         nullptr};
    const auto parent = getpid();
    // Not fork(), because it runs the handlers that libraries registered: libuv would make a pipe in the
    // child, and abort the child if it could not.
    child = _Fork();
    if (child == 0)
        becomeTheGame(executable.c_str(), arguments.data(), ends[1], parent);
    const int forkError = errno;
    close(ends[1]);
    if (child < 0) {
        close(ends[0]);
        return startError(posixError(forkError).description);
    }
    return ends[0];
}

void ZNTDemoGame::readAnnouncement()
{
    std::array<char, 256> bytes{};
    const auto count = read(output, bytes.data(), bytes.size());
    if (count < 0 && (errno == EAGAIN || errno == EINTR))
        return;
    if (count <= 0) {
        finish(startError("it ended before it could be played"));
        return;
    }
    announcement.append(bytes.data(), static_cast<std::size_t>(count));
    const auto lineEnd = announcement.find('\n');
    if (lineEnd == std::string::npos && announcement.size() < longestAnnouncement)
        return;
    if (const auto port = portFromAnnouncement(std::string_view(announcement).substr(0, lineEnd)))
        finish(*port);
    else
        finish(startError("it answered something else than a port"));
}

void ZNTDemoGame::finish(ZNTResult<std::uint16_t> outcome)
{
    watch.reset();
    timeLimit.reset();
    if (!outcome)
        end();
    // The handler may destroy this object.
    const auto handler = std::exchange(started, nullptr);
    if (handler)
        handler(std::move(outcome));
}

void ZNTDemoGame::end()
{
    watch.reset();
    timeLimit.reset();
    announcement.clear();
    if (output >= 0)
        close(std::exchange(output, -1));
    if (child > 0) {
        // The game has no data to save, and SIGKILL cannot be blocked.
        kill(child, SIGKILL);
        while (waitpid(child, nullptr, 0) < 0 && errno == EINTR) {
        }
        child = -1;
    }
}
