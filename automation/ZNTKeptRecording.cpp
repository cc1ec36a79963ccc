#include "ZNTKeptRecording.h"

#include "ZNTText.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace
{

/// The file is XML in UTF-8. It has no place for control characters and half characters.
bool canBeStored(std::u16string_view text)
{
    const auto isControl = [](char16_t unit) { return (unit < 0x20 && unit != u'\t') || unit == 0x7F; };
    return std::ranges::none_of(text, isControl) && znt::textFromUtf8(znt::utf8FromText(text)) == text;
}

ZNTError sentence(std::string words)
{
    return {.domain = "recording", .code = 0, .description = std::move(words)};
}

std::string numbered(std::size_t index) { return "Command " + std::to_string(index + 1); }

ZNTResult<void> checkName(std::u16string_view name)
{
    if (name.empty() || znt::trimmedOfWhitespace(name) != name)
        return sentence("A recording needs a name, without blanks at its ends.");
    if (name.size() > ZNTKeptRecording::longestName || !canBeStored(name))
        return sentence("The name of a recording is one line of at most " +
                        std::to_string(ZNTKeptRecording::longestName) + " characters.");
    return {};
}

ZNTResult<void> checkCommands(const std::vector<std::u16string>& commands)
{
    if (commands.empty())
        return sentence("A recording needs at least one command.");
    if (commands.size() > ZNTKeptRecording::mostCommands)
        return sentence("A recording holds at most " + std::to_string(ZNTKeptRecording::mostCommands) +
                        " commands, not " + std::to_string(commands.size()) + ".");
    for (std::size_t at = 0; at < commands.size(); ++at) {
        if (commands[at].size() > ZNTKeptRecording::longestCommand)
            return sentence(numbered(at) + " is longer than " +
                            std::to_string(ZNTKeptRecording::longestCommand) + " characters.");
        if (!canBeStored(commands[at]))
            return sentence(numbered(at) + " holds a control character, which cannot be kept.");
    }
    return {};
}

ZNTResult<void> checkSeconds(double seconds)
{
    if (seconds >= ZNTKeptRecording::leastSeconds && seconds <= ZNTKeptRecording::mostSeconds)
        return {};
    return sentence("The seconds between commands are a number from 0.1 to 3600."); // also if it is no number
}

} // namespace

ZNTResult<void> znt::checkRecording(const ZNTKeptRecording& recording)
{
    for (const auto& checked :
         {checkName(recording.name), checkSeconds(recording.seconds), checkCommands(recording.commands)})
        if (!checked)
            return checked;
    return {};
}

/// The C library's numbers follow the language of the desktop. These do not.
ZNTResult<double> znt::secondsTyped(std::u16string_view text)
{
    auto typed = utf8FromText(trimmedOfWhitespace(text));
    std::ranges::replace(typed, ',', '.');
    double seconds = typed.empty() ? 1 : 0;
    const auto* end = typed.data() + typed.size();
    if (const auto read = std::from_chars(typed.data(), end, seconds, std::chars_format::fixed);
        !typed.empty() && (read.ec != std::errc() || read.ptr != end))
        seconds = 0;
    if (const auto checked = checkSeconds(seconds); !checked)
        return checked.error();
    return seconds;
}

std::u16string znt::secondsText(double seconds)
{
    std::array<char, 32> digits{};
    const auto written =
        std::to_chars(digits.data(), digits.data() + digits.size(), seconds, std::chars_format::fixed);
    return textFromUtf8(std::string_view(digits.data(), written.ptr));
}

std::u16string znt::recordingInWords(const ZNTKeptRecording& recording)
{
    const auto commands = recording.commands.size();
    return recording.name + u": " + decimalText(static_cast<std::int64_t>(commands)) +
           (commands == 1 ? u" command, " : u" commands, ") + secondsText(recording.seconds) +
           (recording.seconds == 1 ? u" second between them" : u" seconds between them");
}
