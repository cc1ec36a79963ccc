#include "ZNTLine.h"

#include <algorithm>
#include <cstddef>

ZNTLine ZNTLine::takenFrom(std::u16string_view& rest)
{
    const auto text = rest.substr(0, rest.find_first_of(u"\r\n"));
    const auto end = rest.substr(text.size());
    const bool isPair = end.starts_with(u"\r\n") || end.starts_with(u"\n\r");
    const auto length = text.size() + std::min<std::size_t>(end.size(), isPair ? 2 : 1);
    const ZNTLine line{rest.substr(0, length), text};
    rest.remove_prefix(length);
    return line;
}
