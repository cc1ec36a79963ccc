#pragma once

#include "ZNTDemoScreen.h"
#include "ZNTDemoWorld.h"

#include <string>
#include <string_view>

/// Where the text for one player goes. Nothing here calls the village back before the village returns.
class ZNTDemoAudience
{
public:
    virtual ~ZNTDemoAudience() = default;
    /// Lines divided by line feeds, with SGR sequences in them; a prompt follows.
    virtual void showParagraph(std::u16string_view text) = 0;
    /// That many numbered lines, as fast as the player reads them, and a prompt after the last.
    virtual void showFlood(int lines) = 0;
    /// May change between two calls.
    [[nodiscard]] virtual ZNTDemoScreen screen() const = 0;
    /// What the player types next is not shown to him, or is shown again. Only for a screen that can do that.
    virtual void hideTyping(bool hide) = 0;
    [[nodiscard]] virtual bool wantsSounds() const = 0;
    [[nodiscard]] virtual bool isCompressed() const = 0;
    /// What is shown from now on goes uncompressed.
    virtual void endCompression() = 0;
    /// Shows `farewell` and hangs up. The player leaves the village later.
    virtual void hangUp(std::u16string_view farewell) = 0;
};

struct ZNTDemoPlayer {
    ZNTDemoAudience& audience;
    std::u16string name;
    ZNTDemoRoom room = znt::demo::firstRoom;
    /// The name that he asked for. While it stands here, his next line is its password.
    std::u16string wantedName = {};
};
