#include "FuzzInput.h"
#include "ZNTStandardClient.h"

#include <algorithm>

namespace
{

void compare(ZNTStandardClient& whole, ZNTStandardClient& cut)
{
    require(whole.isBroken == cut.isBroken, "the same streams are broken");
    require(std::ranges::count(cut.pieces, "") == 0, "no empty chunk is shown");
    require(whole.replies.size() < 200'000, "replies are bounded");
    const bool isSameShown = whole.shown == cut.shown;
    whole.quiet();
    cut.quiet();
    require(cut.shown.starts_with(whole.shown), "the same text came in");
    if (whole.isBroken) // what comes before the damage in the same block is not shown
        return;
    require(isSameShown && cut.shown == whole.shown, "the same text is shown, and the same waits");
    require(whole.replies == cut.replies, "the same is answered");
    require(whole.encoding == cut.encoding, "the same encoding is agreed on");
    require(whole.receiver.isEchoedByServer() == cut.receiver.isEchoedByServer(), "the same is hidden");
    require(whole.receiver.isInflating() == cut.receiver.isInflating(), "the same stream goes on");
}

} // namespace

/// A byte of choices and one of the length of cut pieces, then the network in stretches, with switches of the
/// player between them. One client gets each stretch whole, the other cut.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FuzzInput input(data, size);
    const auto choices = input.byte();
    const std::size_t length = 1 + input.byte() % 16;
    const ZNTStandardChoices chosen{.compression = choices % 32 >= 16, .isEncodingNamed = choices % 64 >= 32};
    ZNTStandardClient whole(chosen), cut(chosen);
    whole.encoding = cut.encoding = ZNTStringEncodings[choices % ZNTStringEncodings.size()].encoding;
    while (!input.empty()) {
        const auto stretch = input.byte();
        // Most stretches are long, so that an input can hold a whole compressed stream.
        const auto bytes = input.take(stretch % 8 == 0 ? stretch / 8 : 16U * stretch);
        whole.receive(bytes);
        cut.receiveCut(bytes, length);
        if (stretch % 4 == 0)
            for (auto* client : {&whole, &cut})
                client->replies += client->receiver.switchCompression(stretch % 8 == 0);
    }
    compare(whole, cut);
    return 0;
}
