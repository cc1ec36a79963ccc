#include "FuzzInput.h"
#include "FuzzRequire.h"
#include "ZNTLiteralFilter.h"
#include "ZNTRecordedActions.h"
#include "ZNTTestPlatform.h"
#include "ZNTTriggerList.h"
#include "ZNTTriggerReference.h"

#include <set>

namespace
{

constexpr std::size_t mostTriggers = 4;
constexpr std::size_t longestText = 2'000; ///< UTF-16 units

void checkPass(const std::vector<ZNTTrigger>& triggers, const std::u16string& text)
{
    static ZNTRecordedLog log;
    static VirtualRunLoop loop;
    static ZNTTriggerList list(log, loop); // it prepares ICU's classes of characters when it is made
    log.lines.clear();
    list.setTriggers(triggers);
    ZNTRecordedActions actions, inParts;
    const bool isGagged = actions.passOver(list, text);
    inParts.hasTime = false;
    const bool isGaggedInParts = inParts.passOver(list, text);

    ZNTTriggerReference reference;
    reference.passOver(triggers, text);
    if (reference.isSlow || hasSlowTrigger(log.lines))
        return;
    require(actions.done == reference.commands, "the triggers send what plain ICU would have them send");
    require(isGagged == reference.isGagged, "the triggers gag what plain ICU would have them gag");
    require(inParts.done == actions.done && isGaggedInParts == isGagged, "a pass in parts is the same pass");
}

void checkFilter(std::set<std::u16string> distinct, const std::u16string& text)
{
    distinct.erase(u"");
    const std::vector<std::u16string> literals(distinct.begin(), distinct.end());
    const ZNTLiteralFilter filter(literals);
    ZNTLiteralOccurrences occurrences;
    filter.search(text, occurrences);
    const std::set<std::uint32_t> found(occurrences.found().begin(), occurrences.found().end());
    for (std::uint32_t number = 0; number < literals.size(); ++number) {
        const auto& literal = literals[number];
        auto expected = text.find(literal);
        require(found.contains(number) == (expected != text.npos), "a literal is found if it occurs");
        if (expected == text.npos)
            continue;
        ZNTLiteralPlaces places(occurrences, number, literal, text);
        for (; expected != text.npos; expected = text.find(literal, expected + 1))
            require(places.next() == expected, "every place of a literal is found, in order");
        require(!places.next().has_value(), "no place is made up");
    }
}

} // namespace

/// Fields with a NUL between them, in UTF-8: check and action of each trigger, then the chunk. The second and
/// fourth trigger gag.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FuzzInput input(data, size);
    std::vector<std::u16string> fields;
    while (!input.empty() && fields.size() < 2 * mostTriggers)
        fields.push_back(znt::textFromUtf8(input.field('\0')));
    fields.push_back(znt::textFromUtf8(input.rest()));
    if (fields.back().empty())
        fields.pop_back();
    if (fields.empty())
        return 0;
    const auto text = fields.back().substr(0, longestText);
    fields.pop_back();

    std::vector<ZNTTrigger> triggers;
    for (std::size_t at = 0; at < fields.size(); at += 2) {
        ZNTTrigger trigger;
        trigger.check = fields[at];
        trigger.action = at + 1 < fields.size() ? fields[at + 1] : u"look";
        trigger.gag = triggers.size() % 2 == 1;
        triggers.push_back(trigger);
    }
    checkPass(triggers, text);
    checkFilter({fields.begin(), fields.end()}, text);
    return 0;
}
