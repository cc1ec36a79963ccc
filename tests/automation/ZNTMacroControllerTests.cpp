#include "ZNTAddMacroViewController.h"
#include "ZNTDatabaseHelper.h"
#include "ZNTEditMacroViewController.h"
#include "ZNTMacroGroupDropDownController.h"
#include "ZNTMudMacroTableViewController.h"
#include "ZNTPlainElements.h"
#include "ZNTTestPlatform.h"

namespace
{

using WhenNoneMatches = ZNTMacroGroupDropDownController::WhenNoneMatches;
using Alerts = std::vector<std::pair<std::u16string, std::u16string>>;

/// Names, each with a blank behind it.
std::u16string namesOf(const std::vector<ZNTMacroGroup>& groups)
{
    std::u16string names;
    for (const auto& group : groups)
        names += group.groupName + u" ";
    return names;
}

/// Titles and texts, emptied.
std::u16string taken(Alerts& alerts)
{
    std::u16string all;
    for (const auto& [title, text] : std::exchange(alerts, {}))
        all += title + u"/" + text;
    return all;
}

/// The selector, the list and the sheets as the window holds them, over a store with two groups.
class ZNTMacroControllers : public testing::Test
{
protected:
    ZNTMacroControllers()
    {
        for (const auto* title : {u"fight", u"walk"})
            store.insertMacroGroup(groups.emplace_back(ZNTMacroGroup{0, title, {}}));
        for (const auto& [group, title, text] :
             {std::tuple(0u, u"kick", u"kick %1"), {0u, u"bash", u"bash %1"}, {1u, u"home", u"recall"}}) {
            ZNTMacro macro{0, groups[group].oid, title, text};
            store.insertMacroSetWithMacroGroup(macro);
        }
        selector.emplace(machine.platform, store, comboBox);
        list.emplace(machine.platform, store, *selector, table);
    }
    /// What the front end does when the player picks or types a name.
    void choose(const std::u16string& title)
    {
        comboBox.content = title;
        selector->setCurrentValueInComboBox(title);
    }
    std::int64_t currentOid(WhenNoneMatches none = WhenNoneMatches::ShowAlert)
    {
        return selector->getCurrentMacroGroupOid(none);
    }
    void post(std::string_view notice) { machine.notifications.post(notice, nullptr); }
    std::u16string shownMacros() const
    {
        std::u16string names;
        for (long row = 0; row < list->countOfMacros(); ++row)
            names += list->getMacroAtIndex(row)->name + u" ";
        return names;
    }
    std::u16string storedGroups() { return namesOf(store.getAllMacroGroupsFromDatabase()); }
    std::u16string takeAlerts() { return taken(machine.alert.shown); }
    template <typename Sheet>
    Sheet sheet()
    {
        return Sheet(machine.platform, store, *selector, *list, {label, command, name, panel});
    }
    template <typename Sheet>
    void finish(Sheet& shown, const std::u16string& newName, const std::u16string& newText)
    {
        shown.showWindow();
        name.content = newName;
        command.content = newText;
        shown.doneEditing();
        EXPECT_FALSE(panel.isShown);
        EXPECT_EQ(name.content + command.content, u"");
    }

    ZNTTestPlatform machine;
    ZNTDatabaseHelper store{machine.platform.places, machine.log};
    ZNTPlainComboBox comboBox;
    ZNTPlainTableView table;
    ZNTPlainLabel label;
    ZNTPlainTextArea command;
    ZNTPlainTextField name;
    ZNTPlainPanel panel;
    std::vector<ZNTMacroGroup> groups;
    std::optional<ZNTMacroGroupDropDownController> selector;
    std::optional<ZNTMudMacroTableViewController> list;
};

TEST_F(ZNTMacroControllers, TheCurrentGroupIsTheOneNamed)
{
    EXPECT_EQ(comboBox.timesReloaded, 1) << "its list is filled at once";
    EXPECT_EQ(selector->comboBoxObjectValueForItemAtIndex(2), u"");
    comboBox.content = u"\t walk ";
    EXPECT_EQ(currentOid(), groups[1].oid) << "if nothing was picked, the box's own text counts";
    selector->setCurrentValueInComboBox(u"fight");
    EXPECT_EQ(currentOid(), groups[0].oid);
    comboBox.content.clear();
    EXPECT_EQ(currentOid(), -1);

    for (const auto* unknown : {u"Fight", u"fight\n", u"fi"}) {
        choose(unknown);
        EXPECT_EQ(currentOid(WhenNoneMatches::SayNothing), -1);
        EXPECT_EQ(takeAlerts(), u"") << "nor was there one for an empty box";
        EXPECT_EQ(currentOid(), -1);
        EXPECT_TRUE(takeAlerts().starts_with(u"NO MACRO LOADED/"));
    }
}

TEST_F(ZNTMacroControllers, AGroupIsMadeUnderANewNameAlone)
{
    for (const auto& [name, answer] : {std::pair(u"", u"Please input"), {u"fight", u"Macro Name taken"}}) {
        choose(name);
        EXPECT_FALSE(selector->createNamedMacroGroup());
        EXPECT_EQ(takeAlerts(), u"") << "Return alone says nothing";
        selector->createNewMacroGroup();
        EXPECT_TRUE(takeAlerts().starts_with(answer));
    }
    choose(u" shop ");
    const int reloads = comboBox.timesReloaded;
    EXPECT_TRUE(selector->createNamedMacroGroup());
    EXPECT_EQ(storedGroups(), u"fight walk shop ");
    EXPECT_EQ(comboBox.timesReloaded, reloads + 1);
    EXPECT_NE(takeAlerts(), u"");
}

TEST_F(ZNTMacroControllers, DeletingAGroupAsksAndDeletesItsMacros)
{
    choose(u"unknown");
    selector->deleteMacroGroup();
    EXPECT_TRUE(takeAlerts().starts_with(u"Delete Macro./Please select"));

    choose(u"fight");
    machine.alert.answer = false;
    selector->deleteMacroGroup();
    EXPECT_EQ(taken(machine.alert.asked), u"Delete Macro./Are you sure you want to delete this macro?.");
    EXPECT_EQ(comboBox.content + storedGroups(), u"fightfight walk ");

    machine.alert.answer = true;
    const int reloads = comboBox.timesReloaded;
    selector->deleteMacroGroup();
    EXPECT_EQ(comboBox.timesReloaded, reloads + 1);
    EXPECT_EQ(comboBox.content + takeAlerts(), u"");
    EXPECT_EQ(namesOf(selector->macroGroups()), u"walk ");
    EXPECT_THAT(list->getAllMacroNames(), testing::ElementsAre(u"home"));
}

TEST_F(ZNTMacroControllers, TheListFollowsTheSelectorAndTheNotices)
{
    choose(u"fight");
    EXPECT_EQ(shownMacros(), u"kick bash ");
    for (const long missing : {-1L, 2L})
        EXPECT_EQ(list->getMacroAtIndex(missing), std::nullopt);
    choose(u"walk");
    for (const auto* notice : {"MACRO_ADDED", "MACRO_REMOVED"}) {
        list->clearMacroList();
        post(notice);
        EXPECT_EQ(shownMacros(), u"home ") << notice;
    }
    const int reloads = table.timesReloaded;
    choose(u"no such group");
    EXPECT_GT(table.timesReloaded, reloads) << "the macros of the group before are not left in the table";
    list->setNewList({ZNTMacro{}});
    post("MACRO_ADDED");
    EXPECT_EQ(list->countOfMacros(), 1) << "without a current group the list stays";

    ZNTMacroGroup elsewhere{0, u"shop", {}};
    store.insertMacroGroup(elsewhere);
    post("COMBO_BOX_CHANGED");
    EXPECT_EQ(namesOf(selector->macroGroups()), u"fight walk shop ");
}

TEST_F(ZNTMacroControllers, AddingStoresTheFieldsAsTheyStand)
{
    auto add = sheet<ZNTAddMacroViewController>();
    choose(u"walk");
    for (const auto* typed : {u" lead ", u""}) {
        finish(add, typed, u"open door\nnorth");
        EXPECT_EQ(list->getMacroByName(typed)->dataToExecute, u"open door\nnorth");
        EXPECT_EQ(list->getMacroByName(typed)->groupOid, groups[1].oid);
    }
    EXPECT_EQ(label.content, u"walk");
    EXPECT_EQ(shownMacros(), u"home  lead   ");

    name.content = u"unfinished";
    add.cancelEditing();
    EXPECT_EQ(name.content, u"unfinished") << "the typed text stays for the next time";
    EXPECT_EQ(list->getMacroByName(u"unfinished"), std::nullopt);
    choose(u"no group of this name");
    finish(add, u"lost", u"look");
    EXPECT_EQ(store.getAllMacrosFromDatabaseByMacroGroupId(0).size(), 1U);
}

TEST_F(ZNTMacroControllers, EditingStoresTheSelectedMacro)
{
    choose(u"fight");
    table.selected = 0;
    auto edit = sheet<ZNTEditMacroViewController>();
    EXPECT_EQ(label.content + u": " + name.content + u" = " + command.content, u"fight: kick = kick %1");
    finish(edit, u"", u"kick it");
    EXPECT_EQ(shownMacros(), u" bash ");
    EXPECT_EQ(list->getMacroByName(u"")->dataToExecute, u"kick it");

    name.content = u"changed";
    edit.cancelEditing();
    edit.showWindow();
    EXPECT_EQ(name.content, u"") << "each showing reads the selected macro again";
    table.selected = -1;
    edit.showWindow();
    EXPECT_EQ(machine.alert.shown.back().first, u"No macro is selected.");
}

TEST_F(ZNTMacroControllers, AMacroWhoseInsertFailedIsInsertedLaterAndChangesNoOther)
{
    choose(u"walk");
    store.runSQL("create trigger refuse before insert on ZNTMacro begin select raise(abort, ''); end");
    auto add = sheet<ZNTAddMacroViewController>();
    for (const auto* typed : {u"lead", u"lost"})
        finish(add, typed, u"open door");
    table.selected = 1;
    auto edit = sheet<ZNTEditMacroViewController>();
    finish(edit, u"leader", u"open door");
    EXPECT_EQ(shownMacros(), u"home leader lost ") << "it is refused once more, and the typed text stays";
    table.selected = 2;
    list->removeItem();
    EXPECT_EQ(table.timesEditingAborted, 1);
    EXPECT_EQ(list->textOfMacroNamed(u"home"), u"recall");
    EXPECT_TRUE(list->tableViewToolTipForRow(1).starts_with(u"Not saved"));

    store.runSQL("drop trigger refuse");
    table.selected = 1;
    edit.showWindow();
    edit.doneEditing();
    EXPECT_EQ(shownMacros(), u"home leader ");
    EXPECT_EQ(list->textOfMacroNamed(u"leader"), u"open door");
    EXPECT_EQ(store.getAllMacroNames().size(), 4u);
}

} // namespace
