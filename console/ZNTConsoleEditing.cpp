#include "ZNTConsoleEditing.h"

#include "ZNTConsoleAddressBook.h"
#include "ZNTConsoleClient.h"
#include "ZNTConsoleMacroGroups.h"
#include "ZNTConsoleMacros.h"
#include "ZNTConsoleTriggers.h"

#include <memory>

void ZNTConsoleEditing::addCommands(ZNTConsoleClient& client, std::vector<ZNTConsoleCommand>& commands)
{
    auto& replies = client.replies();
    auto& store = client.database();
    const auto triggers = std::make_shared<ZNTConsoleTriggers>(
        replies, store, [&session = client.session()] { session.reloadTriggers(); });
    const auto groups =
        std::make_shared<ZNTConsoleMacroGroups>(replies, client.macroGroups(), client.alert());
    const auto macros = std::make_shared<ZNTConsoleMacros>(replies, store, *groups);
    const auto muds = std::make_shared<ZNTConsoleAddressBook>(replies, store);
    commands.insert(
        commands.end(),
        {{u"trigger", ZNTConsoleTriggers::usage(),
          u"Answers the game's text by itself; %1 and * in the pattern stand for words.",
          [triggers](auto words) { triggers->carryOut(words); }},
         {u"macro", u"add NAME TEXT | list | remove N",
          u"Keeps texts that ~NAME sends; %1 is the first word after it.",
          [groups, macros](auto words) { macros->carryOut(words); }},
         {u"group", u"add NAME | list | use N | remove N",
          u"Keeps macros in groups; new ones go into the one in use.",
          [groups](auto words) { groups->carryOut(words); }},
         {u"mud", u"add NAME HOST PORT | list | remove N | default N | restore", u"Edits the address book.",
          [muds](auto words) { muds->carryOut(words); }},
         {u"muds", u"", u"Lists the games of the address book.", [muds](auto) { muds->list(); }}});
}
