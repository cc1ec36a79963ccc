#include "ZNTCommandInterpreter.h"

#include "ZNTText.h"

#include <algorithm>
#include <limits>
#include <unicode/uchar.h>
#include <utility>

namespace
{

constexpr char16_t prefixUnit(std::u16string_view line) { return line.front() & 0xFF; }

/// ICU's "\s" (its manual): the White_Space property.
bool isSpace(char16_t unit) { return u_isUWhiteSpace(unit); }

/// The words behind each `prefix` in `line`: the first groups of the matches of "~(\S+)\s?" (with the prefix
/// in place of "~"). A prefix inside a word belongs to the word.
class PrefixedWords
{
public:
    PrefixedWords(char16_t prefix, std::u16string_view line) : prefix(prefix), line(line) {}

    /// None when there are no more.
    std::optional<std::u16string_view> next()
    {
        while ((at = line.find(prefix, at)) != line.npos) {
            const std::size_t start = ++at;
            while (at < line.size() && !isSpace(line[at]))
                ++at;
            if (at > start)
                return line.substr(start, at - start);
        }
        return std::nullopt;
    }

private:
    char16_t prefix;
    std::u16string_view line;
    std::size_t at = 0;
};

/// The pieces of a line behind its first blank, parted by single blanks and counted from 1.
class LinePieces
{
public:
    explicit LinePieces(std::u16string_view line) : line(line), end(line.find(u' ')) {}

    /// Steps on to the piece of that number, which is higher than the last one asked for. None where the line
    /// has fewer.
    std::optional<std::u16string_view> piece(std::int64_t wanted)
    {
        for (; end != line.npos; ++number) {
            const std::size_t start = end + 1;
            end = line.find(u' ', start);
            if (number == wanted) {
                ++number;
                return line.substr(start, end == line.npos ? line.npos : end - start);
            }
        }
        return std::nullopt;
    }

private:
    std::u16string_view line;
    std::size_t end;
    std::int64_t number = 1; ///< of the piece that starts behind `end`
};

/// The number of the lowest key ("%1", "%2", ...) in `text` above `last`; 0 without one. "%12" holds both
/// "%1" and "%12".
std::int64_t nextKey(std::u16string_view text, std::int64_t last)
{
    constexpr std::int64_t noKey = std::numeric_limits<std::int32_t>::max();
    std::int64_t lowest = noKey;
    for (std::size_t at = 0; (at = text.find(u'%', at)) != text.npos;) {
        std::int64_t number = 0;
        while (++at < text.size() && text[at] >= (number == 0 ? u'1' : u'0') && text[at] <= u'9') {
            number = number * 10 + (text[at] - u'0');
            if (number > last)
                break;
        }
        if (number > last)
            lowest = std::min(lowest, number);
    }
    return lowest == noKey ? 0 : lowest;
}

std::size_t timesFound(std::u16string_view key, std::u16string_view text)
{
    std::size_t times = 0;
    for (std::size_t at = 0; (at = text.find(key, at)) != text.npos; at += key.size())
        ++times;
    return times;
}

/// `parseMacro`, which adds to `searched` what it searches through.
std::optional<std::u16string> filledIn(std::u16string_view dataToExecute, std::u16string_view line,
                                       std::size_t& searched)
{
    std::u16string text(dataToExecute);
    if (!znt::contains(text, u"%1"))
        return text;
    searched += line.size();
    LinePieces pieces(line);
    // Only keys that stand in the text are looked at. A piece may hold further keys; those above its own are
    // filled in, too.
    for (std::int64_t number = 0; (number = nextKey(text, number)) != 0;) {
        const auto piece = pieces.piece(number);
        if (!piece)
            break;
        const auto key = u"%" + znt::decimalText(number);
        searched += text.size();
        if (searched > ZNTCommandInterpreter::mostSearched ||
            text.size() + timesFound(key, text) * piece->size() > ZNTCommandInterpreter::longestText)
            return std::nullopt;
        text = ZNTCommandInterpreter::replaceKey(key, *piece, text);
    }
    return text;
}

} // namespace

bool ZNTCommandInterpreter::hasPrefix(std::u16string_view line)
{
    if (line.empty())
        return false;
    const auto unit = prefixUnit(line);
    return unit == u'~' || unit == u'!' || unit == u'#' || unit == u'@';
}

void ZNTCommandInterpreter::showStrings(std::u16string_view line)
{
    if (line.empty())
        return;
    switch (prefixUnit(line)) {
    case u'!':
        startOrStopWalks(line);
        break;
    case u'@':
        sender.sendMessageToServer(line, /*ignoreSpecials=*/true);
        break;
    case u'~':
        runMacros(line);
        break;
    default:
        break; // "#" is reserved
    }
}

void ZNTCommandInterpreter::startOrStopWalks(std::u16string_view line)
{
    std::shared_ptr<const ZNTSpeedWalking::Route> route;
    PrefixedWords words(u'!', line);
    while (const auto word = words.next()) {
        if (*word == u"stop") {
            actions.stopSpeedwalk();
            continue;
        }
        if (!route)
            route = ZNTSpeedWalking::routeOfLine(line);
        actions.speedwalk(route);
    }
}

// Macros

void ZNTCommandInterpreter::runMacros(std::u16string_view line)
{
    FilledTexts filled;
    PrefixedWords words(u'~', line);
    while (const auto word = work.isStopped ? std::nullopt : words.next()) {
        if (*word == u"list-macro")
            listMacros(*word);
        else
            runMacro(*word, line, filled);
    }
    if (depth == 0)
        work = {};
}

void ZNTCommandInterpreter::listMacros(std::u16string_view keyword)
{
    if (!mayRunAnother(keyword))
        return;
    const auto names = actions.getAllMacroNames();
    work.macrosRun += static_cast<int>(names.size());
    for (const auto& name : names) {
        actions.insertTextIntoTheWindow(u"Macro Names");
        actions.insertTextIntoTheWindow(name);
        actions.insertTextIntoTheWindow(u"End of Macro Names");
    }
}

void ZNTCommandInterpreter::runMacro(std::u16string_view name, std::u16string_view line, FilledTexts& filled)
{
    const auto* dataToExecute = macroNamed(name);
    if (!dataToExecute || !mayRunAnother(name))
        return;
    auto known = filled.find(name);
    if (known == filled.end()) {
        auto text = filledIn(*dataToExecute, line, work.searched);
        if (!text) {
            stopMacros(name, u"its text, or the line, is too long.");
            return;
        }
        known = filled.emplace(name, std::move(*text)).first;
    }
    ++depth;
    ++work.macrosRun;
    work.textSent += known->second.size();
    sender.sendMessageToServer(known->second, /*ignoreSpecials=*/false);
    --depth;
}

/// Null where there is none. Each name is looked up once in a line, and a line of many names asks the store
/// for those that exist only.
const std::u16string* ZNTCommandInterpreter::macroNamed(std::u16string_view name)
{
    auto known = work.macros.find(name);
    if (known == work.macros.end()) {
        if (!work.names && !work.macros.empty()) {
            const auto names = actions.getAllMacroNames();
            work.names.emplace(names.begin(), names.end());
        }
        if (work.names && !work.names->contains(name))
            return nullptr;
        known = work.macros.emplace(name, actions.getMacroByName(name)).first;
    }
    return known->second ? &*known->second : nullptr;
}

bool ZNTCommandInterpreter::mayRunAnother(std::u16string_view name)
{
    if (depth == mostNestedMacros)
        stopMacros(name, u"macros that run each other never came to an end.");
    else if (work.macrosRun >= mostMacros)
        stopMacros(name, u"one line can run " + znt::decimalText(mostMacros) + u" macros at most.");
    else if (work.textSent > longestText)
        stopMacros(name, u"the line's macros send too much text.");
    return !work.isStopped;
}

void ZNTCommandInterpreter::stopMacros(std::u16string_view name, std::u16string_view reason)
{
    work.isStopped = true;
    std::u16string message = u"The macro ";
    message.append(name).append(u" was stopped: ").append(reason);
    actions.insertTextIntoTheWindow(message);
}

std::optional<std::u16string> ZNTCommandInterpreter::parseMacro(std::u16string_view dataToExecute,
                                                                std::u16string_view line)
{
    std::size_t searched = 0;
    return filledIn(dataToExecute, line, searched);
}

std::u16string ZNTCommandInterpreter::replaceKey(std::u16string_view key, std::u16string_view value,
                                                 std::u16string_view text)
{
    return znt::replacedAll(text, key, value);
}
