#pragma once

#include "ZNTResult.h"

#include <string_view>

namespace znt
{

/// Whether this process could open `count` (above 0) further descriptors now. Some libraries end the whole
/// program if they get no descriptor for a pipe. A program asks here before it uses them, and can say why it
/// ends.
[[nodiscard]] ZNTResult<void> tryDescriptors(int count);

/// Writes all of `bytes`, in as many calls as that takes. Waits while the descriptor has no room.
ZNTResult<void> writeAll(int descriptor, std::string_view bytes);

} // namespace znt
