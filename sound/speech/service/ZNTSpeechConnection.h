#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

enum class ZNTSpeechEvent { Begin, End };

/// One connection to the speech service, speaking SSIP (the Speech Synthesis Interface Protocol, as in
/// speech-dispatcher's own manual) over the socket where libspeechd looks for it.
///
/// libspeechd's own calls are not used for talking. libspeechd reads through a null pointer if the service
/// dies between a command and its answer, waits for ever if the service hangs, and has one event callback for
/// the whole process. Here a lost service is an ordinary answer, and every wait has a limit.
///
/// One thread makes the calls; each may wait up to `longestWait`. Only `breakOff` may be called on another
/// thread.
class ZNTSpeechConnection
{
public:
    /// Seconds until a service that does not answer counts as lost.
    static constexpr int longestWait = 5;

    /// Called from inside the calls below when a message begins, ends or is cancelled. A message may begin,
    /// and even end, before `say` has returned its number.
    using EventHandler = std::function<void(std::size_t message, ZNTSpeechEvent event)>;

    /// Null if no service listens.
    static std::shared_ptr<ZNTSpeechConnection> open(EventHandler onEvent);
    /// Lets libspeechd start the desktop's service. Waits until the service runs or the start has failed.
    static void startService();

    explicit ZNTSpeechConnection(int socket, EventHandler onEvent)
        : socket(socket),
          onEvent(std::move(onEvent))
    {
    }
    ~ZNTSpeechConnection();
    ZNTSpeechConnection(const ZNTSpeechConnection&) = delete;
    ZNTSpeechConnection& operator=(const ZNTSpeechConnection&) = delete;

    /// To be called first: introduces the client and asks for events. False if the service does not answer.
    bool greet();
    struct Said {
        /// None if the text was cancelled, if the service refused it, or if the service is lost.
        std::optional<std::size_t> message;
        bool wasCancelled = false;
    };
    /// Queues `utf8`, which is not empty. If the descriptor `interruption` becomes readable before the
    /// service has answered, the cancel of all texts leaves at once: it does not wait for the answer.
    Said say(std::string_view utf8, int interruption);
    /// Stops and forgets all texts of this connection.
    void cancel();
    /// Handles the events that have come in, without waiting.
    void takeEvents();

    /// Whether the service is gone. The other calls find that out.
    [[nodiscard]] bool isLost() const { return lost; }
    /// Readable when there is something for `takeEvents`.
    [[nodiscard]] int descriptor() const { return socket; }
    /// Lets a call that waits fail at once.
    void breakOff();

private:
    struct Answer {
        int code = 0;
        /// Without the code and its separator. The last line is a text for people.
        std::vector<std::string> lines;
    };

    enum class Wait { Ready, Interrupted, Lost };

    Said handOver(std::string_view utf8, int interruption);
    std::optional<Answer> ask(std::string_view command);
    /// None if the service is lost, or if `interruption` is a descriptor and becomes readable first.
    std::optional<Answer> answer(int interruption = noInterruption);
    bool sendLine(std::string_view line);
    bool send(std::string_view bytes);
    Wait waitFor(short readiness, int interruption = noInterruption);
    void receive();
    /// The next whole answer in `received`. Events before it are handled.
    std::optional<Answer> nextAnswer();
    void handleRemainingEvents();
    void handleEvent(const Answer& event);

    static constexpr int noInterruption = -1; // poll passes over it

    int socket;
    EventHandler onEvent;
    bool lost = false;
    std::string received;
    Answer incomplete;
};
