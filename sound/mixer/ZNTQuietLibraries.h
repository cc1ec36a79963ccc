#pragma once

/// The libraries below the mixer write to stderr that there is no sound device, line after line; the terminal
/// client shows stderr between the game's lines.
namespace znt
{

/// For the start of the program, before it has threads: sets their variables of the environment, except those
/// that the player has set.
void keepSoundLibrariesQuiet();

/// For the thread that opens the device, before each time.
void keepDeviceSearchQuiet();

} // namespace znt
