#include "ZNTConsoleTextView.h"

#include "ZNTColourTable.h"
#include "ZNTText.h"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

namespace
{

/// A prompt is at most a few lines; no more of an endless line needs to be known.
constexpr std::size_t longestLastLine = 1024;

constexpr bool isPlain(char16_t unit) { return unit >= 0x20 && unit < 0x7F; }

/// The parameters that show a colour: `first` is 30 for the foreground and 40 for the background. Named
/// colours are the terminal's own, which its player may have chosen.
std::string colourParameters(ZNTColour colour, int first, ZNTColourDepth depth)
{
    const auto& table = znt::colourTable;
    const auto nearest = znt::nearestColour(colour, 0, znt::namedColours);
    if (depth == ZNTColourDepth::Sixteen || table[nearest] == colour) {
        const bool isBright = nearest >= 8; // these are at 90 and 100
        return ";" + std::to_string(static_cast<std::size_t>(first) + nearest + (isBright ? 60 - 8 : 0));
    }
    const std::string extended = ";" + std::to_string(first + 8);
    if (depth == ZNTColourDepth::Numbered)
        return extended + ";5;" + std::to_string(znt::nearestColour(colour, znt::namedColours, table.size()));
    return extended + ";2;" + std::to_string(colour.red) + ";" + std::to_string(colour.green) + ";" +
           std::to_string(colour.blue);
}

/// The SGR codes of what a set has besides colours, in the order in which they are written.
struct StyleCode {
    std::string_view parameter;
    bool (*isOn)(const ZNTAttributeSet& set);
};
constexpr std::array styleCodes{
    StyleCode{";1", [](const ZNTAttributeSet& set) { return set.isShownBold(); }},
    StyleCode{";2", [](const ZNTAttributeSet& set) { return set.has(ZNTTextStyle::Faint); }},
    StyleCode{";3", [](const ZNTAttributeSet& set) { return set.has(ZNTTextStyle::Italic); }},
    StyleCode{";4", [](const ZNTAttributeSet& set) { return set.isShownUnderlined(); }},
    StyleCode{";5", [](const ZNTAttributeSet& set) { return set.has(ZNTTextStyle::Blink); }},
    StyleCode{";7", [](const ZNTAttributeSet& set) { return set.has(ZNTTextStyle::Reverse); }},
    StyleCode{";8", [](const ZNTAttributeSet& set) { return set.has(ZNTTextStyle::Conceal); }},
    StyleCode{";9", [](const ZNTAttributeSet& set) { return set.has(ZNTTextStyle::Strike); }},
};

/// The parameters of the one SGR sequence that shows a set, from a reset on.
std::string sgrParameters(const ZNTAttributeSet& set, ZNTColourDepth depth)
{
    std::string parameters = "0";
    for (const auto& code : styleCodes)
        if (code.isOn(set))
            parameters += code.parameter;
    // White and black are left to the terminal, which may be dark on light.
    if (const auto foreground = set.shownForeground(); foreground != znt::colours::white)
        parameters += colourParameters(foreground, 30, depth);
    if (const auto background = set.shownBackground(); background != znt::colours::black)
        parameters += colourParameters(background, 40, depth);
    return parameters;
}

} // namespace

ZNTColourDepth znt::colourDepth(std::string_view colorterm, std::string_view term)
{
    if (colorterm == "truecolor" || colorterm == "24bit")
        return ZNTColourDepth::Exact;
    return term.find("256color") != term.npos ? ZNTColourDepth::Numbered : ZNTColourDepth::Sixteen;
}

void ZNTConsoleTextView::append(const ZNTAttributedText& text)
{
    const std::u16string_view all = text.text;
    if (isOnScreen(all))
        return;
    if (colour == ZNTConsoleColour::Never || text.runs.empty()) {
        appendCharacters(all);
    } else {
        std::vector<std::string> parametersOfSets;
        for (const auto& set : text.sets)
            parametersOfSets.push_back(sgrParameters(set, depth));
        appendCharacters(all.substr(0, text.runs.front().offset));
        for (std::size_t run = 0; run < text.runs.size(); ++run) {
            const std::size_t start = text.runs[run].offset;
            const std::size_t end = run + 1 < text.runs.size() ? text.runs[run + 1].offset : all.size();
            appendSgr(parametersOfSets[text.runs[run].set]);
            appendCharacters(all.substr(start, end - start));
        }
        appendSgr("0");
    }
    flush();
    output.setUnfinishedLine(znt::utf8FromText(lastLine));
}

/// The line is read to its end all the same: a line feed of the game behind it may belong to that end.
bool ZNTConsoleTextView::isOnScreen(std::u16string_view text)
{
    const auto line = std::exchange(lineOnScreen, std::nullopt);
    if (!line || text.size() != line->size() + 1 || !text.starts_with(*line))
        return false;
    for (const auto unit : text)
        lineEnds.meaningOf(unit);
    lastLine.clear();
    output.setUnfinishedLine("");
    return true;
}

void ZNTConsoleTextView::appendCharacters(std::u16string_view characters)
{
    for (std::size_t at = 0; at < characters.size();) {
        const auto first = characters.begin() + static_cast<std::ptrdiff_t>(at);
        const auto last = std::find_if_not(first, characters.end(), isPlain);
        if (first != last && leadSurrogate == 0) { // most text: narrowed as it is
            const auto length = static_cast<std::size_t>(last - first);
            lineEnds.meaningOf(u' ');
            const auto end = pending.size();
            pending.resize(end + length);
            std::transform(first, last, pending.data() + end,
                           [](char16_t unit) { return static_cast<char>(unit); });
            if (lastLine.size() < longestLastLine)
                lastLine.append(characters.substr(at, std::min(length, longestLastLine)));
            at += length;
        } else {
            appendCharacter(characters[at++]);
        }
        flushIfLarge();
    }
}

void ZNTConsoleTextView::appendCharacter(char16_t unit)
{
    switch (lineEnds.meaningOf(unit)) {
    case ZNTLineEnds::Meaning::Nothing:
        return;
    case ZNTLineEnds::Meaning::LineBreak:
        leadSurrogate = 0;
        pending += '\n';
        lastLine.clear();
        return;
    case ZNTLineEnds::Meaning::Character:
        break;
    }
    std::u16string character;
    if (leadSurrogate != 0)
        character += std::exchange(leadSurrogate, char16_t{0});
    if (unit >= 0xD800 && unit <= 0xDBFF)
        leadSurrogate = unit;
    else
        character += unit;
    pending += znt::utf8FromText(character);
    if (lastLine.size() < longestLastLine)
        lastLine += character;
}

void ZNTConsoleTextView::appendSgr(std::string_view parameters)
{
    if (parameters == sgrInForce)
        return;
    pending.append("\x1b[").append(parameters).append("m");
    sgrInForce = parameters;
}

void ZNTConsoleTextView::flushIfLarge()
{
    if (pending.size() >= ZNTConsoleOutput::largestPiece)
        flush();
}

void ZNTConsoleTextView::flush()
{
    output.write(pending);
    pending.clear();
}
