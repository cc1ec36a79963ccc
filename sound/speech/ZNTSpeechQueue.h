#pragma once

#include "ZNTSpokenText.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <limits>
#include <optional>
#include <string>
#include <string_view>

/// The chunks that wait to be spoken, first in, first out. All are spoken, however late. Only if more than
/// `mostUnits` wait, the older half is dropped, and the next utterance says how many lines that were. Not
/// thread-safe.
///
/// If it catches up, it keeps lines instead of chunks and drops the oldest when too many wait or when the
/// first has waited too long; one notice says how many, and the next utterance is a line again. A line of
/// which a part was taken is taken to its end.
///
/// Times are seconds of any clock that only moves forward.
class ZNTSpeechQueue
{
public:
    /// UTF-16 units over all chunks. The newest line stays, whatever its length.
    static constexpr std::size_t mostUnits = std::size_t{8} << 20;

    // Of a queue that catches up.
    static constexpr std::size_t mostLines = 50;
    /// If the first line has waited longer, all lines go that have waited longer than `keptWait`. The
    /// difference is time for the notice, after which a line may be a little older.
    static constexpr double longestWait = 5, longestWaitAfterNotice = 5.4, keptWait = 3;

    /// The text that came last, such as the description of a room, is behind nothing newer. If it is
    /// finished, its lines are not dropped for their wait: those that came within `textDuration` after its
    /// first, if they are at most `mostLinesOfText`. A flood is no such text.
    static constexpr double textDuration = 1;
    static constexpr std::size_t mostLinesOfText = 30;
    /// The first text may be longer: a game's welcome with the news of the day. All that comes between
    /// `beginFirstText` and `endFirstText` is one text. Past this many lines nothing of it is kept.
    static constexpr std::size_t mostLinesOfFirstText = 100;
    enum class Finished { None, First, Every };

    /// Where text comes from. What the player asked to hear again is not dropped for its wait, nor is a
    /// sentence of the client itself, which no replay has. Neither is newer text of the game.
    enum class Source { Game, Replay, Client };

    /// Lines that are in the queue already stay in the chunks that they came in.
    void setCatchesUp(bool catchesUp) { this->catchesUp = catchesUp; }

    /// Of a queue that catches up.
    void setFinishedTexts(Finished finished) { this->finished = finished; }
    /// What comes from now on is the first text: a connection stands.
    void beginFirstText(double now);
    /// What comes from now on is newer: the player has sent a line. Text that came before and is appended
    /// later still belongs to the first text.
    void endFirstText(double now) { firstTextEnd = std::min(firstTextEnd, now); }

    /// `chunk` is not empty. `now` is when it came.
    void append(std::u16string_view chunk, double now, Source source = Source::Game);
    void clear();
    [[nodiscard]] bool isEmpty() const { return chunks.empty(); }

    /// The next text to speak, without line ends around it: the notice of dropped lines, or the first chunk,
    /// or the first utterance of a very long chunk, whose rest stays first. None if nothing waits.
    std::optional<std::u16string> takeUtterance(double now);

private:
    struct Chunk {
        std::uint32_t length;       ///< UTF-16 units
        std::uint32_t milliseconds; ///< when it came; starts again at 0 after 49 days
        std::uint32_t textNumber;   ///< which text it belongs to, of all texts that came, or `keptNumber`
    };

    static constexpr std::uint32_t keptNumber = 0; ///< the first text of the game has 1

    void appendLines(std::u16string_view chunk, double now, Source source);
    void appendChunk(std::u16string_view chunk, double now, Source source);
    /// The number of the text that a chunk of the game belongs to, which is counted with it.
    std::uint32_t countInText(double now);
    void dropOlderHalf();
    void dropLateLines(double now);
    /// Seconds since the first chunk came.
    [[nodiscard]] double waitOfFirst(double now) const;
    /// Whether what comes at that time belongs to the text that came last.
    [[nodiscard]] bool continuesNewestText(double now) const;
    [[nodiscard]] bool isOfFirstText(double now) const { return now >= firstTextBegin && now < firstTextEnd; }
    /// Whether the first chunk is not of the game, or belongs to the text that came last, and that is kept.
    [[nodiscard]] bool isFirstKept() const;
    /// The first line of the first chunk, with the line ends around it.
    [[nodiscard]] std::size_t firstLineLength() const;
    /// It counts, unless it is blank.
    void dropFirstLine();
    void takeUnits(std::size_t count);
    std::u16string takeNotice();

    /// The chunks one after the other, and how long each is: a flood of tiny ones costs little more than its
    /// text.
    std::deque<char16_t> text;
    std::deque<Chunk> chunks;
    std::size_t droppedLines = 0;
    /// Set after a notice: the next utterance is text of the game, even if more was dropped meanwhile.
    bool owesText = false;
    /// Whether a part of the first chunk was taken.
    bool hasBegunFirst = false;
    bool catchesUp = false;
    Finished finished = Finished::None;
    /// Of the text that came last: its number, when it began, and how many chunks came of it.
    std::uint32_t newestText = 0, newestTextBegan = 0;
    std::size_t chunksOfNewestText = 0;
    bool isNewestTheFirst = false; ///< it is the first text of a connection
    /// Nothing is the first text before a connection.
    double firstTextBegin = std::numeric_limits<double>::infinity();
    double firstTextEnd = std::numeric_limits<double>::infinity();
};
