#pragma once

#include <cstddef>
#include <string>
#include <vector>

class ZNTOutputStore;

namespace znt
{

/// The lines that the client has sent, read back from the output that shows them: the newest first, each
/// once, at most `most`. The looks of a line do not matter, only the store's mark on it. Takes time in
/// proportion to the runs of the store that are newer than the oldest line it answers. A line longer than a
/// line of the store may come in pieces.
std::vector<std::u16string> newestSentLines(const ZNTOutputStore& store, std::size_t most);

} // namespace znt
