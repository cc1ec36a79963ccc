#include "FuzzInput.h"
#include "ZNTNotedCommands.h"
#include "ZNTText.h"

#include <string>
#include <vector>

namespace
{

constexpr std::size_t mostLines = 8;

void checkTyped(ZNTNotedCommands& commands, const std::u16string& line)
{
    const auto done = commands.doneBy(line);
    require(commands.linesSent <= ZNTCommandInterpreter::mostMacros + commands.macros.size() + 1,
            "a line runs a bounded number of macros");
    const auto prefix = ZNTCommandInterpreter::hasPrefix(line) ? line.front() & 0xFF : 0;
    if (prefix == 0 || prefix == u'@')
        require(done == std::vector{u"send " + line}, "a line is sent as it stands");
    for (const auto& each : done) {
        require(prefix != u'#', "a reserved line does nothing");
        require(prefix != u'!' || each == u"stop" ||
                    each == u"walk " + ZNTSpeedWalking::routeOfLine(line)->path,
                "a walk takes the path of its line");
        require(each.size() <= line.size() + ZNTCommandInterpreter::longestText, "a macro's text is bounded");
    }
}

} // namespace

/// Lines in UTF-8: macros as "name=text" up to an empty line, then what is typed.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FuzzInput input(data, size);
    ZNTNotedCommands commands;
    for (auto line = input.field('\n'); !line.empty(); line = input.field('\n')) {
        const auto equals = line.find('=');
        commands.macros[znt::textFromUtf8(line.substr(0, equals))] =
            znt::textFromUtf8(equals == line.npos ? line : line.substr(equals + 1));
    }
    for (std::size_t typed = 0; typed < mostLines && !input.empty(); ++typed)
        checkTyped(commands, znt::textFromUtf8(input.field('\n')));
    return 0;
}
