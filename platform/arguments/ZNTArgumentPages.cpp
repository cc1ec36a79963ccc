#include "ZNTArgumentPages.h"

#include <algorithm>
#include <array>

namespace
{

using Arguments = std::span<const ZNTArgument>;

/// `words` with `between` them.
std::string joined(const std::vector<std::string>& words, std::string_view between)
{
    std::string text;
    for (const auto& word : words)
        text.append(text.empty() ? "" : between).append(word);
    return text;
}

/// `text` with a backslash before each of `characters`.
std::string escaped(std::string_view text, std::string_view characters)
{
    std::string result;
    for (const char character : text) {
        if (characters.find(character) != characters.npos)
            result += '\\';
        result += character;
    }
    return result;
}

/// As one word of a shell. A quote ends the quoted text, stands by itself, and opens it again.
std::string inQuotes(std::string_view text)
{
    std::string result = "'";
    for (const char character : text)
        result.append(character == '\'' ? "'\\''" : std::string(1, character));
    return result + "'";
}

bool areOpen(const std::vector<std::string>& words)
{
    return std::ranges::any_of(words, [](const auto& word) { return word.ends_with('='); });
}

std::string functionName(std::string program)
{
    std::ranges::replace(program, '-', '_');
    return "_" + program;
}

/// bash breaks a word at "=", so "--name=value" comes as three of them.
std::string bashPage(const std::string& program, Arguments arguments)
{
    const auto function = functionName(program);
    std::string cases, names;
    for (const auto& argument : arguments) {
        names += joined(argument.names, " ") + " ";
        if (argument.value.empty())
            continue;
        cases += "        " + joined(argument.names, "|") + ")\n";
        if (areOpen(argument.words))
            cases += "            compopt -o nospace\n";
        cases += "            words=" + inQuotes(joined(argument.words, " ")) + " ;;\n";
    }
    return "# Completions of " + program + " for bash, made from its options.\n" + function +
           "() {\n"
           "    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} words=\n"
           "    if [[ $current == = ]]; then\n"
           "        current=\n"
           "    elif [[ $previous == = ]] && ((COMP_CWORD > 1)); then\n"
           "        previous=${COMP_WORDS[COMP_CWORD - 2]}\n"
           "    fi\n"
           "    case $previous in\n" +
           cases +
           "        *)\n"
           "            [[ ${COMP_WORDS[COMP_CWORD - 1]} == = ]] || words=" +
           inQuotes(names) +
           " ;;\n"
           "    esac\n"
           "    mapfile -t COMPREPLY < <(compgen -W \"$words\" -- \"$current\")\n"
           "}\n"
           "complete -F " +
           function + " " + program + "\n";
}

/// The action after the last colon of _arguments: what it offers for the value.
std::string zshAction(const ZNTArgument& argument)
{
    const auto words = joined(argument.words, " ");
    if (areOpen(argument.words))
        return "{compadd -S \"\" - " + words + "}";
    return words.empty() ? " " : "(" + words + ")";
}

std::string zshPage(const std::string& program, Arguments arguments)
{
    std::string entries;
    for (const auto& argument : arguments) {
        // One entry for each name; the names shut each other out.
        const auto others = argument.mayRepeat ? "*" : "(" + joined(argument.names, " ") + ")";
        for (const auto& name : argument.names) {
            auto one = others + name;
            if (!argument.value.empty())
                one += name.starts_with("--") ? "=" : "+";
            one += "[" + escaped(argument.sentence, "[]\\") + "]";
            if (!argument.value.empty())
                one += ":" + escaped(argument.value, ":\\") + ":" + zshAction(argument);
            entries += " \\\n    " + inQuotes(one);
        }
    }
    return "#compdef " + program + "\n# Completions for zsh, made from the program's options.\n_arguments" +
           entries + " \\\n    '*::game:_hosts'\n";
}

std::string fishPage(const std::string& program, Arguments arguments)
{
    std::string page = "# Completions of " + program + " for fish, made from its options.\n" +
                       "complete -c " + program + " -f\n";
    for (const auto& argument : arguments) {
        page += "complete -c " + program;
        for (const auto& name : argument.names)
            page += name.starts_with("--") ? " -l " + name.substr(2) : " -s " + name.substr(1);
        if (!argument.value.empty())
            page += " -x";
        if (!argument.words.empty())
            page += " -a " + inQuotes(joined(argument.words, " "));
        // Between quotes fish reads a backslash before a quote or a backslash.
        page += " -d '" + escaped(argument.sentence, "'\\") + "'\n";
    }
    return page;
}

/// In man(7) a bare dash may be shown as a hyphen, which nobody can paste into a shell.
std::string manText(std::string_view text)
{
    std::string result;
    for (const char character : text) {
        if (character == '\\')
            result += "\\e";
        else
            result.append(character == '-' ? "\\-" : std::string(1, character));
    }
    return result;
}

std::string manPage(const std::string&, Arguments arguments)
{
    std::string page;
    for (const auto& argument : arguments) {
        page += ".TP\n\\fB" + manText(joined(argument.names, ", ")) + "\\fR";
        if (!argument.value.empty())
            page += " \\fI" + manText(argument.value) + "\\fR";
        // \& keeps a line that starts with a dot from being a request.
        page += "\n\\&" + manText(argument.sentence) + "\n";
    }
    return page;
}

constexpr std::array<ZNTArgumentPage, 4> pages{
    {{"bash", bashPage}, {"zsh", zshPage}, {"fish", fishPage}, {"man", manPage}}};

} // namespace

std::span<const ZNTArgumentPage> znt::argumentPages() { return pages; }
