#include "ZNTRecordsImport.h"

#include "ZNTDatabaseHelper.h"
#include "ZNTText.h"

#include <initializer_list>
#include <map>
#include <set>
#include <utility>

using namespace znt::exchange;

namespace
{

/// One text for several, so that different ones never make the same text.
std::u16string keyOf(std::initializer_list<std::u16string_view> texts)
{
    std::u16string key;
    for (const auto text : texts)
        key += znt::decimalText(static_cast<std::int64_t>(text.size())) + u":" + std::u16string(text);
    return key;
}

std::u16string keyOf(const ZNTTrigger& trigger)
{
    return keyOf({trigger.name, trigger.check, trigger.action, trigger.soundFileToPlay ? u"sound" : u"none",
                  trigger.soundFileToPlay.value_or(u""), trigger.gag ? u"gag" : u""});
}

std::u16string keyOf(const ZNTMacro& macro)
{
    return keyOf({znt::decimalText(macro.groupOid), macro.name, macro.dataToExecute});
}

std::u16string keyOf(const ZNTMudList& game)
{
    return keyOf({game.name, game.telnetURL, znt::decimalText(game.port)});
}

/// Blanks around a group's name do not count, as in the list of groups.
std::u16string keyOf(const ZNTMacroGroup& group)
{
    return std::u16string(znt::trimmedOfBlanks(group.groupName));
}

class Import
{
public:
    Import(ZNTDatabaseHelper& database, Imported& report) : database(database), report(report) {}

    bool add(const ZNTRecords& records)
    {
        const auto stored = database.allRecords();
        if (!stored)
            return false;
        noteStored(*stored);
        for (const auto& trigger : records.triggers)
            addTrigger(trigger);
        for (const auto& group : records.groups)
            addGroup(group);
        for (const auto& game : records.games)
            addGame(game);
        return isEveryChangeStored;
    }

private:
    void noteStored(const ZNTRecords& stored)
    {
        for (const auto& trigger : stored.triggers)
            triggers.insert(keyOf(trigger));
        for (const auto& group : stored.groups) {
            groups.try_emplace(keyOf(group), group.oid); // of several, the first is the one that is shown
            for (const auto& macro : group.macrosList)
                macros.insert(keyOf(macro));
        }
        for (const auto& game : stored.games) {
            games.try_emplace(keyOf(game), game);
            hasDefault = hasDefault || game.defaultConnection;
        }
    }

    void noteChange() { isEveryChangeStored = isEveryChangeStored && database.didLastChangeSucceed(); }

    void addTrigger(ZNTTrigger trigger)
    {
        if (!triggers.insert(keyOf(trigger)).second) {
            ++report.alreadyThere.triggers;
            return;
        }
        database.insertTrigger(trigger);
        noteChange();
        ++report.added.triggers;
        report.triggers.push_back(std::move(trigger));
    }

    void addGroup(const ZNTMacroGroup& group)
    {
        const auto [known, isNew] = groups.try_emplace(keyOf(group), 0);
        if (isNew) {
            ZNTMacroGroup made = group;
            database.insertMacroGroup(made);
            noteChange();
            known->second = made.oid;
        }
        const auto before = report.added.macros;
        for (auto macro : group.macrosList) {
            macro.groupOid = known->second;
            addMacro(macro);
        }
        ++(isNew || report.added.macros > before ? report.added : report.alreadyThere).groups;
    }

    void addMacro(ZNTMacro& macro)
    {
        if (!macros.insert(keyOf(macro)).second) {
            ++report.alreadyThere.macros;
            return;
        }
        database.insertMacroSetWithMacroGroup(macro);
        noteChange();
        ++report.added.macros;
    }

    void addGame(ZNTMudList game)
    {
        const bool becomesDefault = game.defaultConnection && !hasDefault;
        const auto known = games.find(keyOf(game));
        if (known != games.end()) {
            ++report.alreadyThere.games;
            game = known->second;
        } else {
            database.addNewRowMudList(game);
            noteChange();
            ++report.added.games;
        }
        game.defaultConnection = becomesDefault;
        // A new row is stored as available.
        if (becomesDefault || (known == games.end() && !game.active)) {
            database.updateMudListObject(game);
            noteChange();
        }
        games.try_emplace(keyOf(game), game);
        if (becomesDefault) {
            hasDefault = true;
            report.newDefault = game.name;
        }
    }

    ZNTDatabaseHelper& database;
    Imported& report;
    std::set<std::u16string> triggers, macros;
    std::map<std::u16string, std::int64_t> groups; ///< the row key of each
    std::map<std::u16string, ZNTMudList> games;
    bool hasDefault = false;
    bool isEveryChangeStored = true;
};

} // namespace

namespace znt::exchange
{

std::optional<Imported> addToStore(ZNTDatabaseHelper& database, const ZNTRecords& records)
{
    Imported report;
    const bool isKept = database.inOneTransaction([&] { return Import(database, report).add(records); });
    return isKept ? std::optional(std::move(report)) : std::nullopt;
}

} // namespace znt::exchange
