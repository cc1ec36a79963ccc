#include "ZNTQuietLibraries.h"

#include <SDL.h>
#include <cstdlib>
#include <dlfcn.h>

namespace
{

void ignoreLine(void* /*context*/, int /*category*/, SDL_LogPriority /*priority*/, const char* /*text*/) {}

// As in alsa/error.h; ALSA is SDL's to link, not ours.
using AlsaHandler = void (*)(const char* file, int line, const char* function, int error, const char* format,
                             ...);
using SetAlsaHandler = int (*)(AlsaHandler handler);

void ignoreAlsaLine(const char* /*file*/, int /*line*/, const char* /*function*/, int /*error*/,
                    const char* /*format*/, ...)
{
}

} // namespace

void znt::keepSoundLibrariesQuiet()
{
    constexpr int keepThePlayers = 0;
    // PulseAudio's client library has no level below "error", so its lines go to the system's log.
    setenv("PULSE_LOG_SYSLOG", "1", keepThePlayers);
    setenv("PIPEWIRE_DEBUG", "0", keepThePlayers);
}

void znt::keepDeviceSearchQuiet()
{
    SDL_LogSetOutputFunction(ignoreLine, nullptr);
    // The library is never closed, so that the handler stays set.
    static void* const alsa = dlopen("libasound.so.2", RTLD_LAZY | RTLD_LOCAL);
    if (alsa == nullptr)
        return;
    if (const auto set = reinterpret_cast<SetAlsaHandler>(dlsym(alsa, "snd_lib_error_set_handler")))
        set(ignoreAlsaLine);
}
