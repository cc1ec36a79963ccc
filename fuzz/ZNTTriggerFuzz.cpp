#include "FuzzInput.h"
#include "FuzzRequire.h"
#include "VirtualRunLoop.h"
#include "ZNTIcuReference.h"
#include "ZNTLiteralFilter.h"
#include "ZNTPlatformLog.h"
#include "ZNTText.h"
#include "ZNTTriggerList.h"

#include <algorithm>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace
{

constexpr std::size_t mostTriggers = 4;
constexpr std::size_t longestText = 2'000; ///< UTF-16 units

struct SilentLog final : ZNTPlatformLog {
    bool namesSlowTrigger = false;
    void log(std::string_view text) override
    {
        namesSlowTrigger |= text.find("took too long") != std::string_view::npos;
    }
};

struct Commands final : ZNTTriggerActions {
    std::vector<std::u16string> sent;
    void sendCommand(std::u16string_view command) override { sent.emplace_back(command); }
    void playTriggerSound(std::u16string_view) override {}
    [[nodiscard]] bool hasTimeForMore() override { return hasTime; }
    bool hasTime = true;
};

/// Steps that ICU may take for one answer, so that a slow pattern costs the reference no more than it costs
/// the list.
struct Patience {
    int tensOfThousands = 100;
    int attempts = 50'000;

    void bind(icu::RegexMatcher& matcher, UErrorCode& status)
    {
        matcher.setMatchCallback(
            [](const void* context, std::int32_t) -> UBool {
                return --of(context).tensOfThousands > 0 ? 1 : 0;
            },
            this, status);
        matcher.setFindProgressCallback(
            [](const void* context, std::int64_t) -> UBool { return --of(context).attempts > 0 ? 1 : 0; },
            this, status);
    }

private:
    static Patience& of(const void* context)
    {
        return *static_cast<Patience*>(const_cast<void*>(context)); // ours, handed through ICU as const
    }
};

/// `action` as ICU fills it in with `group` as the template; none where that is no template.
std::optional<std::u16string> filledIn(const std::u16string& action, const icu::UnicodeString& group)
{
    UErrorCode status = U_ZERO_ERROR;
    icu::RegexMatcher placeholder(u"%1", 0, status);
    const auto input = znt::icu::unicodeString(action);
    placeholder.reset(input);
    const auto command = placeholder.replaceAll(group, status);
    return U_SUCCESS(status) ? std::optional(znt::icu::plainText(command)) : std::nullopt;
}

/// The pass as ICU alone makes it, with nothing prepared and nothing left out. A template that is none ends
/// its trigger; the matches before it stand.
struct Reference {
    std::vector<std::u16string> commands;
    bool isGagged = false;
    bool isSlow = false;

    void tryTrigger(const ZNTTrigger& trigger, std::u16string_view text)
    {
        constexpr const char16_t* group = uR"(([\w\s]*))";
        const auto pattern = znt::replacedAll(znt::replacedAll(trigger.check, u"%1", group), u"*", group);
        if (pattern.empty()) // no expression to ICU's interface for text in place
            return;
        UErrorCode status = U_ZERO_ERROR;
        const auto input = znt::icu::unicodeString(text);
        icu::RegexMatcher matcher(znt::icu::unicodeString(pattern), input, 0, status);
        if (U_FAILURE(status))
            return;
        Patience patience;
        patience.bind(matcher, status);
        const bool usesGroup = znt::contains(trigger.action, u"%1");
        if (usesGroup && matcher.groupCount() == 0)
            return;
        std::vector<std::u16string> sent;
        bool isWellFormed = true, hasMatch = false;
        while (isWellFormed && matcher.find(status) && U_SUCCESS(status)) {
            const auto command =
                usesGroup ? filledIn(trigger.action, matcher.group(1, status)) : trigger.action;
            hasMatch = true;
            isWellFormed = command.has_value();
            if (isWellFormed)
                sent.push_back(*command);
        }
        isSlow |= status == U_REGEX_STOPPED_BY_CALLER;
        if (U_FAILURE(status))
            return;
        isGagged |= trigger.gag && hasMatch;
        commands.insert(commands.end(), sent.begin(), sent.end());
    }
};

void checkPass(const std::vector<ZNTTrigger>& triggers, const std::u16string& text)
{
    static SilentLog log;
    static VirtualRunLoop loop;
    static ZNTTriggerList list(log, loop); // it prepares ICU's classes of characters when it is made
    log.namesSlowTrigger = false;
    list.setTriggers(triggers);
    Commands commands;
    const bool isGagged = list.passOver(text, commands);
    Commands inParts;
    inParts.hasTime = false;
    const auto pass = list.startPass(text, inParts);
    while (!pass->goOn())
        continue;

    Reference reference;
    for (const auto& trigger : triggers)
        reference.tryTrigger(trigger, text);
    if (reference.isSlow || log.namesSlowTrigger)
        return;
    require(commands.sent == reference.commands, "the triggers send what plain ICU would have them send");
    require(isGagged == reference.isGagged, "the triggers gag what plain ICU would have them gag");
    require(inParts.sent == commands.sent && pass->isGagged() == isGagged,
            "a pass in parts is the same pass");
}

void checkFilter(const std::set<std::u16string>& distinct, const std::u16string& text)
{
    std::vector<std::u16string> literals;
    std::copy_if(distinct.begin(), distinct.end(), std::back_inserter(literals),
                 [](const auto& literal) { return !literal.empty(); });
    const ZNTLiteralFilter filter(literals);
    ZNTLiteralOccurrences occurrences;
    filter.search(text, occurrences);
    for (std::uint32_t number = 0; number < literals.size(); ++number) {
        const auto& literal = filter.literal(number);
        auto expected = text.find(literal);
        require(occurrences.hasFound(number) == (expected != text.npos),
                "a literal is found where it occurs");
        if (!occurrences.hasFound(number))
            continue;
        ZNTLiteralPlaces places(occurrences, number, literal, text);
        for (; expected != text.npos; expected = text.find(literal, expected + 1))
            require(places.next() == expected, "every place of a literal is found, in order");
        require(!places.next().has_value(), "no place is made up");
    }
}

} // namespace

/// Fields parted by NUL, in UTF-8: check and action of each trigger, then the chunk. The second and fourth
/// trigger gag.
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
        trigger.active = true;
        triggers.push_back(trigger);
    }
    checkPass(triggers, text);
    checkFilter({fields.begin(), fields.end()}, text);
    return 0;
}
