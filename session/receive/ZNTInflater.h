#pragma once

#include <memory>
#include <string>
#include <string_view>

struct z_stream_s; // zlib's

/// Inflates the blocks of one MCCP2 stream (zlib format, RFC 1950) as they come in.
///
/// A block yields an output block that is returned whole: four times the input at first, grown in steps of
/// the input, and zero where nothing was written, so that NUL characters follow the text. Nothing is carried
/// from one block to the next but zlib's own state.
class ZNTInflater
{
public:
    ZNTInflater();
    ~ZNTInflater();
    ZNTInflater(const ZNTInflater&) = delete;
    ZNTInflater& operator=(const ZNTInflater&) = delete;

    /// Begins a new stream, whatever became of the one before. To be called at each connect.
    void startStream();

    enum class Outcome {
        GoesOn, ///< more of the stream may follow
        Ended,  ///< the stream's end was in this block; what followed it there is lost
        Failed  ///< no zlib stream, a damaged one, or one that inflates past `mostInflated`
    };
    struct Block {
        std::string bytes;
        Outcome outcome = Outcome::GoesOn;
    };
    /// After an end or a failure every further block fails, until `startStream`. An empty block is returned
    /// as it is.
    Block anotherInflate(std::string_view compressed);

    /// Bytes of output that one block may grow to before it counts as a failure: a block of hostile zeros
    /// could otherwise inflate a thousandfold.
    static constexpr std::size_t mostInflated = std::size_t{16} << 20;

private:
    void endStream();
    Outcome inflateInto(std::string& block, std::size_t inputSize);

    std::unique_ptr<z_stream_s> mccp2;
    bool isStarted = false;
};
