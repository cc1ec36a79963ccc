#include "ZNTConsoleTriggers.h"

#include "ZNTConsoleReplies.h"
#include "ZNTConsoleVerbs.h"
#include "ZNTConsoleWords.h"
#include "ZNTDatabaseHelper.h"

#include <utility>

using namespace znt::words;

ZNTConsoleTriggers::ZNTConsoleTriggers(ZNTConsoleReplies& replies, ZNTDatabaseHelper& database,
                                       std::function<void()> reload)
    : replies(replies),
      database(database),
      reload(std::move(reload))
{
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
    database.insertTrigger(trigger);
    finishChange(trigger, u" is on.");
}

/// Takes "--gag" and "--sound FILE" from the start of `words`. Complains and returns false at any other
/// option.
bool ZNTConsoleTriggers::readOptions(std::u16string_view& words, ZNTTrigger& trigger)
{
    while (words.starts_with(u"--")) {
        const auto option = firstWord(words);
        if (option == u"--gag") {
            trigger.gag = true;
        } else if (option == u"--sound" && !words.empty()) {
            trigger.soundFileToPlay = std::u16string(firstWord(words));
        } else {
            replies.complain(
                joined({u"There is no option ", option, u"; there are --gag and --sound FILE."}));
            return false;
        }
    }
    return true;
}

void ZNTConsoleTriggers::list()
{
    const auto all = database.loadAllTriggers();
    for (std::size_t at = 0; at < all.size(); ++at) {
        const auto& trigger = all[at];
        const auto sound = trigger.soundFileToPlay.value_or(u"");
        replies.say(joined({numbered(at), trigger.name, u": ", trigger.check, u" => ", trigger.action,
                            trigger.gag ? u" (gag)" : u"", sound.empty() ? u"" : u" (sound ", sound,
                            sound.empty() ? u"" : u")", trigger.active ? u"" : u" (off)"}));
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
        trigger.active = on;
        database.updateTrigger(trigger);
        finishChange(trigger, on ? u" is on." : u" is off.");
    });
}
