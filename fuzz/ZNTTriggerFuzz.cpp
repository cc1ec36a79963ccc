#include "FuzzInput.h"
#include "ZNTTriggerReference.h"

namespace
{

constexpr std::size_t mostTriggers = 4;
constexpr std::size_t longestText = 2'000; ///< UTF-16 units

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
    static ZNTRecordedLog log;
    static VirtualRunLoop loop;
    static ZNTTriggerList list(log, loop); // it prepares ICU's classes of characters when it is made
    list.setTriggers(triggers);
    require(differenceFromIcu(triggers, list, log, text).empty(), "triggers do what ICU alone would do");
    return 0;
}
