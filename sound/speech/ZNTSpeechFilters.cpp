#include "ZNTSpeechFilters.h"

#include "ZNTEscapeSequence.h"
#include "ZNTTextCutter.h"
#include "ZNTTextScan.h"

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <unicode/uchar.h>
#include <unicode/utf16.h>

namespace
{

constexpr std::u16string_view lineEnds = u"\r\n";

void cutControlSequences(std::u16string& text)
{
    ZNTTextCutter cutter(text);
    for (std::size_t at = 0; (at = znt::findUnit(text, znt::escape, at)) != text.npos;) {
        const auto end = znt::escapeSequenceAt(text, at).end;
        cutter.cut(at, end);
        at = end;
    }
    cutter.finish();
}

bool hasLetterOrDigit(std::u16string_view text)
{
    for (std::size_t at = 0; at < text.size();) {
        UChar32 character;
        U16_NEXT(text.data(), at, text.size(), character);
        if (u_isalnum(character))
            return true;
    }
    return false;
}

void cutDecoration(std::u16string& text)
{
    ZNTTextCutter cutter(text);
    for (std::size_t start = 0; start < text.size();) {
        const auto lineEnd = std::min(text.find_first_of(lineEnds, start), text.size());
        const auto next = std::min(text.find_first_not_of(lineEnds, lineEnd), text.size());
        if (!hasLetterOrDigit(std::u16string_view(text).substr(start, lineEnd - start)))
            cutter.cut(start, next);
        start = next;
    }
    cutter.finish();
}

void cutRuns(std::u16string& text)
{
    constexpr std::size_t shortestRun = 3;
    ZNTTextCutter cutter(text);
    for (std::size_t start = 0; start < text.size();) {
        UChar32 character;
        auto behindFirst = start;
        U16_NEXT(text.data(), behindFirst, text.size(), character);
        const auto length = behindFirst - start;
        auto end = behindFirst;
        while (text.compare(end, length, text, start, length) == 0)
            end += length;
        if (end - start >= shortestRun * length && !u_isalnum(character))
            cutter.cut(behindFirst, end);
        start = end;
    }
    cutter.finish();
}

} // namespace

std::u16string ZNTSpeechFilters::applied(std::u16string text) const
{
    // The letters of a control sequence are no letters of its line, and it may part the characters of a run.
    if (skipsControlSequences)
        cutControlSequences(text);
    if (skipsDecoration)
        cutDecoration(text);
    if (shortensRuns)
        cutRuns(text);
    return text;
}
