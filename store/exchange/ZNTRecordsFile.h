#pragma once

#include "ZNTResult.h"

#include <cstddef>
#include <string>

namespace znt::exchange
{

/// All of a file, if it is a regular one of at most `most` bytes; EFBIG if it is larger. Never waits for what
/// is no regular file.
ZNTResult<std::string> contentOfRegularFile(const std::string& path, std::size_t most);

/// What stands at `path`, so that an export does not take the place of something else by mistake. Links are
/// followed.
enum class FileThere { None, Export, OtherFile, NoFile };
FileThere fileAt(const std::string& path);

} // namespace znt::exchange
