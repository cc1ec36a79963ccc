#pragma once

#include "ZNTOutputStore.h"

#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// Looks through the text of a store without regard to case. Matches do not overlap, and none crosses a line
/// end.
class ZNTOutputFind
{
public:
    using Position = ZNTOutputStore::Position;

    struct Match {
        Position start;
        Position end;
        friend bool operator==(const Match&, const Match&) = default;
    };
    struct Status {
        std::int64_t current = 0; ///< which match is selected, from 1; 0 for none
        std::int64_t count = 0;
        bool isCounting = false; ///< `count` will still grow, and `current` is not known yet
        bool hasWrapped = false; ///< the search went past an end of the text to find this match
    };

    /// The store outlives this.
    explicit ZNTOutputFind(const ZNTOutputStore& store) : store(store) {}

    /// Starts afresh. Only the part of `text` before a line end counts.
    void setText(std::u16string_view text);
    [[nodiscard]] bool isActive() const { return !folded.empty(); }

    /// The first match that starts at or after `position`, or the last one that starts before it. At the end
    /// of the text the search wraps around, once.
    std::optional<Match> next(Position position);
    std::optional<Match> previous(Position position);

    /// Those in `text`, as offsets from its beginning.
    void matchesIn(std::u16string_view text, std::vector<std::pair<std::size_t, std::size_t>>& found) const;

    /// Goes on counting for about `milliseconds`. True if there is more to count.
    bool countSome(int milliseconds);
    /// What is known now.
    [[nodiscard]] Status status() const;
    /// Forgets which match is current.
    void loseCurrent() { current.reset(); }
    [[nodiscard]] const std::optional<Match>& currentMatch() const { return current; }

private:
    [[nodiscard]] std::size_t findFrom(std::u16string_view text, std::size_t from) const;
    [[nodiscard]] std::optional<Match> firstFrom(Position from, Position until) const;
    [[nodiscard]] std::optional<Match> lastBefore(Position before, Position from) const;
    void dropOldCounts();

    const ZNTOutputStore& store;
    std::u16string folded;
    std::optional<Match> current;
    bool hasWrapped = false;

    std::deque<std::int64_t>
        counts; // of the blocks from `firstCounted`; never of the last, which still grows
    std::int64_t firstCounted = 0;
    std::int64_t counted = 0; // their sum
};
