#pragma once

#include "ZNTOutputLayout.h"

#include <cstdint>
#include <optional>
#include <vector>

class QWidget;

/// Which rows are on the screen: those that the player reads and, while these are not the end of the text,
/// the last rows in a pane of their own below them. The empty row that waits for more text is not among the
/// last ones.
///
/// While it follows the end, new text moves what is read. Else the first row stays where it is.
class ZNTOutputScroll
{
public:
    /// A part of the viewport with text.
    struct Pane {
        ZNTRowPlace top;
        int y;
        int height;
    };
    enum class Split { No, Yes };

    /// All of it outlives this. `mark` stands in the strip between the panes.
    ZNTOutputScroll(const ZNTOutputStore& store, const ZNTOutputFonts& fonts, const ZNTOutputLayout& layout,
                    const QWidget& viewport, const QWidget& mark)
        : store(store),
          fonts(fonts),
          layout(layout),
          viewport(viewport),
          mark(mark)
    {
    }

    [[nodiscard]] ZNTRowPlace top() const { return top_; }
    [[nodiscard]] bool isFollowing() const { return isFollowing_; }
    /// Lines that arrived below while the player was reading further up.
    [[nodiscard]] std::int64_t newLinesBelow() const;

    /// Shows `place` in the first row, or as near as the end allows; there it follows the end. Answers
    /// whether it began or ceased to follow.
    bool moveTo(ZNTRowPlace place);
    bool setFollowing(bool follows);
    /// After text came or went. `holdsStill` is for a player who selects with the mouse.
    void keepUp(bool holdsStill);
    /// After the lines were wrapped anew.
    void keepRowInItsLine();

    /// The last page begins here.
    [[nodiscard]] ZNTRowPlace topForEnd() const;
    [[nodiscard]] std::int64_t rowsOfLastPage() const;
    /// The page above begins here. What was its first row is the last one then.
    [[nodiscard]] ZNTRowPlace topOfPageAbove() const;
    /// The first row with which `place` is in sight; empty if it is in sight now.
    [[nodiscard]] std::optional<ZNTRowPlace> topToShow(ZNTRowPlace place) const;

    /// What is read first, then the last rows if they stand below it.
    [[nodiscard]] std::vector<Pane> panes() const;
    [[nodiscard]] int readingHeight() const { return readingHeight(isFollowing_ ? Split::No : Split::Yes); }
    [[nodiscard]] int stripHeight() const;
    /// That can be read at once, besides the last ones.
    [[nodiscard]] int visibleRows() const { return layout.rowsThatFit(top_, readingHeight()); }

private:
    [[nodiscard]] int rowHeight() const { return fonts.face(store.defaultFont()).cellHeight(); }
    [[nodiscard]] int textHeight() const;
    [[nodiscard]] ZNTRowPlace lastRowWithText() const;
    [[nodiscard]] int lastRowsShown() const;
    [[nodiscard]] int lastRowsHeight() const;
    [[nodiscard]] int readingHeight(Split split) const;

    const ZNTOutputStore& store;
    const ZNTOutputFonts& fonts;
    const ZNTOutputLayout& layout;
    const QWidget& viewport;
    const QWidget& mark;
    ZNTRowPlace top_;
    bool isFollowing_ = true;
    std::int64_t endLineSeen = 0; ///< the store's when the view stopped following
};
