#include "ZNTLogger.h"

#include "ZNTDescriptors.h"
#include "ZNTPrivateFiles.h"
#include "ZNTText.h"

#include <algorithm>
#include <ctime>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unicode/utf16.h>
#include <unistd.h>

namespace
{

/// UTF-16 units; a piece stays in the processor's cache.
constexpr std::size_t pieceSize = std::size_t{32} << 10;

bool holdsSurrogate(std::u16string_view text)
{
    char16_t found = 0;
    for (const auto unit : text) // no early return, so that the compiler can vectorise the loop
        found |= (unit & 0xF800) == 0xD800 ? 1 : 0;
    return found != 0;
}

bool isWellFormed(std::u16string_view text)
{
    for (std::size_t at = 0; at < text.size();) {
        if (const auto piece = text.substr(at, pieceSize); !holdsSurrogate(piece)) {
            at += piece.size();
            continue;
        }
        for (const auto end = std::min(at + pieceSize, text.size()); at < end; ++at) {
            if (!U16_IS_SURROGATE(text[at]))
                continue;
            const bool isPair = U16_IS_LEAD(text[at]) && at + 1 < text.size() && U16_IS_TRAIL(text[at + 1]);
            if (!isPair)
                return false;
            ++at;
        }
    }
    return true;
}

/// The first part of `text` that makes a piece, without half a surrogate pair at its end.
std::u16string_view nextPiece(std::u16string_view text)
{
    const auto piece = text.substr(0, pieceSize);
    const bool isCut = piece.size() < text.size() && U16_IS_LEAD(piece.back());
    return piece.substr(0, piece.size() - (isCut ? 1 : 0));
}

} // namespace

ZNTLogger::ZNTLogger(const ZNTFilePlaces& places, const ZNTClock& clock)
{
    const std::filesystem::path logs = folder(places);
    std::error_code ignored;
    if (!std::filesystem::exists(logs, ignored))
        static_cast<void>(znt::makePrivateFolder(logs)); // the file cannot be opened then, either
    output = ::open((logs / fileName(clock.timeOfDay())).c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC,
                    S_IRUSR | S_IWUSR);
}

std::string ZNTLogger::folder(const ZNTFilePlaces& places) { return places.home + "/Library/Zantor/logs"; }

ZNTLogger::~ZNTLogger()
{
    if (output >= 0)
        ::close(output);
}

void ZNTLogger::loggerText(std::u16string_view text)
{
    if (output < 0 || text.empty() || !isWellFormed(text))
        return;
    while (!text.empty()) {
        const auto piece = nextPiece(text);
        if (!znt::writeAll(output, znt::utf8FromText(piece)))
            return;
        text.remove_prefix(piece.size());
    }
}

std::string ZNTLogger::fileName(std::chrono::system_clock::time_point started)
{
    const auto seconds = std::chrono::system_clock::to_time_t(started);
    std::tm local{};
    ::localtime_r(&seconds, &local);
    char name[64];
    const auto length = std::strftime(name, sizeof name, "zantor_log_%d.%m.%g_%H.%M.log", &local);
    return {name, length};
}
