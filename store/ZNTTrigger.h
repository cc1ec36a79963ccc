#pragma once

#include <cstdint>
#include <optional>
#include <string>

/// Watches the game's text and answers by itself. Each field has an initialiser, so that a further field
/// leaves lists of values as they are.
struct ZNTTrigger {
    std::int64_t oid = 0;       ///< row key; 0 until stored
    std::u16string name = {};   ///< label shown in the editor
    std::u16string check = {};  ///< the pattern: an ICU expression in which "%1" and "*" stand for words
    std::u16string action = {}; ///< the command sent on a match; "%1" in it stands for the first group
    std::optional<std::u16string> soundFileToPlay = {}; ///< below the sound folder
    bool gag = false;                                   ///< a chunk that matched is not spoken
    bool active = false;                                ///< only active triggers are ever loaded
    bool isUnsaved = false;                             ///< its insert failed; the key belongs to another row
};
