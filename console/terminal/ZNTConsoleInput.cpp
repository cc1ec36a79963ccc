#include "ZNTConsoleInput.h"

#include "ZNTPlainInput.h"
#include "ZNTTerminalInput.h"

#include <cstdio>
#include <unistd.h>

std::unique_ptr<ZNTConsoleInput> ZNTConsoleInput::forStandardInput(RunLoop& runLoop)
{
    if (::isatty(STDIN_FILENO) && ::isatty(STDOUT_FILENO))
        return std::make_unique<ZNTTerminalInput>(runLoop);
    return std::make_unique<ZNTPlainInput>(runLoop, STDIN_FILENO);
}

void ZNTConsoleInput::writeAside(std::string_view line)
{
    std::fwrite(line.data(), 1, line.size(), stderr); // one call, so that threads do not mix their lines
}
