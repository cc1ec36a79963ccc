#include "ZNTParserUtility.h"

#include "ZNTSoundTagScanner.h"
#include "ZNTTelnetScanner.h"

#include <array>
#include <cstdint>
#include <utility>

namespace
{

using namespace znt::telnet;

/// How an offer is answered.
enum class Answer : std::uint8_t { None, Refuse, Wont, EndOfRecord, CompressionV2, Sound };

constexpr std::array<Answer, 256> answersToOffers = [] {
    std::array<Answer, 256> answers{};
    using namespace option;
    for (const auto refused : {SuppressGoAhead, WindowSize, Msdp, Mssp, CompressionV1, Mxp, Zmp, Atcp, Gmcp})
        answers[refused] = Answer::Refuse;
    for (const auto declined : {TerminalType, Charset, OwnChannel})
        answers[declined] = Answer::Wont;
    answers[EndOfRecord] = Answer::EndOfRecord;
    answers[CompressionV2] = Answer::CompressionV2;
    answers[Sound] = Answer::Sound;
    return answers;
}();

} // namespace

ZNTTelnetAnswers ZNTParserUtility::processServerCommands(std::u16string_view text)
{
    answers.isRelease = forEachCommand(text, [this](auto command) { processServerCommand(command); });
    return std::exchange(answers, {});
}

void ZNTParserUtility::processServerCommand(std::u16string_view command)
{
    if (command.size() < 2)
        return;
    switch (command[1]) {
    case EOR:
    case GA:
        answers.isGoAhead = true;
        break;
    case SE:
        answers.isEndOfNegotiations = true;
        break;
    case WILL:
        processServerOptionForWill(command);
        break;
    default:
        break;
    }
}

void ZNTParserUtility::processServerOptionForWill(std::u16string_view command)
{
    if (command.size() < 3 || command[2] > 255)
        return;
    const char16_t option = command[2];
    switch (answersToOffers[option]) {
    case Answer::None:
        break;
    case Answer::Refuse:
        sendCommand(Refusal, option);
        break;
    case Answer::Wont:
        sendCommand(WONT, option);
        break;
    case Answer::EndOfRecord:
        answers.isGoAhead = true;
        sendCommand(DO, option);
        break;
    case Answer::CompressionV2:
        sendCommand(_isMccpOnOff_ ? DO : Refusal, option);
        break;
    case Answer::Sound:
        sendCommand(_isMspOnOff_ ? DO : Refusal, option);
        break;
    }
}

void ZNTParserUtility::sendCommand(char16_t command, char16_t option)
{
    answers.replies += {static_cast<char>(IAC), static_cast<char>(command), static_cast<char>(option)};
}

std::string ZNTParserUtility::takeReplies() { return std::exchange(answers.replies, {}); }

bool ZNTParserUtility::isGoAhead(std::u16string_view command)
{
    if (command.size() < 2)
        return false;
    switch (command[1]) {
    case Refusal:
    case EOR:
    case GA:
    case WONT:
        return true;
    case WILL:
        processServerOptionForWill(command);
        return false;
    default:
        return false;
    }
}

std::optional<std::u16string_view> ZNTParserUtility::soundTag(std::u16string_view text) const
{
    return _isMspOnOff_ ? znt::nextSoundTag(text) : std::nullopt;
}

ZNTAttributedText ZNTParserUtility::processIncomingStream(std::u16string text) const
{
    stripCommands(text);
    znt::stripSoundTags(text);
    return colourParser.attributedText(std::move(text));
}

void ZNTParserUtility::stripCommands(std::u16string& text)
{
    znt::telnet::stripCommands(text);
    if (text == u"m") // what is left of a colour sequence that two blocks shared
        text.clear();
}

std::string ZNTParserUtility::charCodeString(std::u16string_view text)
{
    std::string codes;
    for (const auto unit : text)
        codes += ' ' + std::to_string(static_cast<unsigned>(unit));
    return codes;
}
