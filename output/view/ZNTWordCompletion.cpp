#include "ZNTWordCompletion.h"

#include "ZNTOutputStore.h"
#include "ZNTTextBreaks.h"

#include <algorithm>
#include <ranges>
#include <unicode/unistr.h>
#include <unordered_set>
#include <utility>

namespace
{

std::u16string folded(std::u16string_view text)
{
    icu::UnicodeString all(text.data(), static_cast<std::int32_t>(text.size()));
    all.foldCase();
    return {all.getBuffer(), static_cast<std::size_t>(all.length())};
}

/// The words that go on from one beginning, each in the spelling that was added first.
class Candidates
{
public:
    explicit Candidates(std::u16string_view beginning) : beginning(folded(beginning)) {}

    void add(std::u16string_view word)
    {
        auto same = folded(word);
        if (same.starts_with(beginning) && same != beginning && known.insert(std::move(same)).second)
            words.emplace_back(word);
    }

    std::vector<std::u16string> words;

private:
    const std::u16string beginning;
    std::unordered_set<std::u16string> known;
};

} // namespace

std::vector<std::u16string> znt::wordsThatBegin(std::u16string_view beginning, const ZNTOutputStore& store,
                                                const std::vector<std::u16string>& names)
{
    Candidates found(beginning);
    const auto firstLine = std::max(store.firstLine(), store.endLine() - linesToCompleteFrom);
    const auto from = std::max(store.line(firstLine).start, store.end() - znt::unitsToCompleteFrom);
    const auto text = store.text(from, store.end());
    std::vector<std::pair<std::size_t, std::size_t>> words;
    wordsIn(text, words);
    for (const auto& [start, end] : words | std::views::reverse)
        found.add(std::u16string_view(text).substr(start, end - start));
    for (const auto& name : names)
        found.add(name);
    return std::move(found.words);
}

std::optional<ZNTWordCompletion::Completed> ZNTWordCompletion::next(const Typed& typed, const Words& words)
{
    if (candidates.empty() || typed != made) {
        const auto before = std::u16string_view(typed.text).substr(0, typed.caret);
        wordStart = znt::startOfLastWord(before);
        candidates.clear();
        if (wordStart == before.size())
            return {};
        candidates = words(before.substr(wordStart));
        if (candidates.empty())
            return {};
        candidates.emplace_back(before.substr(wordStart));
        begun = typed;
        chosen = candidates.size() - 1;
    }
    chosen = (chosen + 1) % candidates.size();
    const auto& word = candidates[chosen];
    made = begun;
    made.text.replace(wordStart, begun.caret - wordStart, word);
    made.caret = wordStart + word.size();
    return Completed{made, word};
}
