#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

/// Finds how much of the received text can be shown without waiting for more: all up to the last line end, or
/// up to the mark that a server sends after a prompt (GA, RFC 854; EOR, RFC 885) if that comes later.
///
/// A CR at the very end may be half of CR LF. It waits, and so does the line that it ends, since the view,
/// the triggers and the log are to get the pair together. LF CR is a pair, too; its LF does not wait.
class ZNTReadyText
{
public:
    /// Begins a new connection.
    void start() { *this = {}; }
    /// A time of quiet has passed: what waited was shown.
    void noteQuiet() { doesTextWait = false; }

    /// How many UTF-16 units of `text` are ready, together with all that waits from before. 0: what waits is,
    /// and nothing else. None if nothing is to be shown. `endOfPrompt` is the place of the last mark.
    std::optional<std::size_t> readyUnits(std::u16string_view text, std::optional<std::size_t> endOfPrompt);

private:
    std::optional<std::size_t> endOfLines(std::u16string_view text);

    char16_t halfOfPair = 0; ///< the line end that stands last in the text so far, unless it completed a pair
    bool doesTextWait = false; ///< some of the text so far was not ready
};
