#pragma once

#include "ZNTText.h"

#include <string>
#include <string_view>

/// What came in since text was last shown, waiting for the go-ahead, refusal or silence that releases it.
class ZNTHeldBackText
{
public:
    /// Adds a block, without the blanks and tabs at its ends; line ends stay.
    void add(std::u16string_view block) { joined += znt::trimmedOfBlanks(block); }

    [[nodiscard]] bool empty() const { return joined.empty(); }
    /// UTF-16 units.
    [[nodiscard]] std::size_t size() const { return joined.size(); }

    /// Everything held back, in order and with nothing between, then `last` as it stands. Nothing is left.
    std::u16string releasedWith(std::u16string_view last)
    {
        std::u16string text = std::move(joined);
        joined.clear();
        text += last;
        return text;
    }

private:
    std::u16string joined;
};
