#include "ZNTSpeechReview.h"

#include "ZNTSpeechSynth.h"
#include "ZNTText.h"

#include <algorithm>

void ZNTSpeechReview::addReceivedText(std::u16string_view plainText)
{
    // Only what can be kept is looked at: a flood's chunk may hold a hundred thousand lines.
    std::deque<std::u16string> added;
    while (!plainText.empty() && added.size() < mostLines) {
        const auto lineEnd = plainText.find_last_of(u"\r\n");
        const auto start = lineEnd == plainText.npos ? 0 : lineEnd + 1;
        const auto line = znt::trimmedOfWhitespace(plainText.substr(start));
        if (!line.empty())
            added.emplace_front(line.substr(0, longestLine));
        plainText = plainText.substr(0, start == 0 ? 0 : start - 1);
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
    ++place;
    speakLineAtPlace();
}

void ZNTSpeechReview::nextLine()
{
    place = place > 1 ? place - 1 : 1;
    speakLineAtPlace();
}

void ZNTSpeechReview::lineFromEnd(std::size_t number)
{
    place = std::max<std::size_t>(number, 1);
    speakLineAtPlace();
}

void ZNTSpeechReview::lastLines(std::size_t count)
{
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
