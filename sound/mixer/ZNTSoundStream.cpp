#include "ZNTSoundStream.h"

#include <SDL_mixer.h>
#include <algorithm>
#include <array>

namespace
{

/// The library never returns from repeating a sound that has no samples. Streaming pays for long sounds only.
constexpr double shortestSeconds = 10;

struct Reader {
    std::shared_ptr<const ZNTSoundSource> source;
    Sint64 offset = 0;
};

Reader& readerOf(SDL_RWops* operations) { return *static_cast<Reader*>(operations->hidden.unknown.data1); }

Sint64 size(SDL_RWops* operations) { return readerOf(operations).source->size(); }

Sint64 seek(SDL_RWops* operations, Sint64 offset, int whence)
{
    auto& reader = readerOf(operations);
    const auto from = whence == RW_SEEK_SET   ? 0
                      : whence == RW_SEEK_CUR ? reader.offset
                                              : static_cast<Sint64>(reader.source->size());
    return reader.offset = std::max<Sint64>(0, from + offset);
}

std::size_t read(SDL_RWops* operations, void* to, std::size_t itemSize, std::size_t mostItems)
{
    auto& reader = readerOf(operations);
    std::size_t most = 0;
    if (itemSize == 0 || __builtin_mul_overflow(itemSize, mostItems, &most))
        return 0;
    const auto length = reader.source->read(reader.offset, static_cast<char*>(to), most);
    reader.offset += static_cast<Sint64>(length);
    return length / itemSize;
}

int closeReader(SDL_RWops* operations)
{
    delete &readerOf(operations);
    SDL_FreeRW(operations);
    return 0;
}

/// The reader owns the result and closes it. Null if memory is short.
SDL_RWops* operationsFor(const std::shared_ptr<const ZNTSoundSource>& source)
{
    auto* operations = SDL_AllocRW();
    if (operations == nullptr)
        return nullptr;
    operations->type = SDL_RWOPS_UNKNOWN;
    operations->size = size;
    operations->seek = seek;
    operations->read = read;
    operations->write = nullptr;
    operations->close = closeReader;
    operations->hidden.unknown.data1 = new Reader{source};
    return operations;
}

} // namespace

std::unique_ptr<ZNTSoundStream> ZNTSoundStream::open(const std::shared_ptr<const ZNTSoundSource>& source)
{
    std::array<char, 16> start{};
    const auto length = source->read(0, start.data(), start.size());
    if (!znt::startsLikeSound({start.data(), length}))
        return nullptr;
    auto* operations = operationsFor(source);
    auto* music = operations != nullptr ? Mix_LoadMUS_RW(operations, /*freesrc=*/1) : nullptr;
    if (music == nullptr)
        return nullptr;
    std::unique_ptr<ZNTSoundStream> stream(new ZNTSoundStream(music));
    return Mix_MusicDuration(music) >= shortestSeconds ? std::move(stream) : nullptr;
}

ZNTSoundStream::~ZNTSoundStream() { Mix_FreeMusic(music_); }
