#include "FuzzInput.h"
#include "FuzzRequire.h"
#include "ZNTCommandInterpreter.h"
#include "ZNTIcuReference.h"
#include "ZNTText.h"

#include <algorithm>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace
{

constexpr std::size_t mostLines = 8;

using Macros = std::map<std::u16string, std::u16string>;

/// A session that interprets what it is sent and notes what a typed line itself set going, apart from what
/// its macros did.
class Session final : ZNTCommandActions, ZNTLineSender
{
public:
    explicit Session(const Macros& macros) : macros(macros) {}

    void type(std::u16string_view line)
    {
        sent.clear();
        walked.clear();
        timesListed = linesSent = 0;
        wasStopped = false;
        sendMessageToServer(line, /*ignoreSpecials=*/false);
    }

    std::vector<std::u16string> sent;   ///< texts of the line's macros, or the line
    std::vector<std::u16string> walked; ///< paths, or "stop"
    std::size_t timesListed = 0;        ///< all macros, by name
    int linesSent = 0;                  ///< by macros too
    bool wasStopped = false;

private:
    void sendMessageToServer(std::u16string_view line, bool ignoreSpecials) override
    {
        ++linesSent;
        const bool isInterpreted = !ignoreSpecials && ZNTCommandInterpreter::hasPrefix(line);
        if (depth == 1 || (depth == 0 && !isInterpreted))
            sent.emplace_back(line);
        if (!isInterpreted)
            return;
        ++depth;
        interpreter.showStrings(line);
        --depth;
    }
    void speedwalk(const std::shared_ptr<const ZNTSpeedWalking::Route>& route) override
    {
        if (depth == 1)
            walked.push_back(route->path);
    }
    void stopSpeedwalk() override
    {
        if (depth == 1)
            walked.emplace_back(u"stop");
    }
    std::vector<std::u16string> getAllMacroNames() override
    {
        std::vector<std::u16string> names;
        for (const auto& [name, text] : macros)
            names.push_back(name);
        return names;
    }
    std::optional<std::u16string> getMacroByName(std::u16string_view name) override
    {
        const auto found = macros.find(std::u16string(name));
        return found == macros.end() ? std::nullopt : std::optional(found->second);
    }
    void insertTextIntoTheWindow(std::u16string_view text) override
    {
        timesListed += depth == 1 && text == u"Macro Names" ? 1 : 0;
        wasStopped |= znt::contains(text, u" was stopped: ");
    }

    const Macros& macros;
    ZNTCommandInterpreter interpreter{*this, *this};
    int depth = 0;
};

/// The words behind each prefix, as ICU finds them.
std::vector<std::u16string> wordsBehind(const char16_t* pattern, std::u16string_view line)
{
    std::vector<std::u16string> words;
    for (const auto& match : znt::icu::matches(line, pattern))
        words.push_back(match.groups.front().second);
    return words;
}

/// A macro's text with the words of `line` filled in, one after the other. It may grow too long.
std::u16string filledIn(std::u16string text, std::u16string_view line)
{
    if (!znt::contains(text, u"%1"))
        return text;
    std::int64_t number = 0;
    for (auto blank = line.find(u' '); blank != line.npos;) {
        const auto start = blank + 1;
        blank = line.find(u' ', start);
        const auto word = line.substr(start, blank == line.npos ? line.npos : blank - start);
        text = znt::replacedAll(text, u"%" + znt::decimalText(++number), word);
        if (text.size() > ZNTCommandInterpreter::longestText)
            break;
    }
    return text;
}

void checkMacros(const Session& session, const Macros& macros, std::u16string_view line)
{
    std::vector<std::u16string> expected;
    std::size_t timesListed = 0;
    for (const auto& word : wordsBehind(uR"(~(\S+)\s?)", line)) {
        const auto macro = macros.find(word);
        if (word == u"list-macro")
            timesListed += macros.size();
        else if (macro != macros.end())
            expected.push_back(filledIn(macro->second, line));
    }
    if (session.wasStopped) // the rest of the line is given up
        expected.resize(std::min(expected.size(), session.sent.size()));
    else
        require(session.timesListed == timesListed, "the macros are listed as often as ICU finds the word");
    require(session.sent == expected, "the macros that ICU finds are run, with the line's words in them");
}

void checkTyped(const Session& session, const Macros& macros, std::u16string_view line)
{
    require(session.linesSent <= ZNTCommandInterpreter::mostMacros + static_cast<int>(macros.size()) + 1,
            "a line runs a bounded number of macros");
    switch (ZNTCommandInterpreter::hasPrefix(line) ? line.front() & 0xFF : 0) {
    case u'~':
        checkMacros(session, macros, line);
        break;
    case u'!': {
        auto expected = wordsBehind(uR"(!(\S+)\s?)", line);
        const auto path = ZNTSpeedWalking::routeOfLine(line)->path;
        for (auto& word : expected)
            if (word != u"stop")
                word = path;
        require(session.walked == expected, "walks are started and stopped by the words that ICU finds");
        break;
    }
    case u'#':
        require(session.sent.empty(), "a reserved line does nothing");
        break;
    default:
        require(session.sent == std::vector{std::u16string(line)}, "a line is sent as it stands");
    }
}

} // namespace

/// Lines in UTF-8: macros as "name=text" up to an empty line, then what is typed.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FuzzInput input(data, size);
    Macros macros;
    for (auto line = input.field('\n'); !line.empty(); line = input.field('\n')) {
        const auto equals = line.find('=');
        macros[znt::textFromUtf8(line.substr(0, equals))] =
            znt::textFromUtf8(equals == line.npos ? line : line.substr(equals + 1));
    }
    Session session(macros);
    for (std::size_t typed = 0; typed < mostLines && !input.empty(); ++typed) {
        const auto line = znt::textFromUtf8(input.field('\n'));
        session.type(line);
        checkTyped(session, macros, line);
    }
    return 0;
}
