#pragma once

#include "ZNTIcuReference.h"
#include "ZNTRecordedActions.h"
#include "ZNTTestPlatform.h"
#include "ZNTText.h"
#include "ZNTTrigger.h"
#include "ZNTTriggerList.h"

#include <optional>

/// What triggers answer if ICU alone does all the work: each expression is built, compiled and run anew, and
/// ICU puts the commands together. A template that is ill-formed ends its trigger; the matches before it
/// stand.
class ZNTTriggerReference
{
public:
    std::vector<std::u16string> commands;
    bool isGagged = false;
    bool isSlow = false; ///< a pattern took so many steps that there is no answer

    void passOver(const std::vector<ZNTTrigger>& triggers, std::u16string_view text)
    {
        for (const auto& trigger : triggers)
            if (!trigger.check.empty()) // ICU's interface for text in place takes no empty expression
                tryTrigger(trigger, text);
    }

private:
    /// Steps that ICU may take for one trigger.
    struct Patience {
        int tensOfThousands = 100;
        int attempts = 50'000;

        static Patience& of(const void* context)
        {
            return *static_cast<Patience*>(const_cast<void*>(context)); // ours, handed through ICU as const
        }
        static UBool mayGoOn(const void* context, std::int32_t) { return --of(context).tensOfThousands > 0; }
        static UBool mayAttempt(const void* context, std::int64_t) { return --of(context).attempts > 0; }
    };

    /// `action` as ICU fills it in with `group` as the template; none if that is ill-formed.
    static std::optional<std::u16string> filledIn(std::u16string_view action, const icu::UnicodeString& group)
    {
        UErrorCode status = U_ZERO_ERROR;
        icu::RegexMatcher placeholder(u"%1", 0, status);
        const auto input = znt::icu::unicodeString(action);
        placeholder.reset(input);
        const auto command = placeholder.replaceAll(group, status);
        return U_SUCCESS(status) ? std::optional(znt::icu::plainText(command)) : std::nullopt;
    }

    void tryTrigger(const ZNTTrigger& trigger, std::u16string_view text)
    {
        constexpr const char16_t* group = uR"(([\w\s]*))";
        const auto pattern = znt::replacedAll(znt::replacedAll(trigger.check, u"%1", group), u"*", group);
        UErrorCode status = U_ZERO_ERROR;
        const auto input = znt::icu::unicodeString(text);
        icu::RegexMatcher matcher(znt::icu::unicodeString(pattern), input, 0, status);
        const bool usesGroup = znt::contains(trigger.action, u"%1");
        if (U_FAILURE(status) || (usesGroup && matcher.groupCount() == 0))
            return; // cannot be used
        Patience patience;
        matcher.setMatchCallback(&Patience::mayGoOn, &patience, status);
        matcher.setFindProgressCallback(&Patience::mayAttempt, &patience, status);
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

/// Compares what `list`, which has these triggers, does with `text` with what ICU does, and with a pass in
/// many parts. Empty if they agree, or if one of them took too long.
inline std::string differenceFromIcu(const std::vector<ZNTTrigger>& triggers, ZNTTriggerList& list,
                                     ZNTRecordedLog& log, std::u16string_view text)
{
    log.lines.clear();
    ZNTTriggerReference reference;
    reference.passOver(triggers, text);
    ZNTRecordedActions actions, inParts;
    const bool isGagged = actions.passOver(list, text);
    inParts.hasTime = false; // the turn ends wherever the pass asks
    const bool isGaggedInParts = inParts.passOver(list, text);
    // On a busy machine a trigger can reach its limit of time. It answers less than it would then.
    for (const auto& line : log.lines)
        if (line.find("took too long") != std::string::npos)
            return "";
    if (reference.isSlow)
        return "";
    if (actions.done != reference.commands)
        return "the commands differ";
    if (isGagged != reference.isGagged)
        return "the gags differ";
    return inParts.done == actions.done && isGaggedInParts == isGagged ? "" : "a pass in parts differs";
}
