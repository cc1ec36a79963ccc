#include "ZNTConsoleMacros.h"

#include "ZNTConsoleMacroGroups.h"
#include "ZNTConsoleReplies.h"
#include "ZNTConsoleVerbs.h"
#include "ZNTConsoleWords.h"
#include "ZNTDatabaseHelper.h"

#include <utility>

using namespace znt::words;

void ZNTConsoleMacros::carryOut(std::u16string_view words)
{
    carryOutVerb(replies, u"macro",
                 {{u"add", [this](auto rest) { add(rest); }},
                  {u"list", [this](auto) { list(); }},
                  {u"remove", [this](auto word) { remove(word); }}},
                 words);
}

void ZNTConsoleMacros::add(std::u16string_view words)
{
    const auto name = firstWord(words);
    if (name.empty() || words.empty()) {
        replies.complain(u"Say its name and what it sends: /macro add NAME TEXT");
        return;
    }
    const auto* group = groups.groupForNewMacro();
    if (!group) {
        replies.complain(u"There is no macro group yet; /group add NAME makes one.");
        return;
    }
    ZNTMacro macro{.oid = 0,
                   .groupOid = group->oid,
                   .name = std::u16string(name),
                   .dataToExecute = std::u16string(words)};
    database.insertMacroSetWithMacroGroup(macro);
    if (replies.complainUnless(database.didLastChangeSucceed()))
        replies.say(joined({u"Type ~", name, u" to run it."}));
}

std::vector<ZNTMacro> ZNTConsoleMacros::all()
{
    std::vector<ZNTMacro> macros;
    for (const auto& group : groups.all())
        for (auto& macro : database.getAllMacrosFromDatabaseByMacroGroupId(group.oid))
            macros.push_back(std::move(macro));
    return macros;
}

void ZNTConsoleMacros::list()
{
    const auto macros = all();
    for (std::size_t at = 0; at < macros.size(); ++at) {
        std::u16string group;
        for (const auto& known : groups.all())
            if (known.oid == macros[at].groupOid)
                group = known.groupName;
        replies.say(
            joined({numbered(at), u"~", macros[at].name, u" (", group, u"): ", macros[at].dataToExecute}));
    }
    if (macros.empty())
        replies.say(u"There are no macros yet; /macro add NAME TEXT makes one.");
}

void ZNTConsoleMacros::remove(std::u16string_view word)
{
    const auto macros = all();
    const long index = indexMeant(replies, namesOf(macros, &ZNTMacro::name), word, u"macro");
    if (index < 0)
        return;
    const auto& macro = macros[static_cast<std::size_t>(index)];
    database.deleteMacro(macro);
    if (replies.complainUnless(database.didLastChangeSucceed()))
        replies.say(joined({u"Macro ", macro.name, u" is removed."}));
}
