#pragma once

#include "ZNTFilePlaces.h"
#include "ZNTKeptRecording.h"
#include "ZNTPlatformLog.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// The recordings that the player keeps: a property list beside the folder of logs, readable by the user
/// alone. The file is made when the first recording is kept.
///
/// The array "recordings" holds one dictionary for each: "name", "seconds" (a text such as "0.5", because the
/// library writes fractions as the desktop's language does) and "commands". What this version does not know
/// stays in the file. Every change reads the file again, because another window may have changed it, and is
/// written in one step. A damaged file is put aside, with a line in the log.
///
/// The errors are sentences for the player; then nothing has changed.
class ZNTKeptRecordings
{
public:
    /// `log` outlives this.
    ZNTKeptRecordings(const ZNTFilePlaces& places, ZNTPlatformLog& log);

    /// In the order in which they were kept.
    [[nodiscard]] std::vector<ZNTKeptRecording> all();

    /// Keeps a new recording under a name that is free.
    ZNTResult<void> keep(const ZNTKeptRecording& recording);
    /// The same for commands that were recorded, with seconds as `znt::secondsTyped` reads them. Blanks at
    /// the ends of the name do not count. Returns what is kept, in words.
    ZNTResult<std::u16string> keep(std::u16string_view name, std::u16string_view seconds,
                                   std::vector<std::u16string> commands);
    /// Replaces the recording of that name, also by one with another name.
    ZNTResult<void> change(std::u16string_view name, const ZNTKeptRecording& changed);
    ZNTResult<void> remove(std::u16string_view name);

    static constexpr std::size_t mostRecordings = 500;

private:
    ZNTFilePlaces places;
    ZNTPlatformLog& log;
};
