#include "ZNTConsoleTriggers.h"

#include "ZNTConsoleReplies.h"
#include "ZNTConsoleVerbs.h"
#include "ZNTConsoleWords.h"
#include "ZNTDatabaseHelper.h"
#include "ZNTText.h"
#include "ZNTTriggerColumns.h"
#include "ZNTTriggerPattern.h"

#include <algorithm>
#include <utility>

using namespace znt::words;

namespace
{

/// Each option with its argument: `before` "--sound FILE" `after`, and `between` two of them.
std::u16string optionNames(std::u16string_view before, std::u16string_view after, std::u16string_view between)
{
    std::u16string names;
    for (const auto& column : ZNTTriggerColumns)
        if (!column.option.empty())
            names += joined({names.empty() ? u"" : between, before, column.option,
                             column.argument.empty() ? u"" : u" ", column.argument, after});
    return names;
}

/// What a trigger does beside its answer: " (gag)", " (sound bell.wav)".
std::u16string labelsOf(const ZNTTrigger& trigger)
{
    std::u16string labels;
    for (const auto& column : ZNTTriggerColumns) {
        if (column.label.empty())
            continue;
        const auto* flag = std::get_if<bool ZNTTrigger::*>(&column.field);
        const auto* text = std::get_if<std::optional<std::u16string> ZNTTrigger::*>(&column.field);
        const auto value = text ? (trigger.**text).value_or(u"") : u"";
        if (flag ? trigger.**flag : !value.empty())
            labels += joined({u" (", column.label, value.empty() ? u"" : u" ", value, u")"});
    }
    return labels;
}

} // namespace

ZNTConsoleTriggers::ZNTConsoleTriggers(ZNTConsoleReplies& replies, ZNTDatabaseHelper& database,
                                       std::function<void()> reload)
    : replies(replies),
      database(database),
      reload(std::move(reload))
{
}

std::u16string ZNTConsoleTriggers::usage()
{
    return joined({u"add ", optionNames(u"[", u"]", u" "),
                   u" NAME: PATTERN => COMMAND | list | remove N | on N | off N"});
}

void ZNTConsoleTriggers::carryOut(std::u16string_view words)
{
    carryOutVerb(replies, u"trigger",
                 {{u"add", [this](auto rest) { add(rest); }},
                  {u"list", [this](auto) { list(); }},
                  {u"remove", [this](auto rest) { remove(rest); }},
                  {u"on", [this](auto rest) { turn(rest, true); }},
                  {u"off", [this](auto rest) { turn(rest, false); }}},
                 words);
}

void ZNTConsoleTriggers::add(std::u16string_view words)
{
    ZNTTrigger trigger;
    trigger.active = true;
    if (!readOptions(words, trigger))
        return;
    trigger.name = partBefore(u":", words);
    trigger.check = partBefore(u"=>", words);
    trigger.action = words;
    if (trigger.name.empty() || trigger.check.empty()) {
        replies.complain(u"Say what to look for and what to send: /trigger add NAME: PATTERN => COMMAND");
        return;
    }
    if (!canMatch(trigger))
        return;
    database.insertTrigger(trigger);
    // Of use with an option alone; without one "=>" may be a slip.
    const bool lacksCommand = trigger.action.empty() && labelsOf(trigger).empty();
    finishChange(trigger, lacksCommand ? u" is on, without a command; => stands before one." : u" is on.");
}

/// Takes the options of the columns from the start of `words`. Complains and returns false at any other
/// option.
bool ZNTConsoleTriggers::readOptions(std::u16string_view& words, ZNTTrigger& trigger)
{
    while (words.starts_with(u"--")) {
        const auto option = firstWord(words);
        const auto* column = std::ranges::find(ZNTTriggerColumns, option, &ZNTTriggerColumn::option);
        if (column == ZNTTriggerColumns.end() || (!column->argument.empty() && words.empty())) {
            replies.complain(joined(
                {u"There is no option ", option, u"; there are ", optionNames(u"", u"", u" and "), u"."}));
            return false;
        }
        if (const auto* flag = std::get_if<bool ZNTTrigger::*>(&column->field))
            trigger.** flag = true;
        else if (const auto* text = std::get_if<std::optional<std::u16string> ZNTTrigger::*>(&column->field))
            trigger.** text = std::u16string(firstWord(words));
    }
    return true;
}

/// The session leaves a trigger out whose pattern cannot be used.
bool ZNTConsoleTriggers::canMatch(const ZNTTrigger& trigger)
{
    const auto problem = ZNTTriggerPattern(trigger.check).problemWith(trigger.action);
    if (!problem.empty())
        replies.complain(joined({u"The pattern \"", trigger.check, u"\" cannot be used: it has ",
                                 znt::textFromUtf8(problem), u"."}));
    return problem.empty();
}

void ZNTConsoleTriggers::list()
{
    const auto all = database.loadAllTriggers();
    for (std::size_t at = 0; at < all.size(); ++at) {
        const auto& trigger = all[at];
        replies.say(joined({numbered(at), trigger.name, u": ", trigger.check, u" => ", trigger.action,
                            labelsOf(trigger), trigger.active ? u"" : u" (off)"}));
    }
    if (all.empty())
        replies.say(u"There are no triggers yet.");
}

/// Makes the session use the change that was just stored, and says so.
void ZNTConsoleTriggers::finishChange(const ZNTTrigger& trigger, std::u16string_view whatHappened)
{
    if (!replies.complainUnless(database.didLastChangeSucceed()))
        return;
    reload();
    replies.say(joined({u"Trigger ", trigger.name, whatHappened}));
}

/// Calls `change` with the trigger meant, if there is exactly one.
void ZNTConsoleTriggers::withTrigger(std::u16string_view word, const std::function<void(ZNTTrigger&)>& change)
{
    auto all = database.loadAllTriggers();
    const long index = indexMeant(replies, namesOf(all, &ZNTTrigger::name), word, u"trigger");
    if (index >= 0)
        change(all[static_cast<std::size_t>(index)]);
}

void ZNTConsoleTriggers::remove(std::u16string_view word)
{
    withTrigger(word, [this](ZNTTrigger& trigger) {
        database.deleteTrigger(trigger);
        finishChange(trigger, u" is removed.");
    });
}

void ZNTConsoleTriggers::turn(std::u16string_view word, bool on)
{
    withTrigger(word, [this, on](ZNTTrigger& trigger) {
        if (on && !canMatch(trigger))
            return;
        trigger.active = on;
        database.updateTrigger(trigger);
        finishChange(trigger, on ? u" is on." : u" is off.");
    });
}
