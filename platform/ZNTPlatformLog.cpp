#include "ZNTPlatformLog.h"

#include <algorithm>
#include <cstdio>

std::string ZNTStandardErrorLog::lineOf(std::string_view text)
{
    std::string line(text);
    std::replace_if(
        line.begin(), line.end(), [](char c) { return c == '\n' || c == '\r'; }, ' ');
    line += '\n';
    return line;
}

void ZNTStandardErrorLog::log(std::string_view text)
{
    const auto line = lineOf(text);
    std::fwrite(line.data(), 1, line.size(), stderr); // one call, so that threads do not mix their lines
}
