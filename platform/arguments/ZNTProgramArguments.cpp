#include "ZNTProgramArguments.h"

#include "ZNTHelpFormatter.h"
#include "ZNTVersion.h"

#include <algorithm>
#include <array>
#include <memory>

namespace
{

constexpr std::string_view describe = "--describe";

std::vector<std::string> namesOf(const CLI::Option& option)
{
    std::vector<std::string> names;
    for (const auto& name : option.get_snames())
        names.push_back("-" + name);
    for (const auto& name : option.get_lnames())
        names.push_back("--" + name);
    return names;
}

} // namespace

ZNTProgramArguments::ZNTProgramArguments(std::string program, const std::string& purpose)
    : app(purpose, program),
      program(std::move(program))
{
    app.formatter(std::make_shared<ZNTHelpFormatter>());
    app.set_help_flag("-h,--help", "show this help");
    app.set_version_flag("--version", this->program + " " + znt::version(), "show the version");
    app.add_option_function<std::string>(
           std::string(describe),
           [this](const std::string& name) { throw CLI::CallForVersion(page(name), 0); },
           "write a page about the options")
        ->group(""); // in no help
}

void ZNTProgramArguments::offerWords(const CLI::Option* option, std::vector<std::string> words)
{
    offered[option] = std::move(words);
}

std::optional<int> ZNTProgramArguments::parse(int count, const char* const* arguments)
{
    try {
        app.parse(count, arguments);
    } catch (const CLI::ParseError& error) {
        const bool isAnswer = error.get_exit_code() == static_cast<int>(CLI::ExitCodes::Success);
        app.exit(error);
        return isAnswer ? 0 : usageError;
    }
    return std::nullopt;
}

const char* ZNTProgramArguments::question(int count, const char* const* arguments)
{
    constexpr std::array<std::string_view, 3> questions{"--help", "-h", "--version"};
    const auto* const end = std::find(arguments + 1, arguments + count, std::string_view("--"));
    const auto* const found = std::find_if(arguments + 1, end, [&](std::string_view each) {
        return std::ranges::find(questions, each) != questions.end() || each.starts_with(describe);
    });
    return found == end ? nullptr : *found;
}

std::string ZNTProgramArguments::page(const std::string& name) const
{
    std::vector<ZNTArgument> options;
    for (const auto* option : app.get_options()) {
        if (option->get_positional() || option->get_group().empty())
            continue;
        const auto words = offered.find(option);
        options.push_back({.names = namesOf(*option),
                           .value = option->get_expected_max() == 0 ? "" : option->get_type_name(),
                           .sentence = option->get_description(),
                           .words = words == offered.end() ? std::vector<std::string>{} : words->second,
                           .mayRepeat = option->get_items_expected_max() > 1});
    }
    const auto pages = znt::argumentPages();
    const auto found = std::ranges::find(pages, name, &ZNTArgumentPage::name);
    if (found == pages.end())
        throw CLI::ValidationError(std::string(describe), "there is no page " + name);
    return found->make(program, options);
}
