#pragma once

#include "ZNTSoundFile.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

/// Where the encoded bytes of a sound come from. Any thread may call it, one at a time.
class ZNTSoundSource
{
public:
    virtual ~ZNTSoundSource() = default;
    /// Changes if the bytes change, and differs from that of every other source.
    [[nodiscard]] virtual std::string identity() const = 0;
    /// Empty if they cannot be read.
    [[nodiscard]] virtual std::string bytes() const = 0;
    /// In bytes.
    [[nodiscard]] virtual std::int64_t size() const = 0;
    /// Fills `to` from `offset` on with at most `most` bytes; fewer only at the end. Returns their number.
    virtual std::size_t read(std::int64_t offset, char* to, std::size_t most) const = 0;
};

/// The bytes that the file has when it is read.
class ZNTFileSoundSource final : public ZNTSoundSource
{
public:
    explicit ZNTFileSoundSource(ZNTSoundFile file) : file(std::move(file)) {}
    [[nodiscard]] std::string identity() const override;
    [[nodiscard]] std::string bytes() const override;
    [[nodiscard]] std::int64_t size() const override;
    std::size_t read(std::int64_t offset, char* to, std::size_t most) const override;
    /// The first bytes, enough to tell a format.
    [[nodiscard]] std::string start() const;

private:
    [[nodiscard]] std::string bytes(std::size_t most) const;
    ZNTSoundFile file;
};

/// A sound that was fetched from a URL.
class ZNTFetchedSoundSource final : public ZNTSoundSource
{
public:
    ZNTFetchedSoundSource(std::string url, std::shared_ptr<const std::string> content)
        : url(std::move(url)),
          content(std::move(content))
    {
    }
    [[nodiscard]] std::string identity() const override { return url; }
    [[nodiscard]] std::string bytes() const override { return *content; }
    [[nodiscard]] std::int64_t size() const override { return static_cast<std::int64_t>(content->size()); }
    std::size_t read(std::int64_t offset, char* to, std::size_t most) const override
    {
        return offset < size() ? content->copy(to, most, static_cast<std::size_t>(offset)) : 0;
    }

private:
    std::string url;
    std::shared_ptr<const std::string> content;
};

namespace znt
{

/// Whether `bytes` start as WAV, Ogg, FLAC or MP3 do. The library also reads music modules and MIDI. Games
/// send no sounds in those formats, so their readers get no file of a stranger.
bool startsLikeSound(std::string_view bytes);

} // namespace znt
