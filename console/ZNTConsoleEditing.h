#pragma once

#include "ZNTClientActions.h"

#include <functional>
#include <string_view>

class ZNTConsoleClient;

/// The commands with which a player without the window edits triggers, macros, macro groups and the address
/// book. Lists number what they show, and those numbers, or names, say what to change.
class ZNTConsoleEditing
{
public:
    using Adding =
        std::function<void(ZNTActionName name, std::function<void(std::u16string_view words)> carryOut)>;

    /// Calls `add` for each command. The commands work on `client`, which outlives them.
    static void addCommands(ZNTConsoleClient& client, const Adding& add);
};
