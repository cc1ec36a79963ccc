#pragma once

#include "ZNTText.h"

#include <optional>
#include <string>
#include <string_view>
#include <utility>

/// What came in since text was last shown. It waits for the go-ahead or the silence that releases it.
class ZNTHeldBackText
{
public:
    /// Whether spaces and tabs at the ends of a block that is held back stay.
    enum class Blanks { Trimmed, Kept };

    struct Released {
        std::u16string text;  ///< everything held back, in order and with nothing between
        bool isFlood = false; ///< released because of its length alone
    };
    /// UTF-16 units that may be held back. Past it they are released as after a silence, so that a server
    /// that never pauses cannot fill the memory.
    static constexpr std::size_t mostHeldBack = std::size_t{8} << 20;

    void setBlanks(Blanks wanted) { blanks = wanted; }

    /// Takes one block. If it releases, the result is what was held back, then the first `ready` units of the
    /// block as they stand; the rest of it is held back. If not, all of it is held back. None if nothing is
    /// to be shown now: a silence with nothing held back is no chunk, which triggers could match.
    std::optional<Released> take(std::u16string_view block, bool isRelease, std::size_t ready)
    {
        if (!isRelease) {
            add(block);
            if (size() <= mostHeldBack)
                return std::nullopt;
            return Released{releasedWith({}), /*isFlood=*/true};
        }
        if (block.empty() && empty())
            return std::nullopt;
        Released released{releasedWith(block.substr(0, ready)), /*isFlood=*/false};
        if (ready < block.size())
            add(block.substr(ready));
        return released;
    }

    /// Adds a block. If blanks are trimmed, line ends stay, and wide and no-break spaces too: those belong to
    /// the layout of Chinese text.
    void add(std::u16string_view block)
    {
        joined += blanks == Blanks::Trimmed ? znt::trimmedOfSpacesAndTabs(block) : block;
        hasBlocks = true;
    }

    /// True if no block waits. A block that trimming left empty still counts.
    [[nodiscard]] bool empty() const { return !hasBlocks; }
    /// UTF-16 units.
    [[nodiscard]] std::size_t size() const { return joined.size(); }

    /// Everything held back, in order and with nothing between, then `last` as it stands. Nothing is left.
    std::u16string releasedWith(std::u16string_view last)
    {
        std::u16string text = std::move(joined);
        joined.clear();
        hasBlocks = false;
        text += last;
        return text;
    }

    /// Holds back in the memory of a text that was released, if there is more of it: a flood takes and gives
    /// back tens of megabytes at each release, and new ones from the system cost more than processing them.
    void reuse(std::u16string&& released)
    {
        if (hasBlocks || released.capacity() <= joined.capacity())
            return;
        joined = std::move(released);
        joined.clear();
    }

private:
    Blanks blanks = Blanks::Trimmed;
    std::u16string joined;
    bool hasBlocks = false;
};
