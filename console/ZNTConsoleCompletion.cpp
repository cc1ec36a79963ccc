#include "ZNTConsoleCompletion.h"

#include "ZNTText.h"

#include <cstddef>
#include <utility>

namespace
{

constexpr std::size_t memoryForLastLines = std::size_t{512} << 10; // more than the completion reads

} // namespace

ZNTConsoleCompletion::ZNTConsoleCompletion(ZNTTextView& view,
                                           std::function<std::vector<std::u16string>()> names)
    : view(view),
      names(std::move(names))
{
    lastLines.setMemoryLimit(memoryForLastLines);
}

void ZNTConsoleCompletion::append(const ZNTAttributedText& text)
{
    view.append(text);
    lastLines.append(text);
}

std::optional<std::string> ZNTConsoleCompletion::completed(std::string_view before)
{
    auto typed = znt::textFromUtf8(before);
    const auto caret = typed.size();
    const auto done = completion.next({std::move(typed), caret}, [this](std::u16string_view beginning) {
        return znt::wordsThatBegin(beginning, lastLines, names());
    });
    if (!done)
        return {};
    return znt::utf8FromText(done->line.text);
}
