#include "ZNTSpeechReview.h"

#include "ZNTLetterNames.h"
#include "ZNTSpeechSynth.h"
#include "ZNTText.h"

#include <algorithm>
#include <unicode/uchar.h>
#include <unicode/ustring.h>
#include <utility>

namespace
{

/// Text as it is compared without regard to case; empty if it is too long for ICU.
std::u16string foldedText(std::u16string_view text)
{
    constexpr std::size_t mostUnitsOfOne = 3; // of a folded character, by Unicode's CaseFolding.txt
    std::u16string folded(text.size() * mostUnitsOfOne, u'\0');
    UErrorCode status = U_ZERO_ERROR;
    const auto length = u_strFoldCase(folded.data(), static_cast<std::int32_t>(folded.size()), text.data(),
                                      static_cast<std::int32_t>(text.size()), U_FOLD_CASE_DEFAULT, &status);
    folded.resize(U_SUCCESS(status) ? static_cast<std::size_t>(length) : 0);
    return folded;
}

} // namespace

void ZNTSpeechReview::addReceivedText(std::u16string_view plainText)
{
    plainText = znt::lastUnits(plainText, mostUnsplit);
    if (plainText.empty())
        return;
    unsplit.emplace_back(plainText);
    unsplitUnits += plainText.size();
    while (unsplitUnits > mostUnsplit) {
        unsplitUnits -= unsplit.front().size();
        unsplit.pop_front();
    }
}

void ZNTSpeechReview::splitWhatCameIn()
{
    for (const auto& chunk : unsplit)
        keepLinesOf(chunk);
    unsplit.clear();
    unsplitUnits = 0;
}

void ZNTSpeechReview::keepLinesOf(std::u16string_view chunk)
{
    std::deque<std::u16string> added;
    while (!chunk.empty() && added.size() < mostLines) {
        const auto lineEnd = chunk.find_last_of(u"\r\n");
        const auto start = lineEnd == chunk.npos ? 0 : lineEnd + 1;
        const auto line = znt::trimmedOfWhitespace(chunk.substr(start));
        if (!line.empty())
            added.emplace_front(line.substr(0, longestLine));
        chunk = chunk.substr(0, start == 0 ? 0 : start - 1);
    }
    linesEver += added.size();
    for (auto& line : added)
        kept.push_back(std::move(line));
    if (place > 0)
        place = std::min(place + added.size(), mostLines);
    while (kept.size() > mostLines)
        kept.pop_front();
}

bool ZNTSpeechReview::isEmpty()
{
    splitWhatCameIn();
    return kept.empty() && !isAtCommand;
}

void ZNTSpeechReview::previousLine()
{
    splitWhatCameIn();
    goTo(isAtCommand ? place : place + 1);
    speakLineAtPlace();
}

void ZNTSpeechReview::nextLine()
{
    splitWhatCameIn();
    if (isAtCommand && place == 1) {
        synth.speakAtOnce(u"No answer yet");
        return;
    }
    goTo(place > 1 ? place - 1 : 1);
    speakLineAtPlace();
}

void ZNTSpeechReview::lineFromEnd(std::size_t number)
{
    splitWhatCameIn();
    goTo(std::max<std::size_t>(number, 1));
    speakLineAtPlace();
}

void ZNTSpeechReview::lastLines(std::size_t count)
{
    splitWhatCameIn();
    count = std::min(count, kept.size());
    for (std::size_t number = 1; number <= count; ++number) {
        const auto& line = kept[kept.size() - number];
        if (number == 1)
            synth.speakAtOnce(line);
        else
            synth.speakNext(line);
    }
}

void ZNTSpeechReview::goTo(std::size_t newPlace)
{
    place = newPlace;
    isAtCommand = hasCursor = false;
}

/// 1 is the newest; there are as many.
const std::u16string& ZNTSpeechReview::lineAt(std::size_t number) const { return kept[kept.size() - number]; }

void ZNTSpeechReview::speakLineAtPlace()
{
    place = std::min(place, kept.size());
    if (place > 0)
        synth.speakAtOnce(lineAt(place));
}

void ZNTSpeechReview::speakPart(ZNTLineCursor::Unit unit, ZNTLineCursor::Way way)
{
    splitWhatCameIn();
    if (kept.empty() && !isAtCommand)
        return;
    if (!std::exchange(hasCursor, true)) {
        place = std::clamp<std::size_t>(place, 1, kept.size());
        cursor.setLine(lineAt(place));
    }
    const auto part = cursor.move(unit, way);
    if (part.empty())
        synth.speakAtOnce(u"No words");
    else
        synth.speakAtOnce(unit == ZNTLineCursor::Unit::Word ? std::u16string(part) : znt::spokenLetter(part));
}

void ZNTSpeechReview::find(std::u16string_view text)
{
    wanted = text.substr(0, longestLine);
    foldedWanted = foldedText(wanted);
    splitWhatCameIn();
    findFrom(1, 1);
}

void ZNTSpeechReview::findOlder()
{
    splitWhatCameIn();
    findFrom(isAtCommand ? place : place + 1, 1);
}

void ZNTSpeechReview::findNewer()
{
    splitWhatCameIn();
    findFrom(place - 1, -1); // nothing is newer than the start, 0
}

/// Looks at the line with that number, then at those before it (step 1) or after it (-1). The number past the
/// last line, and that before the first, are no lines.
void ZNTSpeechReview::findFrom(std::size_t number, int step)
{
    for (; !foldedWanted.empty() && number >= 1 && number <= kept.size();
         number += static_cast<std::size_t>(step)) {
        if (!isFoundIn(lineAt(number)))
            continue;
        goTo(number);
        synth.speakAtOnce(placeAmongFound() + u", " + lineAt(number));
        return;
    }
    synth.speakAtOnce(u"Not found: " + wanted);
}

bool ZNTSpeechReview::isFoundIn(const std::u16string& line) const
{
    return foldedText(line).find(foldedWanted) != std::u16string::npos;
}

std::u16string ZNTSpeechReview::placeAmongFound() const
{
    std::int64_t older = 0, all = 0;
    for (std::size_t number = kept.size(); number >= 1; --number) {
        const bool isFound = isFoundIn(lineAt(number));
        all += isFound ? 1 : 0;
        older += isFound && number > place ? 1 : 0;
    }
    return znt::decimalText(older + 1) + u" of " + znt::decimalText(all);
}

void ZNTSpeechReview::noteCommand(std::u16string_view command)
{
    splitWhatCameIn();
    lastCommand = command.substr(0, longestLine);
    linesAtCommand = linesEver;
}

void ZNTSpeechReview::goToLastCommand()
{
    splitWhatCameIn();
    if (lastCommand.empty()) {
        synth.speakAtOnce(u"No command yet");
        return;
    }
    goTo(static_cast<std::size_t>(std::min<std::uint64_t>(linesEver - linesAtCommand, kept.size())) + 1);
    isAtCommand = hasCursor = true;
    cursor.setLine(lastCommand);
    synth.speakAtOnce(lastCommand);
}
