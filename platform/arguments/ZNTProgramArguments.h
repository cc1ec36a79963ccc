#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace CLI
{
class Option;
}

/// An option or a positional argument that was added to a ZNTProgramArguments, which must outlive it.
class ZNTProgramOption
{
public:
    /// After the parsing: whether the command line has it.
    [[nodiscard]] bool isGiven() const;
    /// Makes it a mistake to give both.
    void exclude(ZNTProgramOption other);
    /// Makes it a mistake to give this one without the other.
    void need(ZNTProgramOption other);

private:
    friend class ZNTProgramArguments;
    ZNTProgramOption(CLI::Option* option) : option(option) {}

    CLI::Option* option;
};

/// The command line of one program: what is added here is read by `parse`. `--help`, `--version` and the
/// `--describe` of the build are added and answered here.
/// A name is "--port" for an option, "PORT" for a positional argument. A value that is named by reference
/// must outlive the parsing, which fills it in. The library that reads the arguments shows in no header of
/// ours: its templates take seconds to compile.
class ZNTProgramArguments
{
public:
    ZNTProgramArguments(std::string program, const std::string& purpose);
    ~ZNTProgramArguments();

    ZNTProgramOption addFlag(const std::string& name, bool& isOn, const std::string& sentence);
    ZNTProgramOption addText(const std::string& name, std::string& text, const std::string& sentence);
    /// A port of TCP; 0 is a mistake where the program needs a game's port.
    enum class Zero { Allowed, Refused };
    ZNTProgramOption addPort(const std::string& name, std::uint16_t& port, Zero zero,
                             const std::string& sentence);

    /// An option whose value is one of a few words, which are in lower case here and in any case there.
    template <typename Value>
    ZNTProgramOption addChoice(const std::string& name, Value& value,
                               const std::vector<std::pair<std::string, Value>>& values,
                               const std::string& sentence)
    {
        std::vector<std::string> words;
        std::vector<Value> meanings;
        for (const auto& [word, meaning] : values) {
            words.push_back(word);
            meanings.push_back(meaning);
        }
        return addWords(
            name, std::move(words), [&value, meanings](std::size_t at) { value = meanings[at]; }, sentence);
    }

    /// An option that may be given again and again, each time with one value of the form `form`, as
    /// "NAME=VALUE". `complaint` says in a sentence what is wrong with a value, and nothing if it is right.
    /// The shells offer `beginnings` as the value.
    ZNTProgramOption addRepeated(const std::string& name, std::vector<std::string>& values,
                                 const std::string& form,
                                 std::function<std::string(const std::string&)> complaint,
                                 std::vector<std::string> beginnings, const std::string& sentence);

    /// Has the parsing end with a call of `read`. If that returns a sentence, the sentence is reported as a
    /// mistake. If it returns an empty text, nothing is wrong.
    void whenRead(std::function<std::string()> read);

    /// Reads the arguments into what the options name. Returns nothing if the program is to go on, else its
    /// exit code: 0 after an answer on stdout, `usageError` after a sentence about a mistake on stderr.
    std::optional<int> parse(int count, const char* const* arguments);

    /// The first argument before "--" that only asks for an answer; null if there is none.
    static const char* question(int count, const char* const* arguments);

    static constexpr int usageError = 2;

private:
    struct Parser;

    ZNTProgramOption addWords(const std::string& name, std::vector<std::string> words,
                              std::function<void(std::size_t)> choose, const std::string& sentence);

    std::unique_ptr<Parser> parser;
};
