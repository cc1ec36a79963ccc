#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>

enum class ZNTSpeechServiceStart;

enum class ZNTSpeechEvent { Begin, End };

/// One connection to the speech service. Its calls wait for the service's answers, so they belong to a thread
/// that may wait; `breakOff` may come from any other.
class ZNTSpeechConnection
{
public:
    /// Hears of the service's events on the library's own thread: of a message's beginning, and of its end or
    /// its cancelling. A message may begin, and even end, before `say` has told its number.
    using EventHandler = std::function<void(std::size_t message, ZNTSpeechEvent event)>;

    /// Null where no service answers.
    static std::unique_ptr<ZNTSpeechConnection> open(ZNTSpeechServiceStart serviceStart,
                                                     EventHandler onEvent);
    /// After this returns the handler is not called again.
    ~ZNTSpeechConnection();
    ZNTSpeechConnection(const ZNTSpeechConnection&) = delete;
    ZNTSpeechConnection& operator=(const ZNTSpeechConnection&) = delete;

    /// Queues `utf8`, which is not empty, and answers its message's number. None where the service refused it
    /// or is gone; `isAlive` tells which.
    std::optional<std::size_t> say(const std::string& utf8);
    /// Silences and forgets all that this connection has said.
    void cancel();
    [[nodiscard]] bool isAlive() const;
    /// Ends the connection under a call that waits, which then fails.
    void breakOff();

private:
    struct Library;
    explicit ZNTSpeechConnection(std::unique_ptr<Library> library);

    std::unique_ptr<Library> library;
};
