#pragma once

#include "ZNTResult.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// Commands that a player has recorded and keeps under a name, to run them later.
struct ZNTKeptRecording {
    std::u16string name;
    double seconds = 1;                   ///< between two commands
    std::vector<std::u16string> commands; ///< lines as they were typed; one may be empty

    // What a recording may hold. A player needs less, and a damaged file must not fill the memory. Lengths
    // are in UTF-16 units.
    static constexpr std::size_t longestName = 100, longestCommand = 1'000, mostCommands = 5'000;
    static constexpr double leastSeconds = 0.1, mostSeconds = 3600;

    friend bool operator==(const ZNTKeptRecording&, const ZNTKeptRecording&) = default;
};

namespace znt
{

/// Whether a recording is within its limits. The error is a sentence for the player.
ZNTResult<void> checkRecording(const ZNTKeptRecording& recording);

/// The seconds that a player has typed: a number with a point or a comma; nothing means a second. The error
/// is a sentence for the player.
ZNTResult<double> secondsTyped(std::u16string_view text);
/// What `secondsTyped` reads: "1" or "0.5".
std::u16string secondsText(double seconds);

/// "hunt: 3 commands, 0.5 seconds between them".
std::u16string recordingInWords(const ZNTKeptRecording& recording);

} // namespace znt
