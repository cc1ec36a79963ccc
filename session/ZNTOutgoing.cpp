#include "ZNTOutgoing.h"

#include "ZNTStream.h"

#include <utility>

void ZNTOutgoing::useConnection(ZNTStream* newConnection)
{
    connection = newConnection;
    forget();
}

bool ZNTOutgoing::isConnectionOpen() const { return connection && !connection->isDisconnected(); }

void ZNTOutgoing::write(std::string_view data, double timeout, long tag)
{
    if (data.empty() || !isConnectionOpen())
        return;
    if (areLinesGathered && tag == lineTag) {
        gatheredLines += data;
        return;
    }
    sendGatheredLines();
    writeNow(data, timeout, tag);
}

void ZNTOutgoing::sendGatheredLines()
{
    if (const auto lines = std::exchange(gatheredLines, {}); !lines.empty() && isConnectionOpen())
        writeNow(lines, noTimeout, lineTag);
}

void ZNTOutgoing::writeNow(std::string_view data, double timeout, long tag)
{
    pendingWrites.add(data.size(),
                      tag == replyTag ? ZNTPendingWrites::Kind::Reply : ZNTPendingWrites::Kind::Line);
    connection->writeData(std::string(data), timeout, tag);
}

void ZNTOutgoing::flush()
{
    sendGatheredLines();
    if (connection)
        connection->flushQueuedWrites();
}

void ZNTOutgoing::forget()
{
    pendingWrites.clear();
    gatheredLines.clear();
}
