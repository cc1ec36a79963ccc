#pragma once

#include "ZNTPendingWrites.h"

#include <cstddef>
#include <string>
#include <string_view>

class ZNTStream;

/// Everything on its way to the server: the writes that the connection has not finished, and the lines of
/// triggers that are gathered for one write.
class ZNTOutgoing
{
public:
    static constexpr long lineTag = 0;  ///< of a line
    static constexpr long replyTag = 1; ///< of telnet replies
    static constexpr double noTimeout = -1;

    /// Bytes that may wait for the server to take them before triggers and walks send nothing further.
    static constexpr std::size_t mostAnswerBytes = std::size_t{64} << 10;
    /// Bytes of telnet replies that may wait before nothing further is read.
    static constexpr std::size_t mostReplyBytes = std::size_t{64} << 10;
    /// Bytes of any kind that may wait before nothing further is read: chunk after chunk can cause answers.
    static constexpr std::size_t mostBytes = std::size_t{1} << 20;

    /// The connection that writes go to from now on; null for none. What waited for the one before is
    /// forgotten. The caller owns it.
    void useConnection(ZNTStream* newConnection);

    /// Sends `data`; without a connection it is dropped. `timeout` is in seconds, negative for none; a write
    /// that takes longer ends the connection.
    void write(std::string_view data, double timeout, long tag);
    /// While on, lines are gathered and leave in one write: thousands of writes would each wait for a turn of
    /// the loop. Replies are never gathered, and the lines before them leave first.
    void gatherLines(bool on) { areLinesGathered = on; }
    /// Hands everything that waits to the network, as far as it takes it.
    void flush();
    /// The connection has finished its oldest write.
    void finishOldest() { pendingWrites.finishOldest(); }
    /// Forgets what waits; for a connection that has ended.
    void forget();

    /// Whether the server has taken enough for further answers. They would fill the memory otherwise.
    [[nodiscard]] bool hasRoomForAnswers() const { return pendingWrites.bytes() <= mostAnswerBytes; }
    /// Whether the lines gathered so far fill one write.
    [[nodiscard]] bool isGatheredEnough() const { return gatheredLines.size() > mostAnswerBytes; }
    /// Whether so much waits that nothing further is to be read.
    [[nodiscard]] bool isFull() const
    {
        return pendingWrites.replyBytes() > mostReplyBytes || pendingWrites.bytes() > mostBytes;
    }

private:
    void sendGatheredLines();
    void writeNow(std::string_view data, double timeout, long tag);
    [[nodiscard]] bool isConnectionOpen() const;

    ZNTStream* connection = nullptr;
    ZNTPendingWrites pendingWrites;
    std::string gatheredLines;
    bool areLinesGathered = false;
};
