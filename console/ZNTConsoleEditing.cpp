#include "ZNTConsoleEditing.h"

#include "ZNTConsoleAddressBook.h"
#include "ZNTConsoleClient.h"
#include "ZNTConsoleMacroGroups.h"
#include "ZNTConsoleMacros.h"
#include "ZNTConsoleTriggers.h"

#include <memory>

void ZNTConsoleEditing::addCommands(ZNTConsoleClient& client, const Adding& add)
{
    auto& replies = client.replies();
    auto& store = client.database();
    const auto triggers = std::make_shared<ZNTConsoleTriggers>(
        replies, store, [&session = client.session()] { session.reloadTriggers(); });
    const auto groups =
        std::make_shared<ZNTConsoleMacroGroups>(replies, client.macroGroups(), client.alert());
    const auto macros = std::make_shared<ZNTConsoleMacros>(replies, store, *groups);
    const auto muds = std::make_shared<ZNTConsoleAddressBook>(replies, store);
    add("trigger", [triggers](auto words) { triggers->carryOut(words); });
    add("macro", [groups, macros](auto words) { macros->carryOut(words); });
    add("group", [groups](auto words) { groups->carryOut(words); });
    add("mud", [muds](auto words) { muds->carryOut(words); });
    add("muds", [muds](auto) { muds->list(); });
}
