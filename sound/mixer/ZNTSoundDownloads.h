#pragma once

#include "RunLoop.h"
#include "ZNTNetworkAddress.h"
#include "ZNTSoundCache.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

struct ZNTSoundDownloadLimits {
    std::size_t mostBytes = 16 << 20;
    double seconds = 20; ///< from the start of a download to its end
    std::size_t atOnce = 4;
    std::size_t mostWaiting = 32; ///< past it the ones that have waited longest fail
    std::size_t cacheBytes = 64 << 20;
    /// Which addresses are public. Tests replace it.
    bool (*isPublicAddress)(const sockaddr& address) = znt::isPublicAddress;
};

/// Fetches sounds by URL (libcurl) and keeps them. Only http and https, also after redirects. Proxies of the
/// environment are not used: behind a proxy the address that is asked could not be checked.
///
/// Belongs to the run loop's thread. A thread of its own waits for the network and the disk; it ends with
/// this object, without waiting for a server.
class ZNTSoundDownloads
{
public:
    using Content = ZNTSoundCache::Content;
    /// Called on the run loop's thread. Null if the sound could not be fetched.
    using Done = std::function<void(Content content)>;

    ZNTSoundDownloads(RunLoop& runLoop, std::string cacheFolder, ZNTSoundDownloadLimits limits = {});
    ~ZNTSoundDownloads();
    ZNTSoundDownloads(const ZNTSoundDownloads&) = delete;
    ZNTSoundDownloads& operator=(const ZNTSoundDownloads&) = delete;

    /// Whether `url` is one that may be fetched at all.
    [[nodiscard]] static bool canFetch(std::string_view url);

    /// `number` names the download from now on. `gameAddress`, in numbers, is the only address of this
    /// machine and of private networks that may be asked, by the URL or by a redirect; empty for none.
    void fetch(std::uint64_t number, std::string url, std::string gameAddress, Done done);
    /// `done` will not be called, if it has not been.
    void cancel(std::uint64_t number);

private:
    class Worker;
    std::shared_ptr<Worker> worker;
};
