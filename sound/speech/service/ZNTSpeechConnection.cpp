#include "ZNTSpeechConnection.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <libspeechd.h>
#include <netdb.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>
#include <utility>

namespace
{

constexpr std::string_view lineEnd = "\r\n";
constexpr std::string_view endOfText = ".";
constexpr std::string_view cancelAll = "CANCEL SELF";

/// Stands between code and text in the last line of an answer; earlier lines have another character there.
constexpr char lastLineMark = ' ';

struct AddressCloser {
    void operator()(SPDConnectionAddress* address) const { SPDConnectionAddress__free(address); }
};
using Address = std::unique_ptr<SPDConnectionAddress, AddressCloser>;

/// The address in SPEECHD_ADDRESS, else the desktop's own. Null if the variable is malformed.
Address defaultAddress()
{
    char* error = nullptr;
    Address address(spd_get_default_address(&error));
    std::free(error);
    return address;
}

int connected(int family, const sockaddr* address, socklen_t size)
{
    const int descriptor = socket(family, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
    if (descriptor < 0)
        return -1;
    if (connect(descriptor, address, size) == 0)
        return descriptor;
    pollfd watched{descriptor, POLLOUT, 0};
    int failure = errno;
    socklen_t failureSize = sizeof failure;
    if (failure == EINPROGRESS && poll(&watched, 1, ZNTSpeechConnection::longestWait * 1'000) == 1 &&
        getsockopt(descriptor, SOL_SOCKET, SO_ERROR, &failure, &failureSize) == 0 && failure == 0)
        return descriptor;
    close(descriptor);
    return -1;
}

int connectedToFile(const char* path)
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (path == nullptr || std::strlen(path) >= sizeof address.sun_path)
        return -1;
    std::strcpy(address.sun_path, path);
    return connected(AF_UNIX, reinterpret_cast<const sockaddr*>(&address), sizeof address);
}

int connectedToHost(const char* host, int port)
{
    addrinfo wanted{};
    wanted.ai_socktype = SOCK_STREAM;
    addrinfo* found = nullptr;
    if (host == nullptr || getaddrinfo(host, std::to_string(port).c_str(), &wanted, &found) != 0)
        return -1;
    int descriptor = -1;
    for (const auto* one = found; one != nullptr && descriptor < 0; one = one->ai_next)
        descriptor = connected(one->ai_family, one->ai_addr, one->ai_addrlen);
    freeaddrinfo(found);
    return descriptor;
}

/// The body of a SPEAK command. A line with one dot ends it, so a line that starts with a dot gets another.
std::string bodyOf(std::string_view utf8)
{
    std::string body;
    while (!utf8.empty()) {
        const auto end = utf8.find_first_of(lineEnd);
        const auto line = utf8.substr(0, end);
        if (line.starts_with('.'))
            body += '.';
        (body += line) += lineEnd;
        utf8.remove_prefix(line.size());
        utf8.remove_prefix(utf8.starts_with(lineEnd) ? lineEnd.size() : utf8.empty() ? 0 : 1);
    }
    return body.append(endOfText);
}

template <typename Number>
std::optional<Number> numberIn(std::string_view text)
{
    Number number{};
    const auto read = std::from_chars(text.data(), text.data() + text.size(), number);
    return read.ec == std::errc() ? std::optional(number) : std::nullopt;
}

} // namespace

std::shared_ptr<ZNTSpeechConnection> ZNTSpeechConnection::open(EventHandler onEvent)
{
    const auto address = defaultAddress();
    if (!address)
        return nullptr;
    const int socket = address->method == SPD_METHOD_UNIX_SOCKET
                           ? connectedToFile(address->unix_socket_name)
                           : connectedToHost(address->inet_socket_host, address->inet_socket_port);
    return socket < 0 ? nullptr : std::make_shared<ZNTSpeechConnection>(socket, std::move(onEvent));
}

void ZNTSpeechConnection::startService()
{
    const auto address = defaultAddress();
    if (!address)
        return;
    char* error = nullptr;
    constexpr int startsService = 1;
    auto* started =
        spd_open2("zantor", "start", nullptr, SPD_MODE_SINGLE, address.get(), startsService, &error);
    std::free(error);
    if (started != nullptr)
        spd_close(started);
}

ZNTSpeechConnection::~ZNTSpeechConnection() { close(socket); }

bool ZNTSpeechConnection::greet()
{
    // The client's name has three parts: user, program, and part of the program.
    // Priority "message" queues behind the text that is being said; "text" would drop the queue.
    constexpr std::array commands{"SET SELF CLIENT_NAME player:zantor:game", "SET SELF PRIORITY message",
                                  "SET SELF NOTIFICATION BEGIN on", "SET SELF NOTIFICATION END on",
                                  "SET SELF NOTIFICATION CANCEL on"};
    return std::all_of(commands.begin(), commands.end(),
                       [this](const char* command) { return ask(command).has_value(); });
}

ZNTSpeechConnection::Said ZNTSpeechConnection::say(std::string_view utf8, int interruption)
{
    const auto said = handOver(utf8, interruption);
    handleRemainingEvents();
    return said;
}

ZNTSpeechConnection::Said ZNTSpeechConnection::handOver(std::string_view utf8, int interruption)
{
    struct Step {
        std::string command;
        int expectedCode;
        /// A cancel that may follow the command before its answer has come. The service reads a text after
        /// SPEAK, so an empty one comes first.
        std::vector<std::string_view> cancel;
    };
    constexpr int receivingData = 230, messageQueued = 225;
    const Step steps[] = {{"SPEAK", receivingData, {endOfText, cancelAll}},
                          {bodyOf(utf8), messageQueued, {cancelAll}}};
    std::optional<Answer> last;
    for (const auto& step : steps) {
        if (!sendLine(step.command))
            return {};
        last = answer(interruption);
        if (!last && !lost) {
            std::for_each(step.cancel.begin(), step.cancel.end(), [this](auto line) { sendLine(line); });
            for (auto owed = step.cancel.size() + 1; owed > 0 && !lost; --owed)
                answer();
            return {{}, /*wasCancelled=*/true};
        }
        if (!last || last->code != step.expectedCode)
            return {};
    }
    return {numberIn<std::size_t>(last->lines.front())};
}

void ZNTSpeechConnection::cancel() { ask(cancelAll); }

void ZNTSpeechConnection::takeEvents()
{
    receive();
    handleRemainingEvents();
}

void ZNTSpeechConnection::handleRemainingEvents()
{
    // The socket does not become readable again for events that came together with an answer.
    // `nextAnswer` handles the events. An answer without a question has no meaning and is dropped.
    while (nextAnswer()) {
    }
}

void ZNTSpeechConnection::breakOff() { shutdown(socket, SHUT_RDWR); }

std::optional<ZNTSpeechConnection::Answer> ZNTSpeechConnection::ask(std::string_view command)
{
    auto answered = sendLine(command) ? answer() : std::nullopt;
    handleRemainingEvents();
    return answered;
}

std::optional<ZNTSpeechConnection::Answer> ZNTSpeechConnection::answer(int interruption)
{
    for (;;) {
        if (auto next = nextAnswer())
            return next;
        if (lost || waitFor(POLLIN, interruption) != Wait::Ready)
            return {};
        receive();
    }
}

bool ZNTSpeechConnection::sendLine(std::string_view line) { return send(std::string(line).append(lineEnd)); }

bool ZNTSpeechConnection::send(std::string_view bytes)
{
    while (!bytes.empty() && !lost) {
        const auto count = ::send(socket, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (count >= 0)
            bytes.remove_prefix(static_cast<std::size_t>(count));
        else if (errno == EAGAIN)
            waitFor(POLLOUT);
        else if (errno != EINTR)
            lost = true;
    }
    return !lost;
}

ZNTSpeechConnection::Wait ZNTSpeechConnection::waitFor(short readiness, int interruption)
{
    pollfd watched[] = {{socket, readiness, 0}, {interruption, POLLIN, 0}};
    if (poll(watched, std::size(watched), longestWait * 1'000) == 0)
        lost = true;
    if (lost)
        return Wait::Lost;
    return watched[0].revents == 0 && watched[1].revents != 0 ? Wait::Interrupted : Wait::Ready;
}

void ZNTSpeechConnection::receive()
{
    char bytes[4096];
    for (;;) {
        const auto count = recv(socket, bytes, sizeof bytes, 0);
        if (count > 0) {
            received.append(bytes, static_cast<std::size_t>(count));
            continue;
        }
        if (count == 0 || (errno != EAGAIN && errno != EINTR))
            lost = true;
        return;
    }
}

std::optional<ZNTSpeechConnection::Answer> ZNTSpeechConnection::nextAnswer()
{
    for (auto end = received.find(lineEnd); end != std::string::npos; end = received.find(lineEnd)) {
        const auto line = received.substr(0, end);
        received.erase(0, end + lineEnd.size());
        constexpr std::size_t codeDigits = 3;
        incomplete.code = numberIn<int>(std::string_view(line).substr(0, codeDigits)).value_or(0);
        incomplete.lines.push_back(line.size() > codeDigits ? line.substr(codeDigits + 1) : "");
        if (line.size() > codeDigits && line[codeDigits] != lastLineMark)
            continue;
        auto answer = std::exchange(incomplete, {});
        constexpr int firstEvent = 700, lastEvent = 799;
        if (answer.code < firstEvent || answer.code > lastEvent)
            return answer;
        handleEvent(answer);
    }
    return {};
}

void ZNTSpeechConnection::handleEvent(const Answer& event)
{
    constexpr int begin = 701, end = 702, cancelled = 703;
    const auto message = numberIn<std::size_t>(event.lines.front());
    if (!message)
        return;
    if (event.code == begin)
        onEvent(*message, ZNTSpeechEvent::Begin);
    else if (event.code == end || event.code == cancelled)
        onEvent(*message, ZNTSpeechEvent::End);
}
