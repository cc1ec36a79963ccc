#include "ZNTConsoleInput.h"

#include "ZNTCookedInput.h"
#include "ZNTPlainInput.h"
#include "ZNTTerminalInput.h"

#include <cstdio>
#include <sys/stat.h>
#include <unistd.h>

std::unique_ptr<ZNTConsoleInput> ZNTConsoleInput::forStandardInput(RunLoop& runLoop, bool appendsOnly)
{
    const bool showsOutput = ::isatty(STDOUT_FILENO) != 0;
    if (::isatty(STDIN_FILENO) == 0)
        return std::make_unique<ZNTPlainInput>(runLoop, STDIN_FILENO);
    if (showsOutput && !appendsOnly)
        return std::make_unique<ZNTTerminalInput>(runLoop);
    return std::make_unique<ZNTCookedInput>(runLoop, STDIN_FILENO, showsOutput);
}

bool ZNTConsoleInput::areErrorsOnOutput()
{
    struct stat output {
    }, errors{};
    return ::isatty(STDERR_FILENO) != 0 && ::fstat(STDOUT_FILENO, &output) == 0 &&
           ::fstat(STDERR_FILENO, &errors) == 0 && output.st_rdev == errors.st_rdev;
}

std::string ZNTConsoleInput::makeWay(Passing, bool) { return {}; }

std::string ZNTConsoleInput::lineAgain(std::string_view, bool) { return {}; }

void ZNTConsoleInput::writeAside(std::string_view line)
{
    std::fwrite(line.data(), 1, line.size(), stderr); // one call, so that threads do not mix their lines
}
