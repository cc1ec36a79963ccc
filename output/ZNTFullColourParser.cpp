#include "ZNTFullColourParser.h"

#include "ZNTSgrScanner.h"
#include "ZNTText.h"
#include "ZNTTextCutter.h"
#include "ZNTTextScan.h"

#include <algorithm>
#include <cstdint>
#include <unordered_map>
#include <utility>

namespace
{

/// Writes the runs of one text. A text has few different looks, so each becomes a set once.
class RunWriter
{
public:
    RunWriter(ZNTAttributedText& result, const ZNTFont& standing) : result(result), standing(standing) {}

    /// From `offset` on, behind all runs so far, text has this look.
    void showFrom(std::size_t offset, const ZNTGraphicRendition& rendition)
    {
        const auto key = rendition.key();
        if (!result.runs.empty() && key == lastKey)
            return;
        lastKey = key;
        const auto [known, isNew] =
            setsByKey.try_emplace(key, static_cast<std::uint32_t>(result.sets.size()));
        if (isNew)
            result.sets.push_back(rendition.attributes(standing));
        result.runs.push_back({static_cast<std::uint32_t>(offset), known->second});
    }

private:
    ZNTAttributedText& result;
    const ZNTFont& standing;
    std::unordered_map<std::uint64_t, std::uint32_t> setsByKey;
    std::uint64_t lastKey = 0;
};

/// Whether the parameters of a cursor position name the first row and column.
bool isFirstCell(std::u16string_view parameters)
{
    const auto column = std::min(parameters.find(u';'), parameters.size());
    return znt::integerValue(parameters.substr(0, column)) <= 1 &&
           znt::integerValue(parameters.substr(std::min(column + 1, parameters.size()))) <= 1;
}

} // namespace

void ZNTFullColourParser::reset()
{
    rendition = {};
    unfinished.clear();
    lastShown = u'\n';
    isAtHome = false;
}

ZNTAttributedText ZNTFullColourParser::attributedText(std::u16string text)
{
    if (!unfinished.empty())
        text.insert(0, std::exchange(unfinished, {}));
    ZNTAttributedText result;
    RunWriter runs(result, standing);
    // One pass writes the runs and closes the gaps that the sequences leave.
    ZNTTextCutter cutter(text);
    for (std::size_t from = 0, removed = 0; from < text.size();) {
        const auto start = std::min(znt::findUnit(text, znt::escape, from), text.size());
        if (start > from) {
            runs.showFrom(from - removed, rendition);
            lastShown = text[start - 1];
            isAtHome = false;
        }
        if (start == text.size())
            break;
        const auto sequence = znt::escapeSequenceAt(text, start);
        if (sequence.kind == znt::EscapeSequence::Kind::Unfinished)
            unfinished = text.substr(start);
        const bool isFreshLine = beginsFreshLine(sequence);
        if (isFreshLine) {
            runs.showFrom(start - removed, rendition);
            lastShown = u'\n';
        }
        cutter.cut(start, sequence.end, isFreshLine ? u"\n" : u"");
        removed += sequence.end - start - (isFreshLine ? 1 : 0);
        from = sequence.end;
    }
    cutter.finish();
    result.text = std::move(text);
    return result;
}

/// Carries out a sequence. True if it clears the screen and the line so far is not empty: what comes is then
/// shown on a line of its own, and nothing that was shown is lost.
bool ZNTFullColourParser::beginsFreshLine(const znt::EscapeSequence& sequence)
{
    if (sequence.kind != znt::EscapeSequence::Kind::Control)
        return false;
    switch (sequence.final) {
    case u'm':
        rendition.select(sequence.parameters);
        return false;
    case u'H': // cursor position
    case u'f':
        isAtHome = isFirstCell(sequence.parameters);
        return false;
    case u'J': { // erase: 0 below the cursor, 2 the screen, 3 what was scrolled away
        const auto what = znt::integerValue(sequence.parameters);
        const bool isWhole = what == 2 || what == 3 || (what == 0 && isAtHome);
        return isWhole && lastShown != u'\n' && lastShown != u'\r';
    }
    default:
        return false;
    }
}
