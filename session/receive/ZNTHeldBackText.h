#pragma once

#include "ZNTText.h"

#include <string>
#include <string_view>

/// What came in since text was last shown, waiting for the go-ahead, refusal or silence that releases it.
class ZNTHeldBackText
{
public:
    /// Adds a block, without the spaces and tabs at its ends; line ends stay. Wide and no-break spaces stay
    /// too: they belong to the layout of Chinese text.
    void add(std::u16string_view block)
    {
        joined += znt::trimmedOfSpacesAndTabs(block);
        hasBlocks = true;
    }

    /// Whether no block waits; one of which nothing was left is a block.
    [[nodiscard]] bool empty() const { return !hasBlocks; }
    /// UTF-16 units.
    [[nodiscard]] std::size_t size() const { return joined.size(); }

    /// Everything held back, in order and with nothing between, then `last` as it stands. Nothing is left.
    std::u16string releasedWith(std::u16string_view last)
    {
        std::u16string text = std::move(joined);
        joined.clear();
        hasBlocks = false;
        text += last;
        return text;
    }

    /// Holds back in the memory of a text that was released, if there is more of it: a flood takes and gives
    /// back tens of megabytes at each release, and new ones from the system cost more than processing them.
    void reuse(std::u16string&& released)
    {
        if (hasBlocks || released.capacity() <= joined.capacity())
            return;
        joined = std::move(released);
        joined.clear();
    }

private:
    std::u16string joined;
    bool hasBlocks = false;
};
