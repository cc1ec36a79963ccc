#pragma once

#include "ZNTConsoleCommands.h"

#include <vector>

/// The commands with which a player without the window edits triggers, macros, macro groups and the address
/// book. Lists number what they show, and those numbers, or names, say what to change.
class ZNTConsoleEditing
{
public:
    /// Adds "trigger", "macro", "group" and "mud" to `commands`; they work on `client`, which outlives them.
    static void addCommands(ZNTConsoleClient& client, std::vector<ZNTConsoleCommand>& commands);
};
