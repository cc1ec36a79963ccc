#include "ZNTSoundFile.h"

#include <unistd.h>
#include <utility>

ZNTSoundFile::ZNTSoundFile(int descriptor, std::string path) : descriptor_(descriptor), path_(std::move(path))
{
}

ZNTSoundFile::~ZNTSoundFile()
{
    if (descriptor_ >= 0)
        close(descriptor_);
}

ZNTSoundFile::ZNTSoundFile(ZNTSoundFile&& other) noexcept
    : descriptor_(std::exchange(other.descriptor_, -1)),
      path_(std::move(other.path_))
{
}
