#include "FuzzInput.h"
#include "FuzzRequire.h"
#include "ZNTHeldBackText.h"
#include "ZNTStandardReceiver.h"

#include <string>

namespace
{

constexpr std::size_t mostReplies = 200'000; ///< bytes, to one connection

/// A receiver, and what a session makes of its results.
class Session
{
public:
    explicit Session(std::uint8_t choices)
        : receiver({.compression = (choices & 0x10) != 0,
                    .sounds = (choices & 0x20) != 0,
                    .isEncodingNamed = (choices & 0x40) != 0}),
          encoding(ZNTStringEncodings[choices % ZNTStringEncodings.size()].encoding)
    {
        heldBack.setBlanks(ZNTHeldBackText::Blanks::Kept);
        receiver.startStream();
    }

    void receive(std::string_view block)
    {
        const auto received = receiver.read(block, encoding);
        require(received.ready <= received.text.size(), "what is ready is in the text");
        require(received.isRelease || received.ready == 0, "what is ready is released");
        replies += received.replies;
        require(replies.size() <= mostReplies, "replies are bounded");
        isBroken |= !received.failure.empty();
        encoding = received.agreedEncoding.value_or(encoding);
        if (const auto released = heldBack.take(received.text, received.isRelease, received.ready)) {
            require(!released->text.empty(), "no empty chunk is shown");
            shown += released->text;
        }
    }
    void switchCompression(bool on) { replies += receiver.switchCompression(on); }

    ZNTStandardReceiver receiver;
    ZNTStringEncoding encoding;
    ZNTHeldBackText heldBack;
    std::u16string shown;
    std::string replies;
    bool isBroken = false;
};

void compare(Session& whole, Session& cut)
{
    require(whole.isBroken == cut.isBroken, "the same streams are broken");
    const auto waiting = whole.heldBack.releasedWith({});
    if (whole.isBroken) { // what comes before the damage is not shown if it is in the same block
        cut.shown += cut.heldBack.releasedWith({});
        require(cut.shown.starts_with(whole.shown + waiting), "the text before the damage is the same");
        return;
    }
    require(whole.shown == cut.shown, "the same text is shown");
    require(waiting == cut.heldBack.releasedWith({}), "the same text waits");
    require(whole.replies == cut.replies, "the same is answered");
    require(whole.encoding == cut.encoding, "the same encoding is agreed on");
    require(whole.receiver.isEchoedByServer() == cut.receiver.isEchoedByServer(), "the same is hidden");
    require(whole.receiver.isInflating() == cut.receiver.isInflating(), "the same stream goes on");
}

} // namespace

/// A byte of choices and one of the length of cut pieces, then the network in stretches, with switches of the
/// player between them. One session gets each stretch whole, the other cut.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FuzzInput input(data, size);
    const auto choices = input.byte();
    const std::size_t length = 1 + input.byte() % 16;
    Session whole(choices), cut(choices);
    while (!input.empty()) {
        const auto stretch = input.byte();
        // Seven of eight stretches are long, so that an input can hold a whole compressed stream.
        const auto bytes = input.take(stretch % 8 == 0 ? stretch / 8 : 16U * stretch);
        whole.receive(bytes);
        for (std::size_t at = 0; at < bytes.size(); at += length)
            cut.receive(bytes.substr(at, length));
        if (stretch % 4 == 0)
            for (auto* session : {&whole, &cut})
                session->switchCompression(stretch % 8 == 0);
    }
    compare(whole, cut);
    return 0;
}
