#pragma once

#include <functional>
#include <string>
#include <string_view>

/// A part of the manual that is made from a table of the program, as Markdown. It is a list, not a table of
/// Markdown: a list is read aloud sentence by sentence.
struct ZNTManualTable {
    std::string_view name; ///< stands in the lines between which the manual holds it
    std::string (*make)();
};

namespace znt
{

/// `page`, a manual in Markdown, with all that is made written anew. It stands between the lines
/// "<!-- made: NAME -->" and "<!-- end -->". The contents are made from the page's own headings ("## ").
///
/// Throws std::runtime_error with a sentence if a name is unknown or missing, or a part has no end.
std::string withTablesMade(std::string_view page);

} // namespace znt
