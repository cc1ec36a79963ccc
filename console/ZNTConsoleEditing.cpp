#include "ZNTConsoleEditing.h"

#include "ZNTConsoleClient.h"
#include "ZNTConsoleWords.h"
#include "ZNTMudListArrayController.h"

#include <memory>
#include <optional>

namespace
{

using namespace znt::words;
using std::u16string_view;

std::u16string numbered(std::size_t index)
{
    return joined({znt::decimalText(static_cast<std::int64_t>(index) + 1), u". "});
}

/// The index in `list` that `word` means: a number as the list shows it, or the name of exactly one entry.
/// Complains, and gives -1, where it means none or several.
template <typename List, typename NameOf>
long indexMeant(ZNTConsoleClient& client, const List& list, u16string_view word, u16string_view kind,
                NameOf nameOf)
{
    if (const int number = wholeNumber(word); number > 0 && number <= static_cast<int>(list.size()))
        return number - 1;
    long found = -1;
    for (std::size_t at = 0; at < list.size(); ++at) {
        if (nameOf(list[at]) != word)
            continue;
        if (found >= 0) {
            client.complain(joined({u"Several ", kind, u"s are called ", word, u"; say its number."}));
            return -1;
        }
        found = static_cast<long>(at);
    }
    if (found < 0)
        client.complain(word.empty() ? joined({u"Say which ", kind, u": its number or its name."})
                                     : joined({u"There is no ", kind, u" ", word, u"."}));
    return found;
}

/// Whether the store kept the change that was made last. The store fails in silence; a player is told that
/// what was typed is not kept.
bool wasStored(ZNTConsoleClient& client)
{
    if (client.database().didLastChangeSucceed())
        return true;
    client.complain(u"This could not be stored; nothing has changed.");
    return false;
}

/// One of a command's words: "add" of "/trigger add". Complains where there is no such word.
struct Verb {
    u16string_view name;
    std::function<void(u16string_view words)> carryOut;
};

void carryOutVerb(ZNTConsoleClient& client, u16string_view command, const std::vector<Verb>& verbs,
                  u16string_view words)
{
    const auto name = firstWord(words);
    std::u16string choices;
    for (const auto& verb : verbs) {
        if (verb.name == name) {
            verb.carryOut(words);
            return;
        }
        choices += joined({choices.empty() ? u"" : u"|", verb.name});
    }
    client.complain(
        joined({u"Say what to do: /", command, u" ", choices, u"; /help ", command, u" tells more."}));
}

class Triggers
{
public:
    explicit Triggers(ZNTConsoleClient& client) : client(client) {}

    void carryOut(u16string_view words)
    {
        carryOutVerb(client, u"trigger",
                     {{u"add", [this](auto rest) { add(rest); }},
                      {u"list", [this](auto) { list(); }},
                      {u"remove", [this](auto rest) { remove(rest); }},
                      {u"on", [this](auto rest) { turn(rest, true); }},
                      {u"off", [this](auto rest) { turn(rest, false); }}},
                     words);
    }

private:
    void add(u16string_view words)
    {
        ZNTTrigger trigger;
        trigger.active = true;
        while (words.starts_with(u"--")) {
            const auto option = firstWord(words);
            if (option == u"--gag") {
                trigger.gag = true;
            } else if (option == u"--sound" && !words.empty()) {
                trigger.soundFileToPlay = std::u16string(firstWord(words));
            } else {
                client.complain(
                    joined({u"There is no option ", option, u"; there are --gag and --sound FILE."}));
                return;
            }
        }
        trigger.name = partBefore(u":", words);
        trigger.check = partBefore(u"=>", words);
        trigger.action = words;
        if (trigger.name.empty() || trigger.check.empty()) {
            client.complain(u"Say what to look for and what to send: /trigger add NAME: PATTERN => COMMAND");
            return;
        }
        client.database().insertTrigger(trigger);
        sayOfStored(trigger, u" is on.");
    }

    void list()
    {
        const auto all = client.database().loadAllTriggers();
        for (std::size_t at = 0; at < all.size(); ++at) {
            const auto& trigger = all[at];
            const auto sound = trigger.soundFileToPlay.value_or(u"");
            client.say(joined({numbered(at), trigger.name, u": ", trigger.check, u" => ", trigger.action,
                               trigger.gag ? u" (gag)" : u"", sound.empty() ? u"" : u" (sound ", sound,
                               sound.empty() ? u"" : u")", trigger.active ? u"" : u" (off)"}));
        }
        if (all.empty())
            client.say(u"There are no triggers yet.");
    }

    /// Puts the change that was just stored into force, and says so.
    void sayOfStored(const ZNTTrigger& trigger, u16string_view whatHappened)
    {
        if (!wasStored(client))
            return;
        client.session().reloadTriggers();
        client.say(joined({u"Trigger ", trigger.name, whatHappened}));
    }

    /// Runs `change` on the trigger meant.
    template <typename Change>
    void withTrigger(u16string_view word, Change change)
    {
        auto all = client.database().loadAllTriggers();
        const long index =
            indexMeant(client, all, word, u"trigger", [](const ZNTTrigger& t) { return t.name; });
        if (index >= 0)
            change(all[static_cast<std::size_t>(index)]);
    }

    void remove(u16string_view word)
    {
        withTrigger(word, [this](ZNTTrigger& trigger) {
            client.database().deleteTrigger(trigger);
            sayOfStored(trigger, u" is removed.");
        });
    }

    void turn(u16string_view word, bool on)
    {
        withTrigger(word, [this, on](ZNTTrigger& trigger) {
            trigger.active = on;
            client.database().updateTrigger(trigger);
            sayOfStored(trigger, on ? u" is on." : u" is off.");
        });
    }

    ZNTConsoleClient& client;
};

/// Groups are chosen through the same selector that the window has; what it answers comes as alerts.
class Groups
{
public:
    explicit Groups(ZNTConsoleClient& client) : client(client) {}

    void carryOut(u16string_view words)
    {
        carryOutVerb(client, u"group",
                     {{u"add", [this](auto name) { add(name); }},
                      {u"list", [this](auto) { list(); }},
                      {u"use", [this](auto name) { use(name); }},
                      {u"remove", [this](auto name) { remove(name); }}},
                     words);
    }

    void select(u16string_view name)
    {
        client.groupBox().setText(name);
        client.macroGroups().setCurrentValueInComboBox(name);
    }

private:
    void add(u16string_view name)
    {
        const auto before = client.macroGroups().currentValueInComboBox();
        select(name);
        const bool isRefused = name.empty() || client.macroGroups().getCurrentMacroGroup();
        // The selector announces a group that could not be stored, too, and the log says that it was not.
        client.holdAlerts();
        client.macroGroups().createNewMacroGroup();
        const bool isMade = !isRefused && client.database().didLastChangeSucceed();
        client.releaseAlerts(/*areShown=*/isRefused || isMade);
        if (!isMade)
            select(before);
    }

    void list()
    {
        const auto& groups = client.macroGroups().macroGroups();
        const auto* current = client.macroGroups().getCurrentMacroGroup();
        for (std::size_t at = 0; at < groups.size(); ++at)
            client.say(
                joined({numbered(at), groups[at].groupName, &groups[at] == current ? u" (in use)" : u""}));
        if (groups.empty())
            client.say(u"There are no macro groups yet; /group add NAME makes one.");
    }

    [[nodiscard]] const ZNTMacroGroup* meant(u16string_view word)
    {
        const auto& groups = client.macroGroups().macroGroups();
        const long index =
            indexMeant(client, groups, word, u"group", [](const ZNTMacroGroup& g) { return g.groupName; });
        return index < 0 ? nullptr : &groups[static_cast<std::size_t>(index)];
    }

    void use(u16string_view word)
    {
        if (const auto* group = meant(word)) {
            select(std::u16string(group->groupName));
            client.say(joined(
                {u"New macros go into the group ", client.macroGroups().currentValueInComboBox(), u"."}));
        }
    }

    void remove(u16string_view word)
    {
        const auto* group = meant(word);
        if (!group)
            return;
        const auto name = group->groupName;
        select(name);
        client.macroGroups().deleteMacroGroup();
        select(u"");
        if (wasStored(client))
            client.say(joined({u"The group ", name, u" and its macros are removed."}));
        else
            client.rereadMacroGroups(); // the selector has dropped it all the same
    }

    ZNTConsoleClient& client;
};

class Macros
{
public:
    Macros(ZNTConsoleClient& client, Groups& groups) : client(client), groups(groups) {}

    void carryOut(u16string_view words)
    {
        carryOutVerb(client, u"macro",
                     {{u"add", [this](auto rest) { add(rest); }},
                      {u"list", [this](auto) { list(); }},
                      {u"remove", [this](auto word) { remove(word); }}},
                     words);
    }

private:
    void add(u16string_view words)
    {
        const auto name = firstWord(words);
        if (name.empty() || words.empty()) {
            client.complain(u"Say its name and what it sends: /macro add NAME TEXT");
            return;
        }
        const auto* group = currentGroup();
        if (!group) {
            client.complain(u"There is no macro group yet; /group add NAME makes one.");
            return;
        }
        ZNTMacro macro{.oid = 0,
                       .groupOid = group->oid,
                       .name = std::u16string(name),
                       .dataToExecute = std::u16string(words)};
        client.database().insertMacroSetWithMacroGroup(macro);
        if (wasStored(client))
            client.say(joined({u"Type ~", name, u" to run it."}));
    }

    /// The group in use, or the first one.
    const ZNTMacroGroup* currentGroup()
    {
        if (const auto* group = client.macroGroups().getCurrentMacroGroup())
            return group;
        if (client.macroGroups().macroGroups().empty())
            return nullptr;
        groups.select(std::u16string(client.macroGroups().macroGroups().front().groupName));
        return client.macroGroups().getCurrentMacroGroup();
    }

    std::vector<ZNTMacro> all()
    {
        std::vector<ZNTMacro> macros;
        for (const auto& group : client.macroGroups().macroGroups())
            for (auto& macro : client.database().getAllMacrosFromDatabaseByMacroGroupId(group.oid))
                macros.push_back(std::move(macro));
        return macros;
    }

    void list()
    {
        const auto macros = all();
        for (std::size_t at = 0; at < macros.size(); ++at) {
            std::u16string group;
            for (const auto& known : client.macroGroups().macroGroups())
                if (known.oid == macros[at].groupOid)
                    group = known.groupName;
            client.say(joined(
                {numbered(at), u"~", macros[at].name, u" (", group, u"): ", macros[at].dataToExecute}));
        }
        if (macros.empty())
            client.say(u"There are no macros yet; /macro add NAME TEXT makes one.");
    }

    void remove(u16string_view word)
    {
        const auto macros = all();
        const long index =
            indexMeant(client, macros, word, u"macro", [](const ZNTMacro& m) { return m.name; });
        if (index < 0)
            return;
        const auto& macro = macros[static_cast<std::size_t>(index)];
        client.database().deleteMacro(macro);
        if (wasStored(client))
            client.say(joined({u"Macro ", macro.name, u" is removed."}));
    }

    ZNTConsoleClient& client;
    Groups& groups;
};

/// The address book, by the rules of its sheet.
class Muds
{
public:
    explicit Muds(ZNTConsoleClient& client) : client(client) { reread(); }

    void carryOut(u16string_view words)
    {
        carryOutVerb(client, u"mud",
                     {{u"add", [this](auto rest) { add(rest); }},
                      {u"list", [this](auto) { list(); }},
                      {u"remove", [this](auto word) { remove(word); }},
                      {u"default", [this](auto word) { makeDefault(word); }},
                      {u"restore",
                       [this](auto) {
                           book->restoreSystemMudList();
                           if (wasStored(client))
                               client.say(u"Every game is listed again.");
                       }}},
                     words);
    }

    void list()
    {
        for (long row = 0; row < book->numberOfRowsInTableView(); ++row) {
            const auto& mud = *book->objectAtIndex(row);
            client.say(joined({numbered(static_cast<std::size_t>(row)), mud.name, u": ", mud.telnetURL, u" ",
                               znt::decimalText(mud.port), mud.defaultConnection ? u" (default)" : u""}));
        }
        if (book->numberOfRowsInTableView() == 0)
            client.say(u"The address book is empty; /mud restore lists the removed games again.");
    }

private:
    /// Lets the book's buttons work on a row as the table's selection does.
    struct Selection final : ZNTTableView {
        explicit Selection(ZNTMudListArrayController& book, long row) : book(book), row(row)
        {
            book.set_tableView(this);
        }
        ~Selection() override { book.set_tableView(nullptr); }
        void reloadData() override {}
        [[nodiscard]] long selectedRow() const override { return row; }
        void abortEditing() override {}
        void scrollToEndOfTable() override {}
        ZNTMudListArrayController& book;
        long row;
    };

    void add(u16string_view words)
    {
        const auto lastBlank = words.rfind(u' ');
        auto port = 0;
        u16string_view host;
        if (lastBlank != words.npos) {
            port = portNumber(words.substr(lastBlank + 1));
            words = znt::trimmedOfWhitespace(words.substr(0, lastBlank));
            const auto beforeHost = words.rfind(u' ');
            host = beforeHost == words.npos ? u16string_view() : words.substr(beforeHost + 1);
            words = beforeHost == words.npos ? words : znt::trimmedOfWhitespace(words.substr(0, beforeHost));
        }
        if (port == 0 || host.empty()) {
            client.complain(u"Say its name, its host and a port from 1 to 65535: /mud add NAME HOST PORT");
            return;
        }
        ZNTMudList mud;
        mud.name = words;
        mud.telnetURL = host;
        mud.port = port;
        client.database().addNewRowMudList(mud);
        if (!wasStored(client))
            return;
        client.say(joined({mud.name, u" is in the address book."}));
        book->add(std::move(mud));
    }

    long meant(u16string_view word)
    {
        std::vector<ZNTMudList> muds;
        for (long row = 0; row < book->numberOfRowsInTableView(); ++row)
            muds.push_back(*book->objectAtIndex(row));
        return indexMeant(client, muds, word, u"game", [](const ZNTMudList& mud) { return mud.name; });
    }

    void remove(u16string_view word)
    {
        const long row = meant(word);
        if (row < 0)
            return;
        const auto name = book->objectAtIndex(row)->name;
        {
            const Selection selection(*book, row);
            book->deleteSelectedRow();
        }
        if (wasStored(client))
            client.say(joined({name, u" is listed no more; /mud restore brings it back."}));
        else
            reread();
    }

    void makeDefault(u16string_view word)
    {
        const long row = meant(word);
        if (row < 0)
            return;
        book->tableViewSetObjectValue(true, "defaultConnection", row);
        if (wasStored(client))
            client.say(joined(
                {book->objectAtIndex(row)->name, u" is offered from now on when the program starts."}));
        else
            reread();
    }

    /// The list changes with each command, stored or not; after one that was not stored it is read again.
    void reread() { book.emplace(client.database()); }

    ZNTConsoleClient& client;
    std::optional<ZNTMudListArrayController> book;
};

} // namespace

void ZNTConsoleEditing::addCommands(ZNTConsoleClient& client, std::vector<ZNTConsoleCommand>& commands)
{
    const auto triggers = std::make_shared<Triggers>(client);
    const auto groups = std::make_shared<Groups>(client);
    const auto macros = std::make_shared<Macros>(client, *groups);
    const auto muds = std::make_shared<Muds>(client);
    commands.insert(
        commands.end(),
        {{u"trigger", u"add [--gag] [--sound FILE] NAME: PATTERN => COMMAND | list | remove N | on N | off N",
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
