#include "ZNTWindowOptions.h"

#include "ZNTProgramArguments.h"

#include <algorithm>
#include <string_view>

const char* ZNTWindowOptions::question(int count, const char* const* arguments)
{
    return ZNTProgramArguments::question(count, arguments);
}

int ZNTWindowOptions::countForQt(int count, const char* const* arguments)
{
    return static_cast<int>(std::find(arguments, arguments + count, std::string_view("--")) - arguments);
}

std::variant<ZNTWindowOptions, int> ZNTWindowOptions::fromArguments(int count, const char* const* arguments)
{
    ZNTWindowOptions options;
    ZNTProgramArguments parser("zantor", "Plays MUDs in a window and reads them aloud.");
    options.addTo(parser);
    if (const auto exitCode = parser.parse(count, arguments))
        return *exitCode;
    return options;
}
