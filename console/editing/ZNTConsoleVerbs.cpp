#include "ZNTConsoleVerbs.h"

#include "ZNTConsoleReplies.h"
#include "ZNTConsoleWords.h"

#include <algorithm>

namespace znt::words
{

void carryOutVerb(ZNTConsoleReplies& replies, std::u16string_view command, const std::vector<Verb>& verbs,
                  std::u16string_view words)
{
    const auto name = firstWord(words);
    std::u16string choices;
    for (const auto& verb : verbs) {
        if (verb.name == name) {
            verb.carryOut(words);
            return;
        }
        choices += joined({choices.empty() ? u"" : u"|", verb.name});
    }
    replies.complain(
        joined({u"Say what to do: /", command, u" ", choices, u"; /help ", command, u" tells more."}));
}

std::u16string numbered(std::size_t index)
{
    return joined({decimalText(static_cast<std::int64_t>(index) + 1), u". "});
}

long indexMeant(ZNTConsoleReplies& replies, const std::vector<std::u16string>& names,
                std::u16string_view word, std::u16string_view kind)
{
    if (const int number = wholeNumber(word); number > 0 && number <= static_cast<int>(names.size()))
        return number - 1;
    const auto found = std::find(names.begin(), names.end(), word);
    if (found == names.end()) {
        replies.complain(word.empty() ? joined({u"Say which ", kind, u": its number or its name."})
                                      : joined({u"There is no ", kind, u" ", word, u"."}));
        return -1;
    }
    if (std::find(found + 1, names.end(), word) != names.end()) {
        replies.complain(joined({u"Several ", kind, u"s are called ", word, u"; say its number."}));
        return -1;
    }
    return found - names.begin();
}

} // namespace znt::words
