#pragma once

/// If there is no sound device, the libraries below the mixer write many lines to stderr. The terminal client
/// would show them between the game's lines.
namespace znt
{

/// For the start of the program, before it has threads: sets their variables of the environment, except those
/// that the player has set.
void keepSoundLibrariesQuiet();

/// For the thread that opens the device, before each time.
void keepDeviceSearchQuiet();

} // namespace znt
