#include "ZNTConsoleCompletion.h"

#include "ZNTText.h"

#include "ZNTOutputStore.h"

#include <algorithm>
#include <cstddef>
#include <utility>

ZNTConsoleCompletion::ZNTConsoleCompletion(ZNTTextView& view,
                                           std::function<std::vector<std::u16string>()> names)
    : view(view),
      names(std::move(names))
{
}

/// All text of the game passes here, so this only copies. Lines are found in it when a word is asked for.
void ZNTConsoleCompletion::append(const ZNTAttributedText& text)
{
    constexpr auto most = static_cast<std::size_t>(znt::unitsToCompleteFrom);
    view.append(text);
    lastText += std::u16string_view(text.text).substr(text.text.size() - std::min(text.text.size(), most));
    if (lastText.size() > 2 * most)
        lastText.erase(0, lastText.size() - most);
}

std::optional<std::string> ZNTConsoleCompletion::completed(std::string_view before)
{
    auto typed = znt::textFromUtf8(before);
    const auto caret = typed.size();
    const auto done = completion.next({std::move(typed), caret}, [this](std::u16string_view beginning) {
        ZNTOutputStore lastLines;
        lastLines.append({.text = lastText, .runs = {}, .sets = {}});
        return znt::wordsThatBegin(beginning, lastLines, names());
    });
    if (!done)
        return {};
    return znt::utf8FromText(done->line.text);
}
