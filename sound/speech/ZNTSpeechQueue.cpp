#include "ZNTSpeechQueue.h"

#include "ZNTText.h"

#include <algorithm>
#include <utility>

namespace
{

/// Units that are copied to find the end of an utterance; more than the longest one.
constexpr std::size_t longestLook = 2 * znt::longestUtterance;

bool isLineEnd(char16_t unit) { return unit == u'\r' || unit == u'\n'; }

} // namespace

void ZNTSpeechQueue::append(std::u16string_view chunk)
{
    text.insert(text.end(), chunk.begin(), chunk.end());
    lengths.push_back(static_cast<std::uint32_t>(chunk.size()));
    if (text.size() > mostUnits)
        dropOlderHalf();
}

void ZNTSpeechQueue::clear()
{
    text.clear();
    lengths.clear();
    droppedLines = 0;
    owesText = false;
}

void ZNTSpeechQueue::dropOlderHalf()
{
    while (text.size() > mostUnits / 2) {
        const auto length = firstLineLength();
        if (length == text.size())
            return;
        const auto end = text.begin() + static_cast<std::ptrdiff_t>(length);
        if (std::any_of(text.begin(), end, [](char16_t unit) { return unit > u' '; }))
            ++droppedLines;
        takeUnits(length);
    }
}

std::size_t ZNTSpeechQueue::firstLineLength() const
{
    const auto end = text.begin() + lengths.front();
    const auto lineStart = std::find_if_not(text.begin(), end, isLineEnd);
    const auto lineEnd = std::find_if(lineStart, end, isLineEnd);
    return static_cast<std::size_t>(std::find_if_not(lineEnd, end, isLineEnd) - text.begin());
}

void ZNTSpeechQueue::takeUnits(std::size_t count)
{
    text.erase(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(count));
    lengths.front() -= static_cast<std::uint32_t>(count);
    if (lengths.front() == 0)
        lengths.pop_front();
}

std::u16string ZNTSpeechQueue::takeNotice()
{
    owesText = true;
    const auto count = std::exchange(droppedLines, 0);
    return znt::decimalText(static_cast<std::int64_t>(count)) +
           (count == 1 ? u" line was not spoken." : u" lines were not spoken.");
}

std::optional<std::u16string> ZNTSpeechQueue::takeUtterance()
{
    if (isEmpty())
        return {};
    if (droppedLines > 0 && !owesText)
        return takeNotice();
    owesText = false;
    const auto looked = std::min<std::size_t>(lengths.front(), longestLook);
    const std::u16string start(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(looked));
    const auto length = znt::utteranceLength(start);
    takeUnits(length);
    return std::u16string(znt::trimmedOfNewlines(std::u16string_view(start).substr(0, length)));
}
