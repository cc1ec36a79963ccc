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
    /// What counts as public; a test can move the border.
    bool (*isPublicAddress)(const sockaddr& address) = znt::isPublicAddress;
};

/// Fetches sounds by URL (libcurl) and keeps them. http and https only, to where redirects lead too; the
/// environment's proxies are not used, because behind them nobody could tell which host is asked.
///
/// Belongs to the run loop's thread; one thread of its own waits for the network and the disk, and ends with
/// this object, at once.
class ZNTSoundDownloads
{
public:
    using Content = ZNTSoundCache::Content;
    /// On the run loop's thread. Null where the sound could not be fetched.
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
