#include "ZNTFilteredGames.h"

#include "ZNTMudListArrayController.h"
#include "ZNTText.h"

#include <algorithm>
#include <unicode/uchar.h>
#include <unicode/utf16.h>

namespace
{

/// Unit by unit, which is enough for names: no letter becomes two.
std::u16string foldedText(std::u16string_view text)
{
    std::u16string folded(text);
    for (char16_t& unit : folded)
        if (!U16_IS_SURROGATE(unit))
            unit = static_cast<char16_t>(u_foldCase(unit, U_FOLD_CASE_DEFAULT));
    return folded;
}

std::vector<std::u16string> wordsIn(std::u16string_view text)
{
    std::vector<std::u16string> words;
    std::u16string word;
    for (const char16_t unit : foldedText(text)) {
        if (!u_isUWhiteSpace(unit)) {
            word.push_back(unit);
        } else if (!word.empty()) {
            words.push_back(word);
            word.clear();
        }
    }
    if (!word.empty())
        words.push_back(word);
    return words;
}

} // namespace

ZNTFilteredGames::ZNTFilteredGames(const ZNTMudListArrayController& games, ZNTTableView& screen)
    : games(games),
      screen(screen)
{
    apply();
}

void ZNTFilteredGames::setFilter(std::u16string_view text)
{
    words = wordsIn(text);
    apply();
    screen.reloadData();
}

long ZNTFilteredGames::listRow(long shownRow) const
{
    return shownRow >= 0 && shownRow < numberOfShownRows() ? shown[static_cast<std::size_t>(shownRow)] : -1;
}

long ZNTFilteredGames::shownRow(long listRow) const
{
    const auto found = std::ranges::lower_bound(shown, listRow);
    return found != shown.end() && *found == listRow ? found - shown.begin() : -1;
}

void ZNTFilteredGames::reloadData()
{
    if (keysOfGames() != keys)
        apply();
    screen.reloadData();
}

bool ZNTFilteredGames::isMatch(long listRow) const
{
    const ZNTMudList& game = *games.objectAtIndex(listRow);
    // The line end keeps a word from matching across two of them.
    const auto text = foldedText(game.name + u'\n' + game.telnetURL + u'\n' + znt::decimalText(game.port));
    return std::ranges::all_of(words, [&](const auto& word) { return znt::contains(text, word); });
}

std::vector<std::int64_t> ZNTFilteredGames::keysOfGames() const
{
    std::vector<std::int64_t> present;
    for (long row = 0; row < games.numberOfRowsInTableView(); ++row)
        present.push_back(games.objectAtIndex(row)->oid);
    return present;
}

void ZNTFilteredGames::apply()
{
    keys = keysOfGames();
    shown.clear();
    for (long row = 0; row < games.numberOfRowsInTableView(); ++row)
        if (isMatch(row))
            shown.push_back(row);
}
