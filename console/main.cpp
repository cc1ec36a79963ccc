#include "UvRunLoop.h"
#include "ZNTConsoleAlert.h"
#include "ZNTConsoleClient.h"
#include "ZNTConsoleLog.h"
#include "ZNTConsoleWriter.h"
#include "ZNTHiddenTyping.h"
#include "ZNTMixerSounds.h"
#include "ZNTSocketStream.h"
#include "ZNTSpeechDispatcher.h"
#include "ZNTStoreMaker.h"
#include "ZNTStoreWait.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <iostream>
#include <string_view>
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

/// Bytes that may wait for stdout. A person at a terminal sees the answer to a line only after all that
/// waits, so little may wait there. For a script more may wait: the session then takes a flood while the
/// terminal still shows earlier text.
constexpr std::size_t mostWaitingForTerminal = std::size_t{1} << 20, mostWaiting = std::size_t{16} << 20;

/// Empty if it is not set.
std::string_view environment(const char* name)
{
    const char* value = std::getenv(name);
    return value ? value : "";
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

/// One function, because it makes each part of the program once, and each needs those before it.
int main(int count, char** arguments)
{
    openMissingStandardDescriptors();
    auto parsed = ZNTConsoleOptions::fromArguments(count, arguments);
    if (const int* exitCode = std::get_if<int>(&parsed))
        return *exitCode;
    auto options = std::get<ZNTConsoleOptions>(parsed);
    if (options.mendHome)
        return mendHome();
    std::signal(SIGPIPE, SIG_IGN);

    auto opened = UvRunLoop::open();
    if (!opened) {
        std::cerr << "zantor-console: cannot run: " << opened.error().description << '\n';
        return ZNTConsoleClient::exitBroken;
    }
    auto& runLoop = *opened.value();
    ZNTSystemClock clock;
    const bool appendsOnly = options.appendsOnly(environment("TERM"));
    if (appendsOnly && options.colour == ZNTConsoleOptions::Colour::Auto)
        options.colour = ZNTConsoleOptions::Colour::Never;
    const auto input = ZNTConsoleInput::forStandardInput(runLoop, appendsOnly);
    ZNTConsoleWriter writer(runLoop, {STDOUT_FILENO, STDERR_FILENO},
                            input->isTerminal() ? mostWaitingForTerminal : mostWaiting, [] {
                                ZNTHiddenTyping::showBeforeEnd();
                                std::_Exit(ZNTConsoleClient::exitBroken);
                            });
    ZNTConsoleOutput output(runLoop, *input, writer);
    ZNTConsoleLog log(runLoop, output);
    ZNTNotificationCenter notifications;
    ZNTConsoleAlert alert(output);
    const ZNTPlatform platform{runLoop, clock, log, notifications, alert, ZNTFilePlaces::forThisProcess()};
    ZNTMixerSounds sounds(runLoop, platform.places);
    ZNTSpeechDispatcher speech(runLoop, log);

    int exitCode = ZNTConsoleClient::exitFine;
    ZNTConsoleClient client({.platform = platform,
                             .input = *input,
                             .inputIsTerminal = input->isTerminal(),
                             .sounds = sounds,
                             .speechEngine = speech,
                             .streams = socketStreams(runLoop),
                             .output = output,
                             .outputIsTerminal = ::isatty(STDOUT_FILENO) != 0,
                             .colourDepth = znt::colourDepth(environment("COLORTERM"), environment("TERM")),
                             .errorIsTerminal = ::isatty(STDERR_FILENO) != 0,
                             .confirmsChanges = appendsOnly && input->isTerminal(),
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
