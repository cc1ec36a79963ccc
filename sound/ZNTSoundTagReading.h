#pragma once

#include "ZNTResult.h"

#include <optional>
#include <string>
#include <string_view>

/// Where the sound of a tag is.
struct ZNTSoundPlace {
    bool isStop = false;               ///< no sound: the channel falls silent
    std::u16string file;               ///< below the sound folder: "folder/name", or "/name" for its top
    std::optional<std::u16string> url; ///< from which a missing file is fetched
};

/// One way to read the names in a sound tag.
struct ZNTSoundTagReading {
    /// The names as they stand in the tag, without quotes.
    struct Names {
        std::u16string file;
        std::optional<std::u16string> type, url; ///< T= and U=
    };

    /// The part of what was found that is the tag.
    std::u16string_view (*tagIn)(std::u16string_view found);
    ZNTResult<ZNTSoundPlace> (*placeOf)(Names names);
};

namespace znt
{

/// A name has a folder before it, and a URL names the file. A tag goes to the end of what was found. The last
/// name keeps its closing parenthesis. The URL loses its last character, for which the parenthesis is taken.
extern const ZNTSoundTagReading settledTagReading;

/// As the MUD Sound Protocol 0.3 has it. The tag ends with its first closing parenthesis. A name needs no
/// folder: its folder is T=, or else the top of the sound folder. U= is the place to which the name is added,
/// unless it names the file already. A name with wildcards is never fetched.
extern const ZNTSoundTagReading standardTagReading;

/// `name` with ".wav", unless that is in it.
std::u16string withSoundExtension(std::u16string name);

} // namespace znt
