#include "ZNTProgramArguments.h"

#include "ZNTArgumentPages.h"
#include "ZNTHelpFormatter.h"
#include "ZNTVersion.h"

#include <algorithm>
#include <array>
#include <map>

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

bool ZNTProgramOption::isGiven() const { return option->count() > 0; }

void ZNTProgramOption::exclude(ZNTProgramOption other) { option->excludes(other.option); }

void ZNTProgramOption::need(ZNTProgramOption other) { option->needs(other.option); }

struct ZNTProgramArguments::Parser {
    Parser(const std::string& purpose, std::string program) : app(purpose, std::move(program)) {}

    [[nodiscard]] std::string page(const std::string& name) const;

    CLI::App app;
    std::map<const CLI::Option*, std::vector<std::string>> offered; // what the shells offer as the value
};

ZNTProgramArguments::ZNTProgramArguments(std::string program, const std::string& purpose)
    : parser(std::make_unique<Parser>(purpose, std::move(program)))
{
    auto& app = parser->app;
    app.formatter(std::make_shared<ZNTHelpFormatter>());
    app.set_help_flag("-h,--help", "show this help");
    app.set_version_flag("--version", app.get_name() + " " + znt::version(), "show the version");
    app.add_option_function<std::string>(
           std::string(describe),
           [this](const std::string& name) { throw CLI::CallForVersion(parser->page(name), 0); },
           "write a page about the options")
        ->group(""); // in no help
}

ZNTProgramArguments::~ZNTProgramArguments() = default;

ZNTProgramOption ZNTProgramArguments::addFlag(const std::string& name, bool& isOn,
                                              const std::string& sentence)
{
    return parser->app.add_flag(name, isOn, sentence);
}

ZNTProgramOption ZNTProgramArguments::addText(const std::string& name, std::string& text,
                                              const std::string& sentence)
{
    return parser->app.add_option(name, text, sentence);
}

ZNTProgramOption ZNTProgramArguments::addPort(const std::string& name, std::uint16_t& port, Zero zero,
                                              const std::string& sentence)
{
    auto* option = parser->app.add_option(name, port, sentence)->type_name("PORT");
    if (zero == Zero::Refused)
        option->check(CLI::Range(1, 65535));
    return option;
}

ZNTProgramOption ZNTProgramArguments::addWords(const std::string& name, std::vector<std::string> words,
                                               std::function<void(std::size_t)> choose,
                                               const std::string& sentence)
{
    std::string form;
    for (const auto& word : words)
        form.append(form.empty() ? "" : "|").append(word);
    const auto placeOf = [words, form](std::string& value) {
        const auto found = std::ranges::find(words, CLI::ignore_case(value));
        if (found == words.end())
            return "\"" + value + "\" is none of " + form;
        value = std::to_string(found - words.begin());
        return std::string();
    };
    auto* option = parser->app.add_option_function<std::size_t>(name, choose, sentence)
                       ->transform(CLI::Validator(placeOf, ""))
                       ->type_name(form);
    parser->offered[option] = std::move(words);
    return option;
}

ZNTProgramOption ZNTProgramArguments::addRepeated(const std::string& name, std::vector<std::string>& values,
                                                  const std::string& form,
                                                  std::function<std::string(const std::string&)> complaint,
                                                  std::vector<std::string> beginnings,
                                                  const std::string& sentence)
{
    auto* option = parser->app.add_option(name, values, sentence)
                       ->type_name(form)
                       ->allow_extra_args(false)
                       ->check(CLI::Validator(std::move(complaint), ""));
    parser->offered[option] = std::move(beginnings);
    return option;
}

void ZNTProgramArguments::whenRead(std::function<std::string()> read)
{
    parser->app.callback([read = std::move(read)] {
        if (auto complaint = read(); !complaint.empty())
            throw CLI::ValidationError(std::move(complaint));
    });
}

std::optional<int> ZNTProgramArguments::parse(int count, const char* const* arguments)
{
    try {
        parser->app.parse(count, arguments);
    } catch (const CLI::ParseError& error) {
        const bool isAnswer = error.get_exit_code() == static_cast<int>(CLI::ExitCodes::Success);
        parser->app.exit(error);
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

std::string ZNTProgramArguments::Parser::page(const std::string& name) const
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
    return found->make(app.get_name(), options);
}
