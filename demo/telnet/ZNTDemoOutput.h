#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

/// Bytes on their way to a player, compressed (zlib, RFC 1950) if that is switched on. They wait here until
/// the socket takes them.
class ZNTDemoOutput
{
public:
    ZNTDemoOutput();
    ~ZNTDemoOutput();

    /// The player can inflate each piece as soon as it arrives.
    void write(std::string_view bytes);

    [[nodiscard]] bool isCompressing() const { return stream != nullptr; }
    /// What is written from now on is one zlib stream.
    void startCompression();
    /// The same, and the first bytes of the stream follow at once.
    void startCompressionVisibly();
    /// Ends the stream as zlib does; what follows is plain.
    void endCompression();
    /// Goes on in plain text without ending the stream: for a client that has stopped inflating already and
    /// would show the stream's last bytes as text.
    void dropCompression();

    [[nodiscard]] std::string_view waiting() const { return std::string_view(queue).substr(taken); }
    void consume(std::size_t count);

private:
    struct Stream;
    void deflateInto(std::string_view bytes, int flush);

    std::string queue;
    std::size_t taken = 0;
    std::unique_ptr<Stream> stream;
};
