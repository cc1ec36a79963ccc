#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

/// One option of a program, as far as a shell or a man page needs to know it.
struct ZNTArgument {
    std::vector<std::string> names; ///< with their dashes, the short ones first
    std::string value;              ///< what stands for the value, as "PORT"; empty for a flag
    std::string sentence;
    std::vector<std::string> words; ///< what a shell offers as the value; one that ends with "=" goes on
    bool mayRepeat = false;
};

/// A file about a program's options.
struct ZNTArgumentPage {
    std::string_view name; ///< as `--describe` takes it
    std::string (*make)(const std::string& program, std::span<const ZNTArgument> arguments);
};

namespace znt
{

/// The completions of each shell, and "man": the entries for the section OPTIONS of a page in man(7)'s
/// format.
std::span<const ZNTArgumentPage> argumentPages();

} // namespace znt
