#include "ZNTCommandInterpreter.h"

#include "ZNTText.h"

#include <unicode/uchar.h>

namespace
{

constexpr char16_t prefixUnit(std::u16string_view line) { return line.front() & 0xFF; }

/// ICU's "\s" (its manual): the White_Space property.
bool isSpace(char16_t unit) { return u_isUWhiteSpace(unit); }

/// The words behind each `prefix` in `line`: the first groups of the matches of "~(\S+)\s?" (with the prefix
/// in place of "~"). A prefix inside a word belongs to the word.
std::vector<std::u16string_view> wordsAfter(char16_t prefix, std::u16string_view line)
{
    std::vector<std::u16string_view> words;
    for (std::size_t at = 0; (at = line.find(prefix, at)) != line.npos;) {
        const std::size_t start = ++at;
        while (at < line.size() && !isSpace(line[at]))
            ++at;
        if (at > start)
            words.push_back(line.substr(start, at - start));
    }
    return words;
}

std::size_t timesFound(std::u16string_view key, std::u16string_view text)
{
    std::size_t times = 0;
    for (std::size_t at = 0; (at = text.find(key, at)) != text.npos; at += key.size())
        ++times;
    return times;
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
        for (const auto word : wordsAfter(u'!', line)) {
            if (word == u"stop")
                actions.stopSpeedwalk();
            else
                actions.speedwalk(line);
        }
        break;
    case u'@':
        sender.sendMessageToServer(line, /*ignoreSpecials=*/true);
        break;
    case u'~':
        for (const auto word : wordsAfter(u'~', line))
            runMacroOrList(word, line);
        break;
    default:
        break; // "#" is reserved
    }
}

void ZNTCommandInterpreter::runMacroOrList(std::u16string_view name, std::u16string_view line)
{
    if (name != u"list-macro") {
        runMacro(name, line);
        return;
    }
    for (const auto& macro : actions.getAllMacroNames()) {
        actions.insertTextIntoTheWindow(u"Macro Names");
        actions.insertTextIntoTheWindow(macro);
        actions.insertTextIntoTheWindow(u"End of Macro Names");
    }
}

void ZNTCommandInterpreter::runMacro(std::u16string_view name, std::u16string_view line)
{
    if (isStopped)
        return;
    const auto dataToExecute = actions.getMacroByName(name);
    if (!dataToExecute)
        return;
    if (depth == 0)
        macrosRun = 0;
    if (depth == mostNestedMacros || macrosRun == mostMacros) {
        stopMacros(name, u"macros that run each other never came to an end.");
        return;
    }
    const auto text = parseMacro(*dataToExecute, line);
    if (!text) {
        stopMacros(name, u"its text, or the line, is too long.");
        return;
    }
    ++depth;
    ++macrosRun;
    sender.sendMessageToServer(*text, /*ignoreSpecials=*/false);
    if (--depth == 0)
        isStopped = false;
}

void ZNTCommandInterpreter::stopMacros(std::u16string_view name, std::u16string_view reason)
{
    isStopped = depth > 0;
    std::u16string message = u"The macro ";
    message.append(name).append(u" was stopped: ").append(reason);
    actions.insertTextIntoTheWindow(message);
}

std::optional<std::u16string> ZNTCommandInterpreter::parseMacro(std::u16string_view dataToExecute,
                                                                std::u16string_view line)
{
    std::u16string text(dataToExecute);
    if (!znt::contains(text, u"%1"))
        return text;
    std::int64_t number = 0;
    std::size_t searched = 0;
    for (std::size_t end = line.find(u' '); end != line.npos;) {
        if (text.find(u'%') == text.npos) // no key is left for the words to come
            break;
        searched += text.size();
        const std::size_t start = end + 1;
        end = line.find(u' ', start);
        const auto piece = line.substr(start, end == line.npos ? line.npos : end - start);
        const auto key = u"%" + znt::decimalText(++number);
        if (searched > mostSearched || text.size() + timesFound(key, text) * piece.size() > longestText)
            return std::nullopt;
        text = replaceKey(key, piece, text);
    }
    return text;
}

std::u16string ZNTCommandInterpreter::replaceKey(std::u16string_view key, std::u16string_view value,
                                                 std::u16string_view text)
{
    return znt::replacedAll(text, key, value);
}
