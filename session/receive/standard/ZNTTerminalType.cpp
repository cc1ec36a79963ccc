#include "ZNTTerminalType.h"

#include "ZNTTelnetCodes.h"
#include "ZNTTelnetMessages.h"

#include <utility>

namespace
{

/// MTTS.
enum AbilityBit : int { Ansi = 1, Utf8 = 4, Colours256 = 8, ScreenReader = 64, TrueColours = 256 };

std::string abilityBits(const ZNTTerminalType::Abilities& abilities)
{
    const int bits = Ansi | (abilities.isUtf8 ? Utf8 : 0) |
                     (abilities.fullColours ? Colours256 | TrueColours : 0) |
                     (abilities.hasScreenReader ? ScreenReader : 0);
    return "MTTS " + std::to_string(bits);
}

} // namespace

std::string ZNTTerminalType::agree(const Abilities& abilities)
{
    asked = 0;
    return std::exchange(isAskedTooEarly, false) ? answer(abilities) : std::string();
}

std::string ZNTTerminalType::ask(bool isAgreed, const Abilities& abilities)
{
    isAskedTooEarly = !isAgreed;
    return isAgreed ? answer(abilities) : std::string();
}

std::string ZNTTerminalType::answer(const Abilities& abilities)
{
    if (answers >= mostAnswers)
        return {};
    ++answers;
    using namespace znt::telnet;
    std::string content(1, static_cast<char>(terminaltype::Is));
    switch (asked) {
    case 0:
        content += "ZANTOR";
        break;
    case 1:
        content += abilities.fullColours ? "ANSI-TRUECOLOR" : "ANSI";
        break;
    default:
        content += abilityBits(abilities);
        break;
    }
    asked = (asked + 1) % 4;
    return subnegotiation(option::TerminalType, content);
}
