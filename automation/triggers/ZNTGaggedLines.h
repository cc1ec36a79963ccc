#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

/// The lines of a chunk that are not to be spoken, gathered match by match. A line ends with LF, CR or a pair
/// of both.
///
/// It keeps one bit for each UTF-16 unit of the chunk, from the first match on. All matches of one trigger
/// together cost no more than a few passes over the chunk, whatever they are.
class ZNTGaggedLines
{
public:
    /// Whether what has matched would also match this line, given without its line end, by itself.
    using MatchesAlone = std::function<bool(std::u16string_view line)>;

    /// Adds every line of `chunk` that the match at [start, end) touches. Line ends at the ends of the match
    /// do not count, since players write them to say where a line begins. An empty match touches the line in
    /// which it stands. The chunk is the same at each call.
    ///
    /// A wildcard stands for line ends, too, so a match of "%1 caws" can begin many lines before the crow. If
    /// a match touches several lines, those that match alone are added. Only if none does, all are.
    void add(std::u16string_view chunk, std::size_t start, std::size_t end, const MatchesAlone& matchesAlone);

    [[nodiscard]] bool isEmpty() const { return isGagged.empty(); }
    /// `text`, which is the chunk or its beginning, without these lines and their line ends.
    [[nodiscard]] std::u16string takenOutOf(std::u16string_view text) const;

private:
    bool addThoseThatMatchAlone(std::u16string_view chunk, std::size_t start, std::size_t end,
                                const MatchesAlone& matchesAlone);
    void gag(std::size_t start, std::size_t end);

    std::vector<bool> isGagged; ///< by the place of a unit; empty while nothing is gagged
};
