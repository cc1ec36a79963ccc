#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

class ZNTOutputStore;

/// Completes the word before the caret, and takes the next word that fits when it is asked again. After the
/// last one, what the player has typed stands there again.
class ZNTWordCompletion
{
public:
    /// A line and the caret in it, in UTF-16 units.
    struct Typed {
        std::u16string text;
        std::size_t caret = 0;
        friend bool operator==(const Typed&, const Typed&) = default;
    };
    struct Completed {
        Typed line;
        std::u16string word;
    };
    /// Answers the words that fit, the best first.
    using Words = std::function<std::vector<std::u16string>(std::u16string_view beginning)>;

    /// `words` is asked again only if the line is not as the call before has left it. None if no word stands
    /// before the caret, or nothing completes it.
    std::optional<Completed> next(const Typed& typed, const Words& words);

private:
    Typed made; ///< by the call before
    Typed begun;
    std::size_t wordStart = 0;
    std::vector<std::u16string> candidates; ///< what was typed is the last one
    std::size_t chosen = 0;
};

namespace znt
{

inline constexpr std::int64_t linesToCompleteFrom = 500;
inline constexpr std::int64_t unitsToCompleteFrom = 0x10000;

/// The words of the last lines of the store, and after them `names`, that begin like `beginning` without
/// regard to case and go on; the newest first, each once. Reads no more than `unitsToCompleteFrom` units of
/// the store.
std::vector<std::u16string> wordsThatBegin(std::u16string_view beginning, const ZNTOutputStore& store,
                                           const std::vector<std::u16string>& names);

} // namespace znt
