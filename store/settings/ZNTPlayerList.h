#pragma once

#include "ZNTFilePlaces.h"
#include "ZNTPlatformLog.h"
#include "ZNTPropertyList.h"
#include "ZNTResult.h"

#include <string>

/// A list of the player's as its file has it at this moment: a property list beside the folder of logs,
/// readable by the user alone. The dictionary in it holds the array of the entries. What else it holds stays
/// there.
///
/// Another window may change the file, so each change makes one of these, changes the entries and stores
/// them. A damaged file is put aside, with a line in the log, and the list is empty then.
class ZNTPlayerList
{
public:
    /// Which list it is.
    struct Kind {
        const char* file;   ///< its name
        const char* key;    ///< of the array
        const char* things; ///< what the list holds, in messages: "kept recordings"
    };

    /// Reads the file. Without a file the list is empty, and no file is made.
    ZNTPlayerList(const Kind& kind, const ZNTFilePlaces& places, ZNTPlatformLog& log);

    /// libplist's array. Entries are added, changed and removed in place; it belongs to this.
    [[nodiscard]] void* entries() const;
    /// Replaces the file in one step. The error is a sentence for the player; then the file is as it was.
    [[nodiscard]] ZNTResult<void> store() const;

private:
    void read(ZNTPlatformLog& log);
    [[nodiscard]] ZNTError error(const std::string& sentence) const;

    Kind kind;
    std::string path;
    znt::PropertyList root;
    bool isBlocked = false; ///< a damaged file stands there that could not be put aside
};
