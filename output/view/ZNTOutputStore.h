#pragma once

#include "ZNTAttributedText.h"
#include "ZNTCellWidth.h"
#include "ZNTOutputStyles.h"

#include <cstdint>
#include <deque>
#include <limits>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// Everything that a game has sent, compactly: UTF-16 in blocks of about 100 KB, four bytes a run of
/// attributes, four bytes a line, eight bytes a second with text. The cost of an append does not depend on
/// the length of the text, and text in the store never moves.
///
/// Line ends (CR LF, LF CR, LF, CR; the pair also in two appends) are each kept as one "\n". Other control
/// characters but TAB are left out. Positions (UTF-16 offsets) and line numbers count from the first text
/// that was ever appended, so neither changes when the oldest text is dropped.
///
/// A line of more than `longestLine` units goes on in another line without a break between, so that no
/// operation on a line depends on what a server sends.
class ZNTOutputStore
{
public:
    using Position = std::int64_t;
    using StyleNumber = ZNTOutputStyles::StyleNumber;
    using FontNumber = ZNTOutputStyles::FontNumber;

    static constexpr FontNumber severalFonts = std::numeric_limits<FontNumber>::max();
    static constexpr std::size_t mostFonts = ZNTOutputStyles::mostFonts;

    static constexpr std::size_t longestLine = 16384; ///< UTF-16 units; one more where a pair would be cut
    static constexpr std::size_t defaultMemoryLimit = std::size_t{512} << 20; ///< some four million lines

    /// A line of the text. The view is good until the store changes.
    struct Line {
        std::u16string_view text; ///< without its "\n"
        Position start;
        int columns; ///< its width unwrapped; very wide lines count as `columnsOfVeryWide`
        bool endsInBreak;
        FontNumber font; ///< of all its block; `severalFonts` where the runs have to be asked
        [[nodiscard]] Position end() const { return start + static_cast<Position>(text.size()); }
    };
    static constexpr int columnsOfVeryWide = 0x7FFF;

    /// A whole number of lines, stored together.
    struct BlockExtent {
        std::u16string_view text; ///< with the "\n"
        Position start;
        std::int64_t firstLine;
        std::int64_t lineCount;
    };

    ZNTOutputStore();
    ~ZNTOutputStore();
    ZNTOutputStore(const ZNTOutputStore&) = delete;
    ZNTOutputStore& operator=(const ZNTOutputStore&) = delete;

    /// `second` is when the text came, since 1970; 0 if nobody will ask.
    void append(const ZNTAttributedText& text, std::uint32_t second = 0);
    /// The next text begins a line of its own, without a line break in the text. Answers that line's number.
    std::int64_t startFreshLine();
    /// The font of text that names none. 12 points of Menlo until set.
    void setDefaultFont(const ZNTFont& font);
    [[nodiscard]] FontNumber defaultFont() const { return styles.defaultFont(); }
    /// By number; families without "-Bold".
    [[nodiscard]] const std::vector<ZNTFont>& fonts() const { return styles.fonts(); }
    /// The fonts from `from` to `to`, with the positions at which they begin. If there is no text, the font
    /// of the text before.
    [[nodiscard]] std::vector<std::pair<Position, FontNumber>> fontsIn(Position from, Position to) const;
    /// Drops everything. Positions and line numbers go on from their present values.
    void clear();

    /// Past this many bytes the oldest blocks are dropped, a block at a time; the newest always stays.
    void setMemoryLimit(std::size_t bytes);
    [[nodiscard]] std::size_t memoryInUse() const;

    /// The text that is there: [start, end).
    [[nodiscard]] Position start() const;
    [[nodiscard]] Position end() const;
    /// The lines that are there: [firstLine, endLine). There is always one, open at its end.
    [[nodiscard]] std::int64_t firstLine() const;
    [[nodiscard]] std::int64_t endLine() const;

    [[nodiscard]] Line line(std::int64_t number) const;
    /// The line that `position` is in; its "\n" belongs to it. Positions outside are brought inside.
    [[nodiscard]] std::int64_t lineAt(Position position) const;
    /// The text of [from, to), brought inside what is there.
    [[nodiscard]] std::u16string text(Position from, Position to) const;

    /// When the character at `position` came; at the end of the text, the one before it. 0 if not known.
    [[nodiscard]] std::uint32_t secondOf(Position position) const;

    /// Blocks are numbered like lines: from the first ever, [firstBlock, endBlock).
    [[nodiscard]] std::int64_t firstBlock() const { return droppedBlocks; }
    [[nodiscard]] std::int64_t endBlock() const;
    [[nodiscard]] BlockExtent block(std::int64_t number) const;
    /// The columns of a line, as `Line` has them, without looking for its block first.
    [[nodiscard]] int columnsInBlock(std::int64_t number, std::int64_t lineOfBlock) const;
    /// Of its first text; the default of an empty one.
    [[nodiscard]] FontNumber firstFontOfBlock(std::int64_t number) const;
    [[nodiscard]] std::int64_t blockOfLine(std::int64_t line) const;
    [[nodiscard]] std::int64_t blockAt(Position position) const;

    /// Calls `visit(from, to, style)` for each stretch of one style within [from, to), in order.
    template <typename Visit>
    void forEachRun(Position from, Position to, Visit visit) const;
    [[nodiscard]] const ZNTOutputStyle& style(StyleNumber number) const { return styles[number]; }

    /// The stretches of a block that show lines which the client sent, in order, with the "\n" behind them.
    [[nodiscard]] std::vector<std::pair<Position, Position>> sentTextOfBlock(std::int64_t number) const;

    /// Counts the columns of all lines afresh.
    void setAmbiguousWidth(znt::AmbiguousWidth width);
    [[nodiscard]] znt::AmbiguousWidth ambiguousWidth() const { return ambiguous; }

private:
    struct Run {
        std::uint16_t offset; // in the block
        StyleNumber style;
    };
    struct LineStart {
        std::uint16_t offset;  // in the block
        std::uint16_t columns; // the highest bit marks a line that goes on in the next without a break
    };
    struct Arrival {
        std::uint32_t second; // since 1970
        std::uint16_t offset; // in the block
    };
    struct Block;

    void noteArrival();
    void appendPlain(std::u16string_view text, StyleNumber style);
    void appendPiece(std::u16string_view text, StyleNumber style);
    void startLine();
    void startBlock();
    void dropOldBlocks();
    [[nodiscard]] Line lineOf(const Block& block, std::size_t index) const;
    [[nodiscard]] const Block& blockNumbered(std::int64_t number) const;
    [[nodiscard]] std::pair<Position, StyleNumber> runAt(Position position) const;

    std::deque<std::unique_ptr<Block>> blocks;
    std::int64_t droppedBlocks = 0;
    std::size_t closedMemory = 0; // of every block but the last
    std::size_t memoryLimit = defaultMemoryLimit;

    ZNTOutputStyles styles;
    std::uint32_t now = 0;      // the second of the present append
    char16_t breakJustMade = 0; // the CR or LF whose partner, coming next, belongs to the same break
    znt::AmbiguousWidth ambiguous = znt::AmbiguousWidth::Narrow;
};

template <typename Visit>
void ZNTOutputStore::forEachRun(Position from, Position to, Visit visit) const
{
    while (from < to) {
        const auto [end, style] = runAt(from);
        const auto until = end < to ? end : to;
        if (until <= from)
            return;
        visit(from, until, style);
        from = until;
    }
}
