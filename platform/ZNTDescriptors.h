#pragma once

#include "ZNTResult.h"

namespace znt
{

/// Whether this process could open `count` (above 0) further descriptors now. Some libraries end the whole
/// program when they get none for a pipe; a program asks here before it uses them, and says why it ends.
[[nodiscard]] ZNTResult<void> tryDescriptors(int count);

} // namespace znt
