#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// Removes stretches of a text, or replaces them by shorter ones, in one pass from front to back. Each unit
/// that stays moves at most once. Until `finish`, only the text behind the last stretch is unchanged.
class ZNTTextCutter
{
public:
    /// The caller owns `text`, which outlives this. Nothing else may change it meanwhile.
    explicit ZNTTextCutter(std::u16string& text) : text(text) {}

    /// Offsets are those of the whole text. The stretch begins at or behind the end of the one before;
    /// `replacement` is no longer than it.
    void cut(std::size_t start, std::size_t end, std::u16string_view replacement = {})
    {
        keepUntil(start);
        replacement.copy(text.data() + written, replacement.size());
        written += replacement.size();
        kept = end;
    }

    void finish()
    {
        if (kept == 0)
            return;
        keepUntil(text.size());
        text.resize(written);
    }

private:
    void keepUntil(std::size_t end)
    {
        if (written != kept)
            std::u16string::traits_type::move(text.data() + written, text.data() + kept, end - kept);
        written += end - kept;
    }

    std::u16string& text;
    std::size_t written = 0; ///< end of the text that is finished
    std::size_t kept = 0;    ///< start of the text that was not looked at yet
};
