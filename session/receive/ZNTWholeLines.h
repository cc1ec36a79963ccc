#pragma once

#include "ZNTReadyText.h"
#include "ZNTReceiver.h"

#include <optional>
#include <string>

/// For the receiver that decodes first: shows each finished line at once. Only an unfinished last line waits,
/// for the mark behind a prompt (GA, EOR or WONT) or for a time of quiet.
///
/// Lines are neither lost nor joined: a command takes exactly its own bytes out of the text, and a command
/// that two blocks share is put together and answered. An unfinished colour sequence or sound tag stands in
/// an unfinished line, so it waits with it.
class ZNTWholeLines
{
public:
    /// Begins a new connection.
    void start() { *this = {}; }
    /// A time of quiet has passed: what waited was shown.
    void noteQuiet() { readyText.noteQuiet(); }

    /// The text of a block, behind the beginning of a command that the block before has left, and without a
    /// command that the end of this block cuts: that waits for the next one.
    std::u16string withWholeCommands(std::u16string text);
    /// Takes all commands out of the text of `received` and says how much of it is ready.
    void release(ZNTReceived& received);

private:
    std::u16string cutCommand; ///< two units at most
    ZNTReadyText readyText;
};
