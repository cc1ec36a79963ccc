#pragma once

#include "ZNTOutputFonts.h"
#include "ZNTOutputRows.h"
#include "ZNTOutputStore.h"

#include <QtGlobal>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

/// The rows of a store at the width of the view: which text a row holds, how high it is, and where in it a
/// character stands. Sizes are in pixels.
class ZNTOutputLayout
{
public:
    using Position = ZNTOutputStore::Position;

    static constexpr int margin = 6;    ///< around the text
    static constexpr int ruleRoom = 9;  ///< above the row that a rule stands over
    static constexpr int ruleWidth = 2; ///< in the middle of that room

    struct Row {
        ZNTRowPlace place;
        Position start;
        std::u16string_view text;
        std::size_t offset; ///< in the line
        bool isLastOfLine;
        ZNTOutputStore::FontNumber font; ///< as of a line

        [[nodiscard]] Position end() const { return start + static_cast<Position>(text.size()); }
    };
    struct RowSize {
        int height; ///< with the room of a rule above
        int textHeight;
        int ascent; ///< of the text
    };

    /// Both outlive this.
    ZNTOutputLayout(const ZNTOutputStore& store, const ZNTOutputFonts& fonts) : store(store), fonts(fonts) {}

    /// The width for text.
    void setRoom(int width);
    [[nodiscard]] ZNTOutputRows& rows() { return rows_; }
    [[nodiscard]] const ZNTOutputRows& rows() const { return rows_; }

    /// A session begins with this line: a rule is drawn above it.
    void addRule(std::int64_t line);
    /// Of lines that the store no longer has.
    void dropOldRules();
    void forgetRules() { ruledLines.clear(); }
    [[nodiscard]] bool hasRule(std::int64_t line) const;

    // Rows
    [[nodiscard]] Row rowOf(Position position) const;
    [[nodiscard]] Row rowAtPlace(ZNTRowPlace place) const;
    /// `starts` are the line's rows, as znt::wrapLine found them.
    [[nodiscard]] static Row rowOfLine(const ZNTOutputStore::Line& line, std::int64_t number,
                                       const std::vector<std::uint32_t>& starts, std::size_t index);
    [[nodiscard]] RowSize sizeOf(const Row& row) const;
    [[nodiscard]] int heightOfRow(ZNTRowPlace place) const;
    [[nodiscard]] ZNTRowPlace lastRow() const;
    /// The highest row from which all down to `last` fit into `room`.
    [[nodiscard]] ZNTRowPlace highestAbove(ZNTRowPlace last, int room) const;
    /// At least 1. Below the end of the text, room is counted in rows of the present font.
    [[nodiscard]] int rowsThatFit(ZNTRowPlace from, int room) const;

    // Inside a row; x counts from its beginning
    [[nodiscard]] Position positionInRow(const Row& row, qreal x) const;
    [[nodiscard]] qreal xInRow(const Row& row, Position position) const;

    // From one piece of text to the next
    [[nodiscard]] Position nextCluster(Position position) const;
    [[nodiscard]] Position previousCluster(Position position) const;
    [[nodiscard]] Position nextWord(Position position) const;
    [[nodiscard]] Position previousWord(Position position) const;
    [[nodiscard]] std::pair<Position, Position> wordAround(Position position) const;
    /// With its line break.
    [[nodiscard]] std::pair<Position, Position> lineAround(Position position) const;

private:
    [[nodiscard]] int presentRowHeight() const { return fonts.face(store.defaultFont()).cellHeight(); }

    const ZNTOutputStore& store;
    const ZNTOutputFonts& fonts;
    ZNTOutputRows rows_{store};
    std::vector<std::int64_t> ruledLines; ///< sorted
};
