#include "ZNTHelpFormatter.h"

#include <sstream>

namespace
{

constexpr std::size_t columnsOfNames = 24;
constexpr std::size_t columnsOfSentences = 80 - columnsOfNames;

bool takesValue(const CLI::Option& option) { return option.get_expected_max() > 0; }

/// With line breaks instead of the blanks after which a word would not fit.
std::string wrapped(const std::string& sentence)
{
    std::istringstream words(sentence);
    std::string lines;
    std::size_t column = 0;
    for (std::string word; words >> word;) {
        const bool fits = column + 1 + word.size() <= columnsOfSentences;
        if (!lines.empty())
            lines += fits ? ' ' : '\n';
        column = (lines.empty() || !fits ? 0 : column + 1) + word.size();
        lines += word;
    }
    return lines;
}

} // namespace

ZNTHelpFormatter::ZNTHelpFormatter()
{
    column_width(columnsOfNames);
    label("Positionals", "Arguments");
}

/// A later argument needs those before it, so it stands inside their brackets.
std::string ZNTHelpFormatter::make_usage(const CLI::App* app, std::string name) const
{
    std::string usage = "\nUsage: " + name + " [OPTIONS]";
    std::string closing;
    for (const auto* each :
         app->get_options([](const CLI::Option* option) { return option->get_positional(); })) {
        usage += " [" + make_option_name(each, true);
        closing += "]";
    }
    return usage + closing + "\n";
}

std::string ZNTHelpFormatter::make_option_name(const CLI::Option* option, bool isPositional) const
{
    std::string name = CLI::Formatter::make_option_name(option, isPositional);
    const auto comma = name.find(',');
    return comma == std::string::npos ? name : name.insert(comma + 1, " ");
}

std::string ZNTHelpFormatter::make_option_opts(const CLI::Option* option) const
{
    return option->get_positional() || !takesValue(*option) ? "" : " " + option->get_type_name();
}

std::string ZNTHelpFormatter::make_option_desc(const CLI::Option* option) const
{
    return wrapped(option->get_description());
}
