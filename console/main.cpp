#include "UvRunLoop.h"
#include "ZNTConsoleAlert.h"
#include "ZNTConsoleClient.h"
#include "ZNTConsoleLog.h"
#include "ZNTMixerSounds.h"
#include "ZNTSpeechDispatcher.h"
#include "ZNTStoreMaker.h"
#include "ZNTStoreWait.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <iostream>
#include <poll.h>
#include <unistd.h>

namespace
{

/// A standard descriptor that the shell left closed would go to the first socket or file opened, which then
/// would be taken for the player's input or output.
void openMissingStandardDescriptors()
{
    for (int descriptor = STDIN_FILENO; descriptor <= STDERR_FILENO; ++descriptor)
        if (::fcntl(descriptor, F_GETFD) < 0)
            ::open("/dev/null", O_RDWR); // takes the lowest free one
}

/// Writes all of it, waiting where stdout is full: what the terminal cannot take yet, the game may not send.
void writeToStandardOutput(std::string_view text)
{
    while (!text.empty()) {
        const auto count = ::write(STDOUT_FILENO, text.data(), text.size());
        if (count >= 0) {
            text.remove_prefix(static_cast<std::size_t>(count));
        } else if (errno == EAGAIN) {
            pollfd output{STDOUT_FILENO, POLLOUT, 0};
            ::poll(&output, 1, -1);
        } else if (errno != EINTR) {
            std::_Exit(ZNTConsoleClient::exitBroken); // nobody reads any more
        }
    }
}

/// Says what was done on stdout, why nothing could be done on stderr.
int mendHome()
{
    ZNTSystemClock clock;
    ZNTStandardErrorLog log;
    const auto places = ZNTFilePlaces::forThisProcess();
    ZNTStoreWait wait(clock, log);
    const auto mended = ZNTStoreMaker(places, log, wait).mend();
    std::fputs((mended.sentence + "\n").c_str(), mended.succeeded ? stdout : stderr);
    return mended.succeeded ? ZNTConsoleClient::exitFine : ZNTConsoleClient::exitBroken;
}

} // namespace

int main(int count, char** arguments)
{
    openMissingStandardDescriptors();
    auto parsed = ZNTConsoleOptions::fromArguments(count, arguments);
    if (const int* exitCode = std::get_if<int>(&parsed))
        return *exitCode;
    auto options = std::get<ZNTConsoleOptions>(parsed);
    if (options.mendHome)
        return mendHome();
    if (options.colour == ZNTConsoleOptions::Colour::Auto)
        options.colour =
            ::isatty(STDOUT_FILENO) ? ZNTConsoleOptions::Colour::Always : ZNTConsoleOptions::Colour::Never;
    std::signal(SIGPIPE, SIG_IGN);

    auto opened = UvRunLoop::open();
    if (!opened) {
        std::cerr << "zantor-console: cannot run: " << opened.error().description << '\n';
        return ZNTConsoleClient::exitBroken;
    }
    auto& runLoop = *opened.value();
    ZNTSystemClock clock;
    const auto input = ZNTConsoleInput::forStandardInput(runLoop);
    ZNTConsoleLog log(runLoop, *input);
    ZNTNotificationCenter notifications;
    ZNTConsoleAlert alert(*input);
    const ZNTPlatform platform{runLoop, clock, log, notifications, alert, ZNTFilePlaces::forThisProcess()};
    ZNTMixerSounds sounds(runLoop, platform.places);
    ZNTSpeechDispatcher speech(runLoop, log);

    int exitCode = ZNTConsoleClient::exitFine;
    ZNTConsoleClient client({.platform = platform,
                             .input = *input,
                             .inputIsTerminal = input->isTerminal(),
                             .sounds = sounds,
                             .speechEngine = speech,
                             .writeOutput = writeToStandardOutput,
                             .exit =
                                 [&](int code) {
                                     exitCode = code;
                                     runLoop.stop();
                                 }},
                            options);
    client.start();
    runLoop.run();
    return exitCode;
}
