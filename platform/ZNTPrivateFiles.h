#pragma once

#include "ZNTResult.h"

#include <string>
#include <string_view>

/// Files and folders that only their owner may read. Paths are UTF-8.
namespace znt
{

/// Makes `folder` and the folders on the way to it; those that exist keep their mode.
ZNTResult<void> makePrivateFolder(const std::string& folder);

/// Copies `source` to the new file `target`; a failure leaves no half of it behind.
ZNTResult<void> copyToPrivateFile(const std::string& source, const std::string& target);

/// Replaces `path` by `content` in one step: readers, and a crash, meet the old file or the new one.
ZNTResult<void> replacePrivateFile(const std::string& path, std::string_view content);

/// Empty where it cannot be read.
std::string contentOfFile(const std::string& path);

} // namespace znt
