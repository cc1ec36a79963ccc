#pragma once

#include "ZNTResult.h"

#include <string_view>

namespace znt
{

/// Whether this process could open `count` (above 0) further descriptors now. Some libraries end the whole
/// program when they get none for a pipe; a program asks here before it uses them, and says why it ends.
[[nodiscard]] ZNTResult<void> tryDescriptors(int count);

/// Writes all of `bytes`, in as many calls as that takes. Waits while the descriptor has no room.
ZNTResult<void> writeAll(int descriptor, std::string_view bytes);

} // namespace znt
