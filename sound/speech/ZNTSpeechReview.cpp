#include "ZNTSpeechReview.h"

#include "ZNTSpeechSynth.h"
#include "ZNTText.h"

#include <algorithm>
#include <utility>

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
    for (auto& line : added)
        kept.push_back(std::move(line));
    if (place > 0)
        place = std::min(place + added.size(), mostLines);
    while (kept.size() > mostLines)
        kept.pop_front();
}

void ZNTSpeechReview::previousLine()
{
    splitWhatCameIn();
    ++place;
    speakLineAtPlace();
}

void ZNTSpeechReview::nextLine()
{
    splitWhatCameIn();
    place = place > 1 ? place - 1 : 1;
    speakLineAtPlace();
}

void ZNTSpeechReview::lineFromEnd(std::size_t number)
{
    splitWhatCameIn();
    place = std::max<std::size_t>(number, 1);
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

void ZNTSpeechReview::speakLineAtPlace()
{
    place = std::min(place, kept.size());
    if (place > 0)
        synth.speakAtOnce(kept[kept.size() - place]);
}
