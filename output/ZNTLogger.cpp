#include "ZNTLogger.h"

#include "ZNTText.h"

#include <cerrno>
#include <ctime>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unicode/utf16.h>
#include <unistd.h>

namespace
{

bool isWellFormed(std::u16string_view text)
{
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (!U16_IS_SURROGATE(text[at]))
            continue;
        const bool isPair = U16_IS_LEAD(text[at]) && at + 1 < text.size() && U16_IS_TRAIL(text[at + 1]);
        if (!isPair)
            return false;
        ++at;
    }
    return true;
}

/// Makes the folders that are missing, for the player alone; what is there keeps its mode.
void makeFolders(const std::filesystem::path& folder)
{
    std::filesystem::path made;
    for (const auto& part : folder) {
        made /= part;
        ::mkdir(made.c_str(), S_IRWXU);
    }
}

} // namespace

ZNTLogger::ZNTLogger(const ZNTFilePlaces& places, const ZNTClock& clock)
{
    const auto folder = std::filesystem::path(places.home) / "Library" / "Zantor" / "logs";
    std::error_code ignored;
    if (!std::filesystem::exists(folder, ignored))
        makeFolders(folder);
    output = ::open((folder / fileName(clock.timeOfDay())).c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC,
                    S_IRUSR | S_IWUSR);
}

ZNTLogger::~ZNTLogger()
{
    if (output >= 0)
        ::close(output);
}

void ZNTLogger::loggerText(std::u16string_view text)
{
    if (output < 0 || text.empty() || !isWellFormed(text))
        return;
    const auto utf8 = znt::utf8FromText(text);
    for (std::size_t written = 0; written < utf8.size();) { // O_APPEND seeks to the end before each write
        const auto count = ::write(output, utf8.data() + written, utf8.size() - written);
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return;
        written += static_cast<std::size_t>(count);
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
