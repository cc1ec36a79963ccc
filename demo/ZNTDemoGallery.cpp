#include "ZNTDemoGallery.h"

#include "ZNTColourTable.h"
#include "ZNTDemoWords.h"
#include "ZNTText.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <set>
#include <string_view>

namespace
{

/// A picture runs through these colours from left to right.
using Stops = std::array<ZNTColour, 6>;
struct Picture {
    ZNTDemoPhrase words; ///< "%1" is the number of its shades
    Stops stops;
};
constexpr Picture pictures[] = {
    {ZNTDemoPhrase::GalleryRainbow,
     {{{255, 0, 0}, {255, 128, 0}, {255, 255, 0}, {0, 255, 0}, {0, 0, 255}, {160, 0, 255}}}},
    {ZNTDemoPhrase::GalleryDawn,
     {{{0, 0, 48}, {48, 0, 112}, {144, 32, 128}, {224, 80, 96}, {255, 176, 48}, {255, 240, 160}}}},
};
constexpr std::size_t widestPicture = 72; // columns

/// The sea: a wave, and Russian, Greek, Hebrew, Japanese, Vietnamese with combining accents, Thai. Their
/// countries are named by ZNTDemoPhrase::SailorsHomes, in this order.
constexpr std::u16string_view wave = u"\U0001F30A";
constexpr std::u16string_view seas[] = {u"море", u"θάλασσα", u"ים", u"海", u"bie\u0302\u0309n", u"ทะเล"};

ZNTColour colourAt(const Stops& stops, std::size_t column, std::size_t columns)
{
    const double place = static_cast<double>(column * (stops.size() - 1)) / static_cast<double>(columns - 1);
    const auto left = std::min(static_cast<std::size_t>(place), stops.size() - 2);
    const auto between = [&](std::uint8_t from, std::uint8_t to) {
        return static_cast<std::uint8_t>(std::lround(std::lerp(from, to, place - static_cast<double>(left))));
    };
    const auto& from = stops[left];
    const auto& to = stops[left + 1];
    return {between(from.red, to.red), between(from.green, to.green), between(from.blue, to.blue)};
}

/// SGR for a background (ECMA-48; ISO 8613-6 for more than eight colours).
std::u16string backgroundCode(ZNTColour colour, ZNTDemoColours colours)
{
    using znt::decimalText;
    constexpr std::size_t plainColours = 8;
    switch (colours) {
    case ZNTDemoColours::None:
        break;
    case ZNTDemoColours::Eight:
        return u"4" + decimalText(static_cast<int>(znt::nearestColour(colour, 0, plainColours)));
    case ZNTDemoColours::TwoHundredFiftySix:
        return u"48;5;" + decimalText(static_cast<int>(
                              znt::nearestColour(colour, znt::namedColours, znt::colourTable.size())));
    case ZNTDemoColours::True:
        return u"48;2;" + decimalText(colour.red) + u";" + decimalText(colour.green) + u";" +
               decimalText(colour.blue);
    }
    return {};
}

/// The words of the picture and a line of blanks with its colours, one sequence for each shade.
std::u16string pictureText(const Picture& picture, const ZNTDemoTexts& texts, const ZNTDemoScreen& screen)
{
    const auto columns = std::min(screen.columns, widestPicture);
    std::u16string line, shade;
    std::set<std::u16string> shades; // few colours come again further to the right
    for (std::size_t column = 0; column < columns; ++column) {
        auto next = backgroundCode(colourAt(picture.stops, column, columns), screen.colours);
        if (next != shade) {
            line += u"\x1b[" + next + u"m";
            shade = next;
            shades.insert(std::move(next));
        }
        line += u' ';
    }
    const auto words = znt::demo::filled(texts.phrase(picture.words),
                                         znt::decimalText(static_cast<std::int64_t>(shades.size())));
    return u"\n" + znt::demo::wrapped(words, screen.columns) + u"\n" + line + u"\x1b[0m";
}

std::u16string wordsForTheSea(const ZNTDemoTexts& texts)
{
    auto homes = texts.phrase(ZNTDemoPhrase::SailorsHomes);
    std::u16string words;
    for (const auto sea : seas) {
        words += words.empty() ? std::u16string_view() : texts.phrase(ZNTDemoPhrase::ListSeparator);
        words += sea;
        words.append(u" (").append(znt::demo::takeWord(homes)).append(u")");
    }
    return znt::demo::filled(texts.phrase(ZNTDemoPhrase::GallerySea), std::u16string(wave), words);
}

} // namespace

std::u16string znt::demo::galleryText(const ZNTDemoTexts& texts, const ZNTDemoScreen& screen)
{
    std::u16string text;
    const auto add = [&](std::u16string_view words) { text += u"\n" + wrapped(words, screen.columns); };
    if (screen.colours == ZNTDemoColours::None)
        add(texts.phrase(ZNTDemoPhrase::GalleryWithoutColours));
    else
        for (const auto& picture : pictures)
            text += pictureText(picture, texts, screen);
    if (screen.colours == ZNTDemoColours::Eight)
        add(texts.phrase(ZNTDemoPhrase::GalleryHasMore));
    if (screen.hasEveryCharacter)
        add(wordsForTheSea(texts));
    else
        add(texts.phrase(ZNTDemoPhrase::GalleryWithoutSea));
    return text;
}
