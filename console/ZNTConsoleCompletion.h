#pragma once

#include "ZNTScreenElements.h"
#include "ZNTWordCompletion.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Completes words that a player types on a terminal. It stands before the output view, and keeps the last
/// text that passes.
class ZNTConsoleCompletion final : public ZNTTextView
{
public:
    /// `view` outlives this. `names` can be completed beside the words of the output.
    ZNTConsoleCompletion(ZNTTextView& view, std::function<std::vector<std::u16string>()> names);

    /// What is to stand in place of `before` (UTF-8), the beginning of the line up to the cursor. Called
    /// again with its last answer, it takes the next word.
    std::optional<std::string> completed(std::string_view before);

    void append(const ZNTAttributedText& text) override;
    void scrollToEnd() override { view.scrollToEnd(); }
    void clear() override { view.clear(); }
    void setEditable(bool editable) override { view.setEditable(editable); }

private:
    ZNTTextView& view;
    const std::function<std::vector<std::u16string>()> names;
    std::u16string lastText; ///< up to twice what a completion reads
    ZNTWordCompletion completion;
};
