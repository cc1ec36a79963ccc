#pragma once

#include "ZNTFilePlaces.h"
#include "ZNTPlatformLog.h"
#include "ZNTResult.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

class ZNTPlayerList;

/// A key of the player's own for a macro.
struct ZNTMacroKey {
    std::int64_t macro = 0; ///< its number in the database
    std::string key;        ///< such as "Ctrl+Shift+K"
    bool operator==(const ZNTMacroKey&) const = default;
};

/// The keys that the player gives to macros: a property list beside the folder of logs, readable by the user
/// alone. The file is made when the first key is given.
///
/// The array "keys" holds one dictionary for each: "macro" and "key". Entries that this version does not
/// understand stay in the file. A damaged file is put aside, with a line in the log.
class ZNTMacroKeys
{
public:
    /// Reads the file. `log` outlives this.
    ZNTMacroKeys(const ZNTFilePlaces& places, ZNTPlatformLog& log);

    /// As they were when the file was read last. No key is in it twice, and no macro.
    [[nodiscard]] const std::vector<ZNTMacroKey>& all() const { return keys; }
    /// Empty if the macro has none.
    [[nodiscard]] std::string keyOf(std::int64_t macro) const;
    /// Gives the macro that key in place of its own; another macro that had the key loses it. An empty key
    /// leaves the macro without one. The error is a sentence for the player; then nothing has changed.
    ZNTResult<void> give(std::int64_t macro, std::string_view key);

    static constexpr std::size_t mostKeys = 500, longestKey = 60;

private:
    void read(const ZNTPlayerList& file);

    ZNTFilePlaces places;
    ZNTPlatformLog& log;
    std::vector<ZNTMacroKey> keys;
};
