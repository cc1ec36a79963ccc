#include "ZNTConsoleMacroGroups.h"

#include "ZNTAlert.h"
#include "ZNTConsoleReplies.h"
#include "ZNTConsoleVerbs.h"
#include "ZNTConsoleWords.h"

using namespace znt::words;

ZNTConsoleMacroGroups::ZNTConsoleMacroGroups(ZNTConsoleReplies& replies, ZNTMacroGroups& groups,
                                             ZNTAlert& alert)
    : replies(replies),
      groups(groups),
      alert(alert)
{
}

void ZNTConsoleMacroGroups::carryOut(std::u16string_view words)
{
    carryOutVerb(replies, u"group",
                 {{u"add", [this](auto name) { add(name); }},
                  {u"list", [this](auto) { list(); }},
                  {u"use", [this](auto name) { use(name); }},
                  {u"remove", [this](auto name) { remove(name); }}},
                 words);
}

const ZNTMacroGroup* ZNTConsoleMacroGroups::groupForNewMacro()
{
    if (!current() && !all().empty())
        nameInUse = all().front().groupName;
    return current();
}

void ZNTConsoleMacroGroups::showAlert(const ZNTMacroGroups::Message& message)
{
    alert.showMessage(message.title, message.text);
}

void ZNTConsoleMacroGroups::add(std::u16string_view name)
{
    if (name.empty()) {
        showAlert(ZNTMacroGroups::nameMissing);
        return;
    }
    if (groups.named(name)) {
        showAlert(ZNTMacroGroups::nameTaken);
        return;
    }
    const bool isStored = groups.add(name);
    groups.reload(); // a group that was not stored is not listed
    if (!isStored)
        return;
    nameInUse = name;
    showAlert(ZNTMacroGroups::created);
}

void ZNTConsoleMacroGroups::list()
{
    for (std::size_t at = 0; at < all().size(); ++at)
        replies.say(
            joined({numbered(at), all()[at].groupName, &all()[at] == current() ? u" (in use)" : u""}));
    if (all().empty())
        replies.say(u"There are no macro groups yet; /group add NAME makes one.");
}

const ZNTMacroGroup* ZNTConsoleMacroGroups::meant(std::u16string_view word)
{
    const long index = indexMeant(replies, namesOf(all(), &ZNTMacroGroup::groupName), word, u"group");
    return index < 0 ? nullptr : &all()[static_cast<std::size_t>(index)];
}

void ZNTConsoleMacroGroups::use(std::u16string_view word)
{
    const auto* group = meant(word);
    if (!group)
        return;
    nameInUse = group->groupName;
    replies.say(joined({u"New macros go into the group ", nameInUse, u"."}));
}

void ZNTConsoleMacroGroups::remove(std::u16string_view word)
{
    const auto* group = meant(word);
    if (!group)
        return;
    const auto name = group->groupName;
    nameInUse.clear();
    // If several groups have that name, the first one is removed, as by the window's selector.
    if (replies.complainUnless(groups.remove(groups.named(name)->oid)))
        replies.say(joined({u"The group ", name, u" and its macros are removed."}));
    else
        groups.reload(); // the list has lost it all the same
}
