#pragma once

#include "ZNTResult.h"

#include <string>
#include <string_view>

/// Files and folders that only their owner may read. Paths are UTF-8.
namespace znt
{

/// Makes `folder` and the missing folders above it. Folders that exist keep their mode.
ZNTResult<void> makePrivateFolder(const std::string& folder);

/// Copies `source` to the new file `target`. If that fails, there is no new file.
ZNTResult<void> copyToPrivateFile(const std::string& source, const std::string& target);

/// Replaces the file in one step. A reader sees the old file or the new one, also after a crash.
ZNTResult<void> replacePrivateFile(const std::string& path, std::string_view content);

/// Empty if the file cannot be read.
std::string contentOfFile(const std::string& path);

} // namespace znt
