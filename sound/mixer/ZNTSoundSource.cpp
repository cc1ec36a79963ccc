#include "ZNTSoundSource.h"

#include <algorithm>
#include <sys/stat.h>
#include <unistd.h>

namespace
{
/// A longer file is cut where it is read whole; 256 MiB are hours of Ogg and 25 minutes of WAV.
constexpr std::size_t longestFile = 256 << 20;
constexpr std::size_t startLength = 16;
} // namespace

std::string ZNTFileSoundSource::identity() const
{
    struct stat status {
    };
    if (fstat(file.descriptor(), &status) != 0)
        return file.path();
    std::string identity;
    for (const long part : {static_cast<long>(status.st_dev), static_cast<long>(status.st_ino),
                            static_cast<long>(status.st_size), static_cast<long>(status.st_mtim.tv_sec),
                            static_cast<long>(status.st_mtim.tv_nsec)})
        identity += std::to_string(part) + ":";
    return identity;
}

std::string ZNTFileSoundSource::bytes() const { return bytes(longestFile); }

std::string ZNTFileSoundSource::start() const { return bytes(startLength); }

std::string ZNTFileSoundSource::bytes(std::size_t most) const
{
    std::string content(std::min(most, static_cast<std::size_t>(size())), '\0');
    content.resize(read(0, content.data(), content.size()));
    return content;
}

std::int64_t ZNTFileSoundSource::size() const
{
    struct stat status {
    };
    return fstat(file.descriptor(), &status) == 0 ? std::max<std::int64_t>(0, status.st_size) : 0;
}

std::size_t ZNTFileSoundSource::read(std::int64_t offset, char* to, std::size_t most) const
{
    std::size_t read = 0;
    while (read < most) {
        const auto piece =
            pread(file.descriptor(), to + read, most - read, offset + static_cast<std::int64_t>(read));
        if (piece <= 0)
            break;
        read += static_cast<std::size_t>(piece);
    }
    return read;
}

bool znt::startsLikeSound(std::string_view bytes)
{
    if (bytes.size() < 4)
        return false;
    // An MPEG audio frame begins with eleven set bits (ISO 11172-3). Only layer III is MP3.
    const auto second = static_cast<unsigned char>(bytes[1]);
    const bool isFrame = bytes[0] == '\xFF' && (second & 0xE0U) == 0xE0U && (second & 0x06U) == 0x02U;
    return isFrame || bytes.starts_with("ID3") || bytes.starts_with("OggS") || bytes.starts_with("fLaC") ||
           (bytes.starts_with("RIFF") &&
            bytes.substr(std::min<std::size_t>(8, bytes.size())).starts_with("WAVE"));
}
