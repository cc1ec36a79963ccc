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
/// libspeechd's own calls are not used for the talking: it reads through a null pointer when the service dies
/// between a command and its answer, waits for ever for one that hangs, and an event reaches no more than a
/// function of the whole process. Here a lost service is an answer like another, and every wait ends.
///
/// One thread makes the calls, and may have to wait up to `longestWait`; only `breakOff` may come from
/// another.
class ZNTSpeechConnection
{
public:
    /// Seconds until a service that does not answer counts as lost.
    static constexpr int longestWait = 5;

    /// Hears of a message's beginning, and of its end or cancelling, from inside the calls below. A message
    /// may begin, and even end, before `say` has told its number.
    using EventHandler = std::function<void(std::size_t message, ZNTSpeechEvent event)>;

    /// Null where nothing listens.
    static std::shared_ptr<ZNTSpeechConnection> open(EventHandler onEvent);
    /// Has libspeechd start the desktop's service; waits until it is there or known not to come.
    static void startService();

    explicit ZNTSpeechConnection(int socket, EventHandler onEvent)
        : socket(socket),
          onEvent(std::move(onEvent))
    {
    }
    ~ZNTSpeechConnection();
    ZNTSpeechConnection(const ZNTSpeechConnection&) = delete;
    ZNTSpeechConnection& operator=(const ZNTSpeechConnection&) = delete;

    /// The first thing to do: introduces the client and asks for events. False where the service fails to
    /// answer.
    bool greet();
    /// Queues `utf8`, which is not empty, and answers its message's number. None where the service refused it
    /// or is lost; `isLost` tells which.
    std::optional<std::size_t> say(std::string_view utf8);
    /// Silences and forgets all that this connection has said.
    void cancel();
    /// Takes what has come in, without waiting.
    void takeEvents();

    /// Whether the service is gone. Found out by the other calls.
    [[nodiscard]] bool isLost() const { return lost; }
    /// Readable when there is something for `takeEvents`.
    [[nodiscard]] int descriptor() const { return socket; }
    /// Has a call that waits fail at once.
    void breakOff();

private:
    struct Answer {
        int code = 0;
        /// Without the code and its separator; the last is the service's word for it.
        std::vector<std::string> lines;
    };

    std::optional<Answer> ask(std::string_view command);
    bool send(std::string_view bytes);
    bool waitFor(short readiness);
    void receive();
    /// Events on the way to it are heard.
    std::optional<Answer> nextAnswer();
    void hearTheRest();
    void hear(const Answer& event);

    int socket;
    EventHandler onEvent;
    bool lost = false;
    std::string received;
    Answer incomplete;
};
