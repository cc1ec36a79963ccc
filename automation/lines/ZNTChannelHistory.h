#pragma once

#include "ZNTClock.h"
#include "ZNTLinePatterns.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// One line that is kept of a channel, without control characters.
struct ZNTChannelLine {
    std::u16string channel;
    std::u16string text;
    std::chrono::system_clock::time_point time; ///< when it came
    std::uint64_t number; ///< in order of arrival; a line that two channels keep has one number
};

/// The last lines of each channel of a game, such as what others tell the player, and a place among them that
/// keys move.
///
/// The player lists the channels, each entry as "NAME: PATTERN". Entries with the same name make one channel.
/// A name is letters, digits and blanks; an entry without one is a pattern of the channel "lines". A line
/// that matches patterns of two channels is kept in both.
class ZNTChannelHistory
{
public:
    static constexpr std::size_t mostLines = 100; ///< of each channel
    /// UTF-16 units that are kept of one line.
    static constexpr std::size_t longestLine = 10'000;

    /// All of them outlive this.
    ZNTChannelHistory(ZNTClock& clock, const RunLoop& runLoop, ZNTPlatformLog& log)
        : clock(clock),
          patterns(runLoop, log)
    {
    }

    /// Puts a list (UTF-8) into force; none turns the history off and forgets its lines. Channels that stay
    /// keep theirs. Answers a sentence for each pattern that cannot be used.
    std::vector<std::u16string> setChannels(const std::optional<std::vector<std::string>>& list);

    /// Takes a received chunk's plain text.
    void addText(std::u16string_view plainText);

    [[nodiscard]] std::vector<std::u16string> channelNames() const;
    [[nodiscard]] bool has(std::u16string_view channel) const;
    /// Of one channel, or of all if the name is empty, the oldest first and each line once. The name may
    /// differ in case.
    [[nodiscard]] std::vector<ZNTChannelLine> lines(std::u16string_view channel) const;

    // What a key says. The place stays on its line, however many lines come.
    [[nodiscard]] std::u16string newest();
    /// The line before the one said last, at first the newest; at the oldest, that one again.
    [[nodiscard]] std::u16string older();
    /// The line after the one said last; at the newest, that one again.
    [[nodiscard]] std::u16string newer();
    /// Goes on to the next channel, after the last to the first, and to its newest line.
    [[nodiscard]] std::u16string nextChannel();

    /// A line with how long ago it came: "2 minutes ago: Bob tells you, hi".
    [[nodiscard]] std::u16string inWords(const ZNTChannelLine& line) const;
    /// What there is to say instead of lines: that the history is off, or that the channel has no line yet.
    [[nodiscard]] std::u16string nothingInWords(std::u16string_view channel) const;

    /// Sentences about how a player switches the history on, and where its channels are listed. A front end
    /// that shows settings under other names has its own.
    std::u16string howToSwitchOn = u"The setting channel-history turns it on.";
    std::u16string whereChannelsAre = u"The setting channels lists them.";

private:
    struct Channel {
        std::u16string name;
        std::deque<ZNTChannelLine> lines;
    };

    [[nodiscard]] std::size_t channelNamed(std::u16string_view name) const;
    void keep(Channel& channel, std::u16string_view line);
    std::u16string lineAtPlace();

    ZNTClock& clock;
    std::optional<std::vector<std::string>> list; ///< in force
    ZNTLinePatterns patterns;
    std::vector<std::size_t> channelOfPattern;
    std::vector<Channel> channels;
    std::size_t present = 0; ///< the channel that the keys read
    std::size_t place = 0;   ///< how far from its end, 1 being the newest; 0 before the first key
    std::uint64_t linesSeen = 0;
};

namespace znt
{

/// "just now", "40 seconds ago", "1 minute ago", "3 hours ago", "2 days ago".
std::u16string timeAgo(std::chrono::system_clock::duration age);

} // namespace znt
