#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// Takes stretches out of a text, or puts shorter ones in their place, in one pass from front to back: what
/// stays moves once. Until `finish` only what lies behind the last stretch is as it was.
class ZNTTextCutter
{
public:
    /// The caller owns `text`, which outlives this and is changed by nobody else meanwhile.
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
    std::size_t written = 0; ///< where what is kept ends
    std::size_t kept = 0;    ///< where what is not looked at yet begins
};
