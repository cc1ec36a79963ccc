#include "ZNTOutputStore.h"

#include <algorithm>
#include <optional>
#include <unicode/utf16.h>
#include <utility>

namespace
{

constexpr std::uint16_t goesOn = 0x8000;
constexpr std::size_t largestBlock = 0xFFFF; // units, so that offsets take two bytes
/// A line begins only where the longest one still fits, its pair and its "\n" included.
constexpr std::size_t lastLineStart = largestBlock - ZNTOutputStore::longestLine - 2;

constexpr bool isControl(char16_t unit) { return unit < 0x20 || (unit >= 0x7F && unit < 0xA0); }

int columnsAfter(std::u16string_view text, int columns, znt::AmbiguousWidth ambiguous)
{
    for (std::size_t at = 0; at < text.size() && columns < ZNTOutputStore::columnsOfVeryWide;) {
        if (text[at] == u'\t') {
            columns += znt::tabStop - columns % znt::tabStop;
            ++at;
        } else if (text[at] < 0xA1) {
            ++columns;
            ++at;
        } else {
            UChar32 character = 0;
            U16_NEXT(text.data(), at, text.size(), character);
            columns += znt::cellWidth(static_cast<char32_t>(character), ambiguous);
        }
    }
    return std::min(columns, ZNTOutputStore::columnsOfVeryWide);
}

} // namespace

struct ZNTOutputStore::Block {
    Position start = 0;
    std::int64_t firstLine = 0;
    std::u16string text;
    std::vector<LineStart> lines;
    std::vector<Run> runs;
    std::vector<Arrival> arrivals;       ///< where the text of another second begins
    std::optional<FontNumber> firstFont; ///< of its text
    bool hasSeveralFonts = false;

    [[nodiscard]] Position end() const { return start + static_cast<Position>(text.size()); }
    [[nodiscard]] std::int64_t endLine() const { return firstLine + static_cast<std::int64_t>(lines.size()); }
    [[nodiscard]] std::size_t memory() const
    {
        return sizeof(Block) + text.capacity() * sizeof(char16_t) + lines.capacity() * sizeof(LineStart) +
               runs.capacity() * sizeof(Run) + arrivals.capacity() * sizeof(Arrival);
    }
    void trim()
    {
        text.shrink_to_fit();
        lines.shrink_to_fit();
        runs.shrink_to_fit();
        arrivals.shrink_to_fit();
    }
};

ZNTOutputStore::ZNTOutputStore() { startBlock(); }

ZNTOutputStore::~ZNTOutputStore() = default;

void ZNTOutputStore::append(const ZNTAttributedText& text, std::uint32_t second)
{
    now = second;
    noteArrival();
    constexpr auto unknown = std::numeric_limits<StyleNumber>::max();
    std::vector<StyleNumber> numbers(text.sets.size(), unknown);
    const std::u16string_view all = text.text;
    std::size_t from = 0;
    StyleNumber style = text.isSentLine ? styles.numberFor({}, true) : styles.plain();
    for (const auto& run : text.runs) {
        const auto to = std::min<std::size_t>(run.offset, all.size());
        if (to > from)
            appendPlain(all.substr(from, to - from), style);
        from = std::max(from, to);
        auto& number = numbers[run.set];
        if (number == unknown)
            number = styles.numberFor(text.sets[run.set], text.isSentLine);
        style = number;
    }
    appendPlain(all.substr(from), style);
    dropOldBlocks();
}

/// What is added to the last block from here on came now.
void ZNTOutputStore::noteArrival()
{
    auto& block = *blocks.back();
    const auto offset = static_cast<std::uint16_t>(block.text.size());
    if (!block.arrivals.empty() && block.arrivals.back().offset == offset)
        block.arrivals.back().second = now; // an append without text
    else if (block.arrivals.empty() || block.arrivals.back().second != now)
        block.arrivals.push_back({now, offset});
}

std::uint32_t ZNTOutputStore::secondOf(Position position) const
{
    if (start() == end())
        return 0;
    const auto inside = std::clamp(position, start(), end() - 1);
    const auto& block = blockNumbered(blockAt(inside));
    const auto after =
        std::upper_bound(block.arrivals.begin(), block.arrivals.end(), inside - block.start,
                         [](Position wanted, const Arrival& candidate) { return wanted < candidate.offset; });
    return after == block.arrivals.begin() ? 0 : std::prev(after)->second;
}

void ZNTOutputStore::setDefaultFont(const ZNTFont& font) { styles.setDefaultFont(font); }

std::int64_t ZNTOutputStore::startFreshLine()
{
    auto& open = blocks.back()->lines.back();
    breakJustMade = 0;
    if (blocks.back()->text.size() > open.offset) {
        open.columns |= goesOn;
        startLine();
    }
    return endLine() - 1;
}

void ZNTOutputStore::clear()
{
    const auto position = end();
    const auto lineNumber = endLine();
    droppedBlocks = endBlock();
    blocks.clear();
    closedMemory = 0;
    startBlock();
    blocks.back()->start = position;
    blocks.back()->firstLine = lineNumber;
}

/// Cuts at what the text view leaves out and at line ends.
void ZNTOutputStore::appendPlain(std::u16string_view text, StyleNumber style)
{
    for (std::size_t from = 0; from < text.size();) {
        auto to = from;
        while (to < text.size() && (!isControl(text[to]) || text[to] == u'\t'))
            ++to;
        if (to > from) {
            breakJustMade = 0;
            appendPiece(text.substr(from, to - from), style);
        }
        if (to == text.size())
            return;
        const char16_t control = text[to];
        from = to + 1;
        const bool isLineEnd = control == u'\r' || control == u'\n';
        if (isLineEnd && breakJustMade != 0 && breakJustMade != control) {
            breakJustMade = 0;
            continue;
        }
        breakJustMade = isLineEnd ? control : u'\0';
        if (isLineEnd) {
            blocks.back()->text.push_back(u'\n');
            startLine();
        }
    }
}

/// Adds to the open line, and begins further lines if that grows too long.
void ZNTOutputStore::appendPiece(std::u16string_view text, StyleNumber style)
{
    while (!text.empty()) {
        auto* block = blocks.back().get();
        const auto length = block->text.size() - block->lines.back().offset;
        if (length >= longestLine &&
            !(length == longestLine && U16_IS_TRAIL(text.front()) && U16_IS_LEAD(block->text.back()))) {
            block->lines.back().columns |= goesOn;
            startLine();
            continue;
        }
        const auto taken = std::min(text.size(), length < longestLine ? longestLine - length : 1);
        if (block->runs.empty() || block->runs.back().style != style) {
            block->runs.push_back({static_cast<std::uint16_t>(block->text.size()), style});
            const auto font = styles[style].font;
            block->hasSeveralFonts |= block->firstFont.value_or(font) != font;
            block->firstFont = block->firstFont.value_or(font);
        }
        const auto piece = text.substr(0, taken);
        auto& columns = block->lines.back().columns;
        columns = static_cast<std::uint16_t>(columnsAfter(piece, columns, ambiguous));
        block->text.append(piece);
        text.remove_prefix(taken);
    }
}

void ZNTOutputStore::startLine()
{
    auto& block = *blocks.back();
    if (block.text.size() > lastLineStart)
        startBlock();
    else
        block.lines.push_back({static_cast<std::uint16_t>(block.text.size()), 0});
}

void ZNTOutputStore::startBlock()
{
    auto block = std::make_unique<Block>();
    if (!blocks.empty()) {
        block->start = end();
        block->firstLine = endLine();
        blocks.back()->trim();
        closedMemory += blocks.back()->memory();
    }
    block->lines.push_back({0, 0});
    blocks.push_back(std::move(block));
    noteArrival();
}

void ZNTOutputStore::dropOldBlocks()
{
    while (blocks.size() > 1 && memoryInUse() > memoryLimit) {
        closedMemory -= blocks.front()->memory();
        blocks.pop_front();
        ++droppedBlocks;
    }
}

void ZNTOutputStore::setMemoryLimit(std::size_t bytes)
{
    memoryLimit = bytes;
    dropOldBlocks();
}

std::size_t ZNTOutputStore::memoryInUse() const { return closedMemory + blocks.back()->memory(); }

ZNTOutputStore::Position ZNTOutputStore::start() const { return blocks.front()->start; }
ZNTOutputStore::Position ZNTOutputStore::end() const { return blocks.back()->end(); }
std::int64_t ZNTOutputStore::firstLine() const { return blocks.front()->firstLine; }
std::int64_t ZNTOutputStore::endLine() const { return blocks.back()->endLine(); }
std::int64_t ZNTOutputStore::endBlock() const
{
    return droppedBlocks + static_cast<std::int64_t>(blocks.size());
}

const ZNTOutputStore::Block& ZNTOutputStore::blockNumbered(std::int64_t number) const
{
    return *blocks[static_cast<std::size_t>(number - droppedBlocks)];
}

ZNTOutputStore::BlockExtent ZNTOutputStore::block(std::int64_t number) const
{
    const auto& found = blockNumbered(number);
    return {found.text, found.start, found.firstLine, static_cast<std::int64_t>(found.lines.size())};
}

int ZNTOutputStore::columnsInBlock(std::int64_t number, std::int64_t lineOfBlock) const
{
    return blockNumbered(number).lines[static_cast<std::size_t>(lineOfBlock)].columns & ~goesOn;
}

std::int64_t ZNTOutputStore::blockOfLine(std::int64_t line) const
{
    const auto after = std::upper_bound(
        blocks.begin() + 1, blocks.end(), line,
        [](std::int64_t wanted, const auto& candidate) { return wanted < candidate->firstLine; });
    return droppedBlocks + (after - blocks.begin()) - 1;
}

std::int64_t ZNTOutputStore::blockAt(Position position) const
{
    const auto after =
        std::upper_bound(blocks.begin() + 1, blocks.end(), position,
                         [](Position wanted, const auto& candidate) { return wanted < candidate->start; });
    return droppedBlocks + (after - blocks.begin()) - 1;
}

ZNTOutputStore::Line ZNTOutputStore::lineOf(const Block& block, std::size_t index) const
{
    const auto& entry = block.lines[index];
    const bool isLast = index + 1 == block.lines.size();
    const std::size_t end = isLast ? block.text.size() : block.lines[index + 1].offset;
    auto text = std::u16string_view(block.text).substr(entry.offset, end - entry.offset);
    const bool endsInBreak = text.ends_with(u'\n');
    if (endsInBreak)
        text.remove_suffix(1);
    const auto font = block.hasSeveralFonts ? severalFonts : block.firstFont.value_or(defaultFont());
    return {text, block.start + entry.offset, entry.columns & ~goesOn, endsInBreak, font};
}

ZNTOutputStore::Line ZNTOutputStore::line(std::int64_t number) const
{
    const auto inside = std::clamp(number, firstLine(), endLine() - 1);
    const auto& block = blockNumbered(blockOfLine(inside));
    return lineOf(block, static_cast<std::size_t>(inside - block.firstLine));
}

std::int64_t ZNTOutputStore::lineAt(Position position) const
{
    const auto inside = std::clamp(position, start(), end());
    const auto& block = blockNumbered(blockAt(inside));
    const auto after = std::upper_bound(
        block.lines.begin() + 1, block.lines.end(), inside - block.start,
        [](Position wanted, const LineStart& candidate) { return wanted < candidate.offset; });
    return block.firstLine + (after - block.lines.begin()) - 1;
}

std::u16string ZNTOutputStore::text(Position from, Position to) const
{
    from = std::max(from, start());
    to = std::min(to, end());
    std::u16string all;
    if (from >= to)
        return all;
    all.reserve(static_cast<std::size_t>(to - from));
    for (auto number = blockAt(from); number < endBlock(); ++number) {
        const auto& block = blockNumbered(number);
        if (block.start >= to)
            break;
        const auto begin = std::max(from, block.start) - block.start;
        const auto end = std::min(to, block.end()) - block.start;
        all.append(block.text, static_cast<std::size_t>(begin), static_cast<std::size_t>(end - begin));
    }
    return all;
}

/// The end and the style of the run at `position`. A "\n" is part of the run before it.
std::pair<ZNTOutputStore::Position, ZNTOutputStore::StyleNumber>
ZNTOutputStore::runAt(Position position) const
{
    const auto& block = blockNumbered(blockAt(position));
    const auto after =
        std::upper_bound(block.runs.begin(), block.runs.end(), position - block.start,
                         [](Position wanted, const Run& candidate) { return wanted < candidate.offset; });
    const auto end = after == block.runs.end() ? block.end() : block.start + after->offset;
    return {end, after == block.runs.begin() ? StyleNumber{0} : std::prev(after)->style};
}

std::vector<std::pair<ZNTOutputStore::Position, ZNTOutputStore::FontNumber>>
ZNTOutputStore::fontsIn(Position from, Position to) const
{
    std::vector<std::pair<Position, FontNumber>> found;
    forEachRun(from, to, [&](Position begin, Position, StyleNumber number) {
        if (found.empty() || found.back().second != styles[number].font)
            found.emplace_back(begin, styles[number].font);
    });
    if (found.empty()) {
        const auto& block = blockNumbered(blockAt(from));
        found.emplace_back(from, block.runs.empty() ? defaultFont() : styles[runAt(from).second].font);
    }
    return found;
}

std::vector<std::pair<ZNTOutputStore::Position, ZNTOutputStore::Position>>
ZNTOutputStore::sentTextOfBlock(std::int64_t number) const
{
    const auto& block = blockNumbered(number);
    std::vector<std::pair<Position, Position>> found;
    for (std::size_t index = 0; index < block.runs.size(); ++index) {
        if (!styles[block.runs[index].style].isSentLine)
            continue;
        const bool isLast = index + 1 == block.runs.size();
        const auto start = block.start + block.runs[index].offset;
        const auto end = isLast ? block.end() : block.start + block.runs[index + 1].offset;
        if (!found.empty() && found.back().second == start)
            found.back().second = end; // a line that changes its colours
        else
            found.emplace_back(start, end);
    }
    return found;
}

ZNTOutputStore::FontNumber ZNTOutputStore::firstFontOfBlock(std::int64_t number) const
{
    return blockNumbered(number).firstFont.value_or(defaultFont());
}

void ZNTOutputStore::setAmbiguousWidth(znt::AmbiguousWidth width)
{
    if (ambiguous == width)
        return;
    ambiguous = width;
    for (const auto& block : blocks)
        for (std::size_t index = 0; index < block->lines.size(); ++index) {
            auto& columns = block->lines[index].columns;
            columns = static_cast<std::uint16_t>((columns & goesOn) |
                                                 columnsAfter(lineOf(*block, index).text, 0, ambiguous));
        }
}
