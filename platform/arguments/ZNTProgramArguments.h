#pragma once

#include "ZNTArgumentPages.h"

#include <CLI/CLI.hpp>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// The command line of one program. `app` holds its options; `--help`, `--version` and the `--describe` of
/// the build are added and answered here.
class ZNTProgramArguments
{
public:
    ZNTProgramArguments(std::string program, const std::string& purpose);

    /// An option whose value is one of a few words.
    template <typename Value>
    CLI::Option* addChoice(const std::string& name, Value& value,
                           const std::vector<std::pair<std::string, Value>>& values,
                           const std::string& sentence)
    {
        std::vector<std::string> words;
        std::string text;
        for (const auto& [word, _] : values) {
            words.push_back(word);
            text.append(text.empty() ? "" : "|").append(word);
        }
        auto* option = app.add_option(name, value, sentence)
                           ->transform(CLI::CheckedTransformer(values, CLI::ignore_case).description(""))
                           ->type_name(text);
        offerWords(option, std::move(words));
        return option;
    }

    /// Has the shells offer `words` as the option's value.
    void offerWords(const CLI::Option* option, std::vector<std::string> words);

    /// Reads the arguments into what the options name. Returns nothing if the program is to go on, else its
    /// exit code: 0 after an answer on stdout, `usageError` after a sentence about a mistake on stderr.
    std::optional<int> parse(int count, const char* const* arguments);

    /// The first argument before "--" that only asks for an answer; null if there is none.
    static const char* question(int count, const char* const* arguments);

    static constexpr int usageError = 2;

    CLI::App app;

private:
    [[nodiscard]] std::string page(const std::string& name) const;

    std::string program;
    std::map<const CLI::Option*, std::vector<std::string>> offered;
};
