#include "ZNTConsoleInput.h"

#include "ZNTPlainInput.h"
#include "ZNTTerminalInput.h"

#include <unistd.h>

std::unique_ptr<ZNTConsoleInput> ZNTConsoleInput::forStandardInput(RunLoop& runLoop)
{
    if (::isatty(STDIN_FILENO) && ::isatty(STDOUT_FILENO))
        return std::make_unique<ZNTTerminalInput>(runLoop);
    return std::make_unique<ZNTPlainInput>(runLoop, STDIN_FILENO);
}
