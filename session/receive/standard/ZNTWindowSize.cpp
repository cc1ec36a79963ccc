#include "ZNTWindowSize.h"

#include "ZNTTelnetCodes.h"
#include "ZNTTelnetMessages.h"

#include <algorithm>

namespace
{

constexpr int largestSize = 65535; // two bytes

int sizeOr(int size, int usual) { return size < 1 ? usual : std::min(size, largestSize); }

} // namespace

void ZNTWindowSize::setSize(int newColumns, int newRows)
{
    columns = sizeOr(newColumns, 80);
    rows = sizeOr(newRows, 24);
}

std::string ZNTWindowSize::report()
{
    if (columns == sentColumns && rows == sentRows)
        return {};
    sentColumns = columns;
    sentRows = rows;
    std::string content;
    for (const int size : {columns, rows})
        content += {static_cast<char>(size >> 8), static_cast<char>(size & 255)};
    return znt::telnet::subnegotiation(znt::telnet::option::WindowSize, content);
}
