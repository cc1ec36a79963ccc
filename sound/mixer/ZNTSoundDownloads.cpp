#include "ZNTSoundDownloads.h"

#include "ZNTSoundSource.h"
#include "ZNTText.h"

#include <algorithm>
#include <chrono>
#include <curl/curl.h>
#include <deque>
#include <map>
#include <mutex>
#include <set>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace
{

constexpr const char* protocols = "http,https";
constexpr long mostRedirects = 5;
constexpr int longestWait = 1'000; // milliseconds; news and shutdown wake it up earlier

struct CloseEasy {
    void operator()(CURL* handle) const { curl_easy_cleanup(handle); }
};
struct CloseMulti {
    void operator()(CURLM* handle) const { curl_multi_cleanup(handle); }
};

struct Download {
    std::uint64_t number;
    std::string url;
    std::string gameAddress; ///< empty for a game of the public network

    /// A game must not get from the cache what only a game on another host could fetch.
    [[nodiscard]] std::string key() const
    {
        return (gameAddress.empty() ? "public" : gameAddress) + " " + url;
    }
};

struct Transfer {
    Download download;
    std::size_t mostBytes;
    bool (*isPublicAddress)(const sockaddr&);
    std::string received;
    std::unique_ptr<CURL, CloseEasy> handle;
};

std::size_t receive(char* bytes, std::size_t /*one*/, std::size_t length, void* context)
{
    auto& transfer = *static_cast<Transfer*>(context);
    if (transfer.received.size() + length > transfer.mostBytes)
        return CURL_WRITEFUNC_ERROR;
    transfer.received.append(bytes, length);
    return length;
}

/// Called just before each connection is made, also for redirects. The address is checked here, because a
/// host name may lead to any address.
curl_socket_t openSocket(void* context, curlsocktype /*purpose*/, curl_sockaddr* address)
{
    const auto& transfer = *static_cast<const Transfer*>(context);
    if (!transfer.isPublicAddress(address->addr) &&
        !znt::isSameAddress(address->addr, transfer.download.gameAddress))
        return CURL_SOCKET_BAD;
    return socket(address->family, address->socktype | SOCK_CLOEXEC, address->protocol);
}

bool prepare(Transfer& transfer, const ZNTSoundDownloadLimits& limits)
{
    transfer.handle.reset(curl_easy_init());
    auto* handle = transfer.handle.get();
    if (handle == nullptr)
        return false;
    CURLcode failed = CURLE_OK;
    const auto set = [&](CURLoption option, auto value) {
        if (failed == CURLE_OK)
            failed = curl_easy_setopt(handle, option, value);
    };
    set(CURLOPT_URL, transfer.download.url.c_str());
    set(CURLOPT_PROTOCOLS_STR, protocols);
    set(CURLOPT_REDIR_PROTOCOLS_STR, protocols);
    set(CURLOPT_FOLLOWLOCATION, 1L);
    set(CURLOPT_MAXREDIRS, mostRedirects);
    set(CURLOPT_FAILONERROR, 1L);
    set(CURLOPT_PROXY, "");
    set(CURLOPT_NOSIGNAL, 1L);
    set(CURLOPT_QUICK_EXIT, 1L); // do not wait for a name server at the end
    set(CURLOPT_TIMEOUT_MS, static_cast<long>(limits.seconds * 1'000));
    set(CURLOPT_MAXFILESIZE_LARGE, static_cast<curl_off_t>(limits.mostBytes));
    // A connection made for one game must not serve another.
    set(CURLOPT_FRESH_CONNECT, 1L);
    set(CURLOPT_FORBID_REUSE, 1L);
    set(CURLOPT_OPENSOCKETFUNCTION, openSocket);
    set(CURLOPT_OPENSOCKETDATA, static_cast<void*>(&transfer));
    set(CURLOPT_WRITEFUNCTION, receive);
    set(CURLOPT_WRITEDATA, static_cast<void*>(&transfer));
    set(CURLOPT_PRIVATE, static_cast<void*>(&transfer));
    return failed == CURLE_OK;
}

} // namespace

class ZNTSoundDownloads::Worker : public std::enable_shared_from_this<Worker>
{
public:
    Worker(RunLoop& runLoop, std::string cacheFolder, ZNTSoundDownloadLimits limits)
        : runLoop(runLoop),
          limits(limits),
          cache(std::move(cacheFolder), limits.cacheBytes)
    {
        curl_global_init(CURL_GLOBAL_DEFAULT);
        multi.reset(curl_multi_init());
        thread = std::thread([this] { run(); });
    }
    ~Worker()
    {
        {
            const std::lock_guard hold(mutex);
            isEnding = true;
        }
        curl_multi_wakeup(multi.get());
        thread.join();
        multi.reset();
        curl_global_cleanup();
    }
    Worker(const Worker&) = delete;
    Worker& operator=(const Worker&) = delete;

    void fetch(Download download, Done done);
    void cancel(std::uint64_t number);

private:
    void run();
    /// False at the end.
    bool takeNews(std::deque<Download>& waiting, std::set<std::uint64_t>& cancelled);
    void startNext(std::deque<Download>& waiting);
    void finishTransfers();
    void endTransfer(std::map<std::uint64_t, Transfer>::iterator transfer);
    void report(std::uint64_t number, Content content);

    RunLoop& runLoop;
    const ZNTSoundDownloadLimits limits;

    // Of the run loop's thread only.
    std::map<std::uint64_t, Done> unfinished;

    // The run loop's thread adds to these three under the mutex and then wakes our thread up; our thread
    // takes them under the mutex. It is never held during a transfer.
    std::mutex mutex;
    bool isEnding = false;
    std::vector<Download> newDownloads;
    std::vector<std::uint64_t> newlyCancelled;

    // Of our own thread only.
    ZNTSoundCache cache;
    std::unique_ptr<CURLM, CloseMulti> multi;
    std::map<std::uint64_t, Transfer> transfers;
    std::thread thread;
};

void ZNTSoundDownloads::Worker::fetch(Download download, Done done)
{
    unfinished[download.number] = std::move(done);
    {
        const std::lock_guard hold(mutex);
        newDownloads.push_back(std::move(download));
    }
    curl_multi_wakeup(multi.get());
}

void ZNTSoundDownloads::Worker::cancel(std::uint64_t number)
{
    if (unfinished.erase(number) == 0)
        return;
    {
        const std::lock_guard hold(mutex);
        newlyCancelled.push_back(number);
    }
    curl_multi_wakeup(multi.get());
}

void ZNTSoundDownloads::Worker::run()
{
    std::deque<Download> waiting;
    std::set<std::uint64_t> cancelled;
    while (takeNews(waiting, cancelled)) {
        std::erase_if(waiting, [&](const Download& download) { return cancelled.contains(download.number); });
        for (const auto number : cancelled)
            if (const auto transfer = transfers.find(number); transfer != transfers.end())
                endTransfer(transfer);
        while (!waiting.empty() && transfers.size() < limits.atOnce)
            startNext(waiting);
        for (; waiting.size() > limits.mostWaiting; waiting.pop_front())
            report(waiting.front().number, nullptr);
        int running = 0;
        curl_multi_perform(multi.get(), &running);
        finishTransfers();
        if (waiting.empty() || transfers.size() >= limits.atOnce)
            curl_multi_poll(multi.get(), nullptr, 0, longestWait, nullptr);
    }
    while (!transfers.empty())
        endTransfer(transfers.begin());
}

bool ZNTSoundDownloads::Worker::takeNews(std::deque<Download>& waiting, std::set<std::uint64_t>& cancelled)
{
    const std::lock_guard hold(mutex);
    std::move(newDownloads.begin(), newDownloads.end(), std::back_inserter(waiting));
    newDownloads.clear();
    cancelled = {newlyCancelled.begin(), newlyCancelled.end()};
    newlyCancelled.clear();
    return !isEnding;
}

void ZNTSoundDownloads::Worker::startNext(std::deque<Download>& waiting)
{
    auto download = std::move(waiting.front());
    waiting.pop_front();
    const auto number = download.number;
    if (auto content = cache.contentFor(download.key())) {
        report(number, std::move(content));
        return;
    }
    auto& transfer = transfers[number];
    transfer.download = std::move(download);
    transfer.mostBytes = limits.mostBytes;
    transfer.isPublicAddress = limits.isPublicAddress;
    if (prepare(transfer, limits) && curl_multi_add_handle(multi.get(), transfer.handle.get()) == CURLM_OK)
        return;
    transfers.erase(number);
    report(number, nullptr);
}

void ZNTSoundDownloads::Worker::finishTransfers()
{
    int left = 0;
    while (const auto* message = curl_multi_info_read(multi.get(), &left)) {
        if (message->msg != CURLMSG_DONE)
            continue;
        const auto result = message->data.result;
        void* context = nullptr;
        curl_easy_getinfo(message->easy_handle, CURLINFO_PRIVATE, &context);
        auto& transfer = *static_cast<Transfer*>(context);
        const auto download = transfer.download;
        const auto content = std::make_shared<const std::string>(std::move(transfer.received));
        endTransfer(transfers.find(download.number));
        // Reject partial downloads and HTML error pages.
        const bool isSound = result == CURLE_OK && znt::startsLikeSound(*content);
        if (isSound)
            cache.keep(download.key(), *content);
        report(download.number, isSound ? content : nullptr);
    }
}

void ZNTSoundDownloads::Worker::endTransfer(std::map<std::uint64_t, Transfer>::iterator transfer)
{
    curl_multi_remove_handle(multi.get(), transfer->second.handle.get());
    transfers.erase(transfer);
}

void ZNTSoundDownloads::Worker::report(std::uint64_t number, Content content)
{
    runLoop.post([weak = weak_from_this(), number, content = std::move(content)] {
        const auto worker = weak.lock();
        if (worker == nullptr)
            return;
        const auto found = worker->unfinished.find(number);
        if (found == worker->unfinished.end())
            return;
        const auto done = std::move(found->second);
        worker->unfinished.erase(found);
        done(content);
    });
}

ZNTSoundDownloads::ZNTSoundDownloads(RunLoop& runLoop, std::string cacheFolder, ZNTSoundDownloadLimits limits)
    : worker(std::make_shared<Worker>(runLoop, std::move(cacheFolder), limits))
{
}

ZNTSoundDownloads::~ZNTSoundDownloads() = default;

bool ZNTSoundDownloads::canFetch(std::string_view url)
{
    const auto startsWith = [&](std::string_view scheme) {
        return url.size() > scheme.size() &&
               std::equal(scheme.begin(), scheme.end(), url.begin(),
                          [](char wanted, char given) { return wanted == znt::asciiLowered(given); });
    };
    const auto isControl = [](char character) { return static_cast<unsigned char>(character) <= ' '; };
    return (startsWith("http://") || startsWith("https://")) && url.size() <= 2'048 &&
           std::none_of(url.begin(), url.end(), isControl);
}

void ZNTSoundDownloads::fetch(std::uint64_t number, std::string url, std::string gameAddress, Done done)
{
    if (znt::isPublicAddress(gameAddress))
        gameAddress.clear();
    worker->fetch({number, std::move(url), std::move(gameAddress)}, std::move(done));
}

void ZNTSoundDownloads::cancel(std::uint64_t number) { worker->cancel(number); }
