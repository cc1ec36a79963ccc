#include "ZNTSpeechQueue.h"

#include "ZNTText.h"

#include <utility>

void ZNTSpeechQueue::append(std::u16string line)
{
    units += line.size();
    lines.push_back(std::move(line));
    // The newest line stays, whatever its length.
    while (lines.size() > mostLines || (units > mostUnits && lines.size() > 1))
        dropFirst();
}

void ZNTSpeechQueue::clear()
{
    lines.clear();
    taken = units = dropped = 0;
}

void ZNTSpeechQueue::dropFirst()
{
    units -= lines.front().size();
    lines.pop_front();
    taken = 0;
    ++dropped;
}

std::optional<std::u16string> ZNTSpeechQueue::takeUtterance()
{
    if (lines.empty())
        return {};
    if (const auto count = std::exchange(dropped, 0); count > 0)
        return znt::decimalText(static_cast<std::int64_t>(count)) +
               (count == 1 ? u" line was not spoken." : u" lines were not spoken.");

    const auto rest = std::u16string_view(lines.front()).substr(taken);
    const auto length = znt::utteranceLength(rest);
    std::u16string utterance(znt::trimmedOfNewlines(rest.substr(0, length)));
    if (length < rest.size()) {
        taken += length;
        return utterance;
    }
    units -= lines.front().size();
    lines.pop_front();
    taken = 0;
    return utterance;
}
