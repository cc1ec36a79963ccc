#pragma once

#include "ZNTScreenElements.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

class ZNTMudListArrayController;

/// Those games of the list that match what the player typed, as a table of their own.
///
/// It stands between the list's controllers and the table on the screen. The screen's rows are those that are
/// shown. The controllers are given this table, so the row that they take for selected is the list's row of
/// the game that the player sees.
class ZNTFilteredGames final : public ZNTTableView
{
public:
    /// Both outlive this. `screen` asks this for its rows.
    ZNTFilteredGames(const ZNTMudListArrayController& games, ZNTTableView& screen);

    /// Shows the games that have each word of `text` in their name, address or port; case does not count.
    /// Without a word all games are shown.
    void setFilter(std::u16string_view text);

    [[nodiscard]] long numberOfShownRows() const { return static_cast<long>(shown.size()); }
    /// The list's row of a row that is shown; -1 if there is none.
    [[nodiscard]] long listRow(long shownRow) const;
    /// The place of a row of the list among those that are shown; -1 if it is not shown.
    [[nodiscard]] long shownRow(long listRow) const;

    /// A game that was edited stays in its place, even if it does not match any more. It would vanish from
    /// under the player's hands. When games have come or gone, the filter is applied again.
    void reloadData() override;
    [[nodiscard]] long selectedRow() const override { return listRow(screen.selectedRow()); }
    void abortEditing() override { screen.abortEditing(); }
    void scrollToEndOfTable() override { screen.scrollToEndOfTable(); }

private:
    [[nodiscard]] bool isMatch(long listRow) const;
    [[nodiscard]] std::vector<std::int64_t> keysOfGames() const;
    void apply();

    const ZNTMudListArrayController& games;
    ZNTTableView& screen;
    std::vector<std::u16string> words; ///< of the filter, folded
    std::vector<long> shown;           ///< rows of the list, in its order
    std::vector<std::int64_t> keys;    ///< of the whole list, when the filter was last applied
};
