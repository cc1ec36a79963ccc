#include "ZNTSpeechConnection.h"

#include "ZNTSpeechDispatcher.h"

#include <cstdlib>
#include <fcntl.h>
#include <libspeechd.h>
#include <map>
#include <mutex>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>
#include <utility>

namespace
{

/// The library's callbacks carry no word of whose they are but the number that the service gave the client,
/// so this one table is shared by all connections of the process.
struct Handlers {
    std::mutex mutex;
    std::map<std::size_t, ZNTSpeechConnection::EventHandler> byClient;
};

Handlers& handlers()
{
    static Handlers table;
    return table;
}

void tell(std::size_t message, std::size_t client, SPDNotificationType type)
{
    auto& table = handlers();
    const std::lock_guard lock(table.mutex);
    const auto found = table.byClient.find(client);
    if (found == table.byClient.end())
        return;
    found->second(message, type == SPD_EVENT_BEGIN ? ZNTSpeechEvent::Begin : ZNTSpeechEvent::End);
}

SPDConnection* openedConnection(ZNTSpeechServiceStart serviceStart)
{
    char* error = nullptr;
    auto* address = spd_get_default_address(&error);
    SPDConnection* connection = nullptr;
    if (address != nullptr) {
        const int startsService = serviceStart == ZNTSpeechServiceStart::WhenNeeded ? 1 : 0;
        connection = spd_open2("zantor", "game", nullptr, SPD_MODE_THREADED, address, startsService, &error);
        SPDConnectionAddress__free(address);
    }
    std::free(error);
    return connection;
}

} // namespace

struct ZNTSpeechConnection::Library {
    SPDConnection* connection;
    std::size_t client;
    /// A descriptor of our own for the connection's socket: the library closes its one when the service is
    /// gone, and the number may then mean something else.
    int socket;
};

ZNTSpeechConnection::ZNTSpeechConnection(std::unique_ptr<Library> library) : library(std::move(library)) {}

std::unique_ptr<ZNTSpeechConnection> ZNTSpeechConnection::open(ZNTSpeechServiceStart serviceStart,
                                                               EventHandler onEvent)
{
    auto* connection = openedConnection(serviceStart);
    if (connection == nullptr)
        return nullptr;
    const int client = spd_get_client_id(connection);
    const int socket = fcntl(connection->socket, F_DUPFD_CLOEXEC, 0);
    if (client < 0 || socket < 0) {
        if (socket >= 0)
            close(socket);
        spd_close(connection);
        return nullptr;
    }
    const auto number = static_cast<std::size_t>(client);
    {
        auto& table = handlers();
        const std::lock_guard lock(table.mutex);
        table.byClient[number] = std::move(onEvent);
    }
    connection->callback_begin = connection->callback_end = connection->callback_cancel = tell;
    for (const auto notification : {SPD_BEGIN, SPD_END, SPD_CANCEL})
        spd_set_notification_on(connection, notification);
    return std::unique_ptr<ZNTSpeechConnection>(
        new ZNTSpeechConnection(std::make_unique<Library>(Library{connection, number, socket})));
}

ZNTSpeechConnection::~ZNTSpeechConnection()
{
    {
        auto& table = handlers();
        const std::lock_guard lock(table.mutex);
        table.byClient.erase(library->client);
    }
    spd_close(library->connection);
    close(library->socket);
}

std::optional<std::size_t> ZNTSpeechConnection::say(const std::string& utf8)
{
    const int message = spd_say(library->connection, SPD_MESSAGE, utf8.c_str());
    if (message < 0)
        return {};
    return static_cast<std::size_t>(message);
}

void ZNTSpeechConnection::cancel() { spd_cancel(library->connection); }

bool ZNTSpeechConnection::isAlive() const
{
    pollfd watched{library->socket, POLLRDHUP, 0};
    return poll(&watched, 1, 0) == 0;
}

void ZNTSpeechConnection::breakOff() { shutdown(library->socket, SHUT_RDWR); }
