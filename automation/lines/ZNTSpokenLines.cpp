#include "ZNTSpokenLines.h"

#include "ZNTLine.h"
#include "ZNTText.h"

#include <utility>

namespace
{

/// Adds the sentences about `wanted` to `problems` if it is another list than before.
void useList(const std::vector<std::string>& wanted, std::vector<std::string>& present,
             ZNTLinePatterns& patterns, std::vector<std::u16string>& problems)
{
    if (present == wanted)
        return;
    present = wanted;
    std::vector<std::u16string> texts;
    for (const auto& text : wanted)
        texts.push_back(znt::textFromUtf8(text));
    for (auto& problem : patterns.setPatterns(texts))
        problems.push_back(std::move(problem));
}

} // namespace

std::vector<std::u16string> ZNTSpokenLines::setPatterns(const std::vector<std::string>& wantedUrgent,
                                                        const std::vector<std::string>& wantedQuiet)
{
    std::vector<std::u16string> problems;
    useList(wantedUrgent, urgentLines, urgent, problems);
    useList(wantedQuiet, quietLines, quiet, problems);
    return problems;
}

ZNTSpokenLines::Parts ZNTSpokenLines::parted(const std::u16string& chunk)
{
    const bool mayBeUrgent = urgent.begin(chunk), mayBeQuiet = quiet.begin(chunk);
    if (!mayBeUrgent && !mayBeQuiet)
        return {{}, chunk};
    Parts parts;
    for (std::u16string_view rest = chunk; !rest.empty();) {
        const auto line = ZNTLine::takenFrom(rest);
        if (line.text.empty())
            parts.inTurn += line.whole;
        else if (mayBeUrgent && !urgent.matchesIn(line.text).empty())
            parts.atOnce.emplace_back(line.text);
        else if (!mayBeQuiet || quiet.matchesIn(line.text).empty())
            parts.inTurn += line.whole;
    }
    if (parts.inTurn.size() < chunk.size() && znt::trimmedOfWhitespace(parts.inTurn).empty())
        parts.inTurn.clear();
    return parts;
}
