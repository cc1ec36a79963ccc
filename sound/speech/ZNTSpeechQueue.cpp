#include "ZNTSpeechQueue.h"

#include "ZNTText.h"

#include <algorithm>
#include <utility>

namespace
{

/// Units that are copied to find the end of an utterance; more than the longest one.
constexpr std::size_t longestLook = 2 * znt::longestUtterance;

constexpr std::u16string_view endsOfLine = u"\r\n";

bool isLineEnd(char16_t unit) { return endsOfLine.find(unit) != endsOfLine.npos; }

/// Neither a blank nor a control character.
bool isVisible(char16_t unit) { return unit > u' '; }

std::uint32_t millisecondsAt(double seconds)
{
    return static_cast<std::uint32_t>(static_cast<std::uint64_t>(seconds * 1'000));
}

} // namespace

void ZNTSpeechQueue::append(std::u16string_view chunk, double now, Source source)
{
    if (catchesUp)
        appendLines(chunk, now, source);
    else
        appendChunk(chunk, now, source);
    if (text.size() > mostUnits)
        dropOlderHalf();
}

void ZNTSpeechQueue::appendLines(std::u16string_view chunk, double now, Source source)
{
    while (!chunk.empty()) {
        const auto line = chunk.substr(0, chunk.find_first_of(endsOfLine));
        if (std::any_of(line.begin(), line.end(), isVisible))
            appendChunk(line, now, source);
        chunk.remove_prefix(std::min(line.size() + 1, chunk.size()));
    }
}

void ZNTSpeechQueue::appendChunk(std::u16string_view chunk, double now, Source source)
{
    text.insert(text.end(), chunk.begin(), chunk.end());
    chunks.push_back({static_cast<std::uint32_t>(chunk.size()), millisecondsAt(now),
                      source == Source::Game ? countInText(now) : keptNumber});
}

std::uint32_t ZNTSpeechQueue::countInText(double now)
{
    if (!continuesNewestText(now)) {
        ++newestText;
        newestTextBegan = millisecondsAt(now);
        chunksOfNewestText = 0;
        isNewestTheFirst = isOfFirstText(now);
    }
    ++chunksOfNewestText;
    return newestText;
}

bool ZNTSpeechQueue::continuesNewestText(double now) const
{
    if (chunksOfNewestText == 0 || isNewestTheFirst != isOfFirstText(now))
        return false;
    return isNewestTheFirst || millisecondsAt(now) - newestTextBegan <= textDuration * 1'000;
}

void ZNTSpeechQueue::beginFirstText(double now)
{
    firstTextBegin = now;
    firstTextEnd = std::numeric_limits<double>::infinity();
    chunksOfNewestText = 0; // what came before is another game's
}

void ZNTSpeechQueue::clear()
{
    chunksOfNewestText = 0;
    text.clear();
    chunks.clear();
    droppedLines = 0;
    owesText = hasBegunFirst = false;
}

void ZNTSpeechQueue::dropOlderHalf()
{
    while (text.size() > mostUnits / 2 && firstLineLength() < text.size())
        dropFirstLine();
}

void ZNTSpeechQueue::dropLateLines(double now)
{
    if (isEmpty() || hasBegunFirst)
        return;
    const bool isLate = waitOfFirst(now) > (owesText ? longestWaitAfterNotice : longestWait);
    while (!isEmpty() && !isFirstKept() &&
           (chunks.size() > mostLines || (isLate && waitOfFirst(now) > keptWait)))
        dropFirstLine();
}

double ZNTSpeechQueue::waitOfFirst(double now) const
{
    return (millisecondsAt(now) - chunks.front().milliseconds) / 1'000.0;
}

bool ZNTSpeechQueue::isFirstKept() const
{
    if (chunks.front().textNumber == keptNumber)
        return true;
    if (finished == Finished::None || chunks.front().textNumber != newestText)
        return false;
    if (isNewestTheFirst)
        return chunksOfNewestText <= mostLinesOfFirstText;
    return finished == Finished::Every && chunksOfNewestText <= mostLinesOfText;
}

std::size_t ZNTSpeechQueue::firstLineLength() const
{
    const auto end = text.begin() + chunks.front().length;
    const auto lineStart = std::find_if_not(text.begin(), end, isLineEnd);
    const auto lineEnd = std::find_if(lineStart, end, isLineEnd);
    return static_cast<std::size_t>(std::find_if_not(lineEnd, end, isLineEnd) - text.begin());
}

void ZNTSpeechQueue::dropFirstLine()
{
    const auto length = firstLineLength();
    if (std::any_of(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(length), isVisible))
        ++droppedLines;
    takeUnits(length);
}

void ZNTSpeechQueue::takeUnits(std::size_t count)
{
    text.erase(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(count));
    chunks.front().length -= static_cast<std::uint32_t>(count);
    if (chunks.front().length > 0)
        return;
    chunks.pop_front();
    hasBegunFirst = false;
}

std::u16string ZNTSpeechQueue::takeNotice()
{
    owesText = true;
    const auto count = std::exchange(droppedLines, 0);
    const auto words = catchesUp ? (count == 1 ? u" line skipped." : u" lines skipped.")
                                 : (count == 1 ? u" line was not spoken." : u" lines were not spoken.");
    return znt::decimalText(static_cast<std::int64_t>(count)) + words;
}

std::optional<std::u16string> ZNTSpeechQueue::takeUtterance(double now)
{
    if (catchesUp)
        dropLateLines(now);
    const bool isInsideLine = catchesUp && hasBegunFirst;
    if (droppedLines > 0 && !owesText && !isInsideLine)
        return takeNotice();
    if (isEmpty())
        return {};
    owesText = false;
    const auto looked = std::min<std::size_t>(chunks.front().length, longestLook);
    const std::u16string start(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(looked));
    const auto length = znt::utteranceLength(start);
    hasBegunFirst = length < chunks.front().length;
    takeUnits(length);
    return std::u16string(znt::trimmedOfNewlines(std::u16string_view(start).substr(0, length)));
}
