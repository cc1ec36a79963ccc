#include "ZNTSentLines.h"

#include "ZNTOutputStore.h"

#include <ranges>
#include <string_view>
#include <unordered_set>

namespace
{

/// Lines in the order in which they are added, each once.
struct SentLines {
    std::vector<std::u16string> lines;
    std::unordered_set<std::u16string> known;

    void add(std::u16string_view line)
    {
        if (!line.empty() && known.emplace(line).second)
            lines.emplace_back(line);
    }
};

/// Several lines stand in one stretch if nothing came from the game between them.
void addLinesOf(std::u16string_view text, std::size_t most, SentLines& found)
{
    while (!text.empty() && found.lines.size() < most) {
        const auto lineBreak = text.find_last_of(u'\n');
        const auto start = lineBreak == text.npos ? 0 : lineBreak + 1;
        found.add(text.substr(start));
        text = text.substr(0, start == 0 ? 0 : lineBreak);
    }
}

} // namespace

std::vector<std::u16string> znt::newestSentLines(const ZNTOutputStore& store, std::size_t most)
{
    SentLines found;
    for (auto number = store.endBlock(); number-- > store.firstBlock() && found.lines.size() < most;) {
        const auto block = store.block(number);
        for (const auto& [start, end] : store.sentTextOfBlock(number) | std::views::reverse)
            addLinesOf(block.text.substr(static_cast<std::size_t>(start - block.start),
                                         static_cast<std::size_t>(end - start)),
                       most, found);
    }
    return std::move(found.lines);
}
