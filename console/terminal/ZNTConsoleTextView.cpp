#include "ZNTConsoleTextView.h"

#include "ZNTText.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace
{

/// A prompt is at most a few lines; no more of an endless line needs to be known.
constexpr std::size_t longestLastLine = 1024;

constexpr bool isPlain(char16_t unit) { return unit >= 0x20 && unit < 0x7F; }

/// The offset from 30 (foreground) or 40 (background) of a colour in the terminal's palette.
int paletteOffset(ZNTColour colour)
{
    return (colour.red ? 1 : 0) | (colour.green ? 2 : 0) | (colour.blue ? 4 : 0);
}

/// The parameters of the one SGR sequence that shows a set, from a reset on.
std::string sgrParameters(const ZNTAttributeSet& set)
{
    std::string parameters = "0";
    if (set.isShownBold())
        parameters += ";1";
    if (set.isShownUnderlined())
        parameters += ";4";
    // White and black are left to the terminal, which may be dark on light.
    if (const auto foreground = set.shownForeground(); foreground != znt::colours::white)
        parameters += ";" + std::to_string(30 + paletteOffset(foreground));
    if (const auto background = set.shownBackground(); background != znt::colours::black)
        parameters += ";" + std::to_string(40 + paletteOffset(background));
    return parameters;
}

} // namespace

void ZNTConsoleTextView::append(const ZNTAttributedText& text)
{
    const std::u16string_view all = text.text;
    if (colour == ZNTConsoleColour::Never || text.runs.empty()) {
        appendCharacters(all);
    } else {
        std::vector<std::string> parametersOfSets;
        for (const auto& set : text.sets)
            parametersOfSets.push_back(sgrParameters(set));
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
