#pragma once

#include "ZNTHeldBackText.h"
#include "ZNTStandardReceiver.h"
#include "ZNTText.h"

#include <vector>

/// A receiver for standard telnet, and what a session makes of its results.
struct ZNTStandardClient {
    explicit ZNTStandardClient(const ZNTStandardChoices& choices = {.compression = true, .sounds = true})
        : receiver(choices)
    {
        receiver.startStream();
        heldBack.setBlanks(ZNTHeldBackText::Blanks::Kept);
    }

    void receive(std::string_view block)
    {
        const auto received = receiver.read(block, encoding);
        replies += received.replies;
        isBroken |= !received.failure.empty();
        encoding = received.agreedEncoding.value_or(encoding);
        if (const auto released = heldBack.take(received.text, received.isRelease, received.ready))
            show(released->text);
    }
    void receiveCut(std::string_view bytes, std::size_t length)
    {
        for (std::size_t at = 0; at < bytes.size(); at += length)
            receive(bytes.substr(at, length));
    }
    std::string repliesTo(std::string_view block)
    {
        receive(block);
        return std::exchange(replies, {});
    }
    void quiet()
    {
        receiver.readText({});
        if (!heldBack.empty())
            show(heldBack.releasedWith({}));
    }
    void show(std::u16string_view piece)
    {
        pieces.push_back(znt::utf8FromText(piece));
        shown += pieces.back();
    }

    ZNTStandardReceiver receiver;
    ZNTHeldBackText heldBack;
    ZNTStringEncoding encoding = ZNTStringEncoding::Ascii;
    std::vector<std::string> pieces;
    std::string shown, replies;
    bool isBroken = false;
};
