#include "ZNTAddMacroViewController.h"
#include "ZNTDatabaseHelper.h"
#include "ZNTEditMacroViewController.h"
#include "ZNTMacroGroupDropDownController.h"
#include "ZNTMudMacroTableViewController.h"
#include "ZNTPlainElements.h"
#include "ZNTTestPlatform.h"

namespace
{

using testing::ElementsAre;
using testing::IsEmpty;
using Names = std::vector<std::u16string>;
using Alert = std::pair<std::u16string, std::u16string>;
using WhenNoneMatches = ZNTMacroGroupDropDownController::WhenNoneMatches;

Names namesOf(const std::vector<ZNTMacroGroup>& groups)
{
    Names names;
    for (const auto& group : groups)
        names.push_back(group.groupName);
    return names;
}

/// The selector, the list and the sheets as the window holds them, over a store with two groups.
class ZNTMacroControllers : public testing::Test
{
protected:
    ZNTMacroControllers()
    {
        for (const auto* title : {u"fight", u"walk"})
            store.insertMacroGroup(groups.emplace_back(ZNTMacroGroup{0, title, {}}));
        storeMacro(groups[0].oid, u"kick", u"kick %1");
        storeMacro(groups[0].oid, u"bash", u"bash %1");
        storeMacro(groups[1].oid, u"home", u"recall");
        selector = std::make_unique<ZNTMacroGroupDropDownController>(machine.platform, store, comboBox);
        list = std::make_unique<ZNTMudMacroTableViewController>(machine.platform, store, *selector, table);
    }
    void storeMacro(std::int64_t group, std::u16string title, std::u16string text)
    {
        ZNTMacro macro{0, group, std::move(title), std::move(text)};
        store.insertMacroSetWithMacroGroup(macro);
    }
    /// What the front end does when the player picks or types a name.
    void choose(const std::u16string& title)
    {
        comboBox.content = title;
        selector->setCurrentValueInComboBox(title);
    }
    void post(std::string_view notice) { machine.notifications.post(notice, nullptr); }
    Names shownMacros() const
    {
        Names names;
        for (long row = 0; row < list->countOfMacros(); ++row)
            names.push_back(list->getMacroAtIndex(row)->name);
        return names;
    }
    Names storedGroups() { return namesOf(store.getAllMacroGroupsFromDatabase()); }
    std::vector<Alert> takeAlerts() { return std::exchange(machine.alert.shown, {}); }
    template <typename Sheet>
    Sheet sheet()
    {
        return Sheet(machine.platform, store, *selector, *list, {label, command, name, panel});
    }
    template <typename Sheet>
    void finish(Sheet& shown, const std::u16string& newName, const std::u16string& newText)
    {
        shown.showWindow();
        EXPECT_TRUE(panel.isShown);
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
    std::unique_ptr<ZNTMacroGroupDropDownController> selector;
    std::unique_ptr<ZNTMudMacroTableViewController> list;
};

TEST_F(ZNTMacroControllers, TheCurrentGroupIsTheOneNamed)
{
    EXPECT_EQ(selector->numberOfItemsInComboBox(), 2);
    EXPECT_EQ(selector->comboBoxObjectValueForItemAtIndex(1), u"walk");
    EXPECT_EQ(selector->comboBoxObjectValueForItemAtIndex(2), u"");
    EXPECT_EQ(selector->getCurrentMacroGroup(), nullptr);
    EXPECT_EQ(selector->getCurrentMacroGroupOid(WhenNoneMatches::ShowAlert), -1);
    EXPECT_THAT(takeAlerts(), IsEmpty()) << "an empty box causes no alert";

    comboBox.content = u"\t walk ";
    ASSERT_TRUE(selector->getCurrentMacroGroup()) << "if nothing was picked, the box's own text counts";
    EXPECT_EQ(selector->getCurrentMacroGroup()->oid, groups[1].oid);
    selector->setCurrentValueInComboBox(u"fight");
    EXPECT_EQ(selector->getCurrentMacroGroupOid(WhenNoneMatches::ShowAlert), groups[0].oid);
    comboBox.content.clear();
    EXPECT_EQ(selector->getCurrentMacroGroup()->oid, groups[0].oid);
    EXPECT_EQ(selector->getCurrentMacroGroupOid(WhenNoneMatches::ShowAlert), -1);

    for (const auto* unknown : {u"Fight", u"fight\n", u"fi"}) {
        choose(unknown);
        EXPECT_EQ(selector->getCurrentMacroGroupOid(WhenNoneMatches::SayNothing), -1);
        EXPECT_THAT(takeAlerts(), IsEmpty());
        EXPECT_EQ(selector->getCurrentMacroGroupOid(WhenNoneMatches::ShowAlert), -1);
        EXPECT_THAT(takeAlerts(),
                    ElementsAre(Alert(u"NO MACRO LOADED", u"Please select a Macro Group before trying to "
                                                          u"load the macros from the database.")));
    }
}

TEST_F(ZNTMacroControllers, ANameOfBlanksMakesAGroupWithTheEmptyNameOnce)
{
    choose(u"  ");
    selector->createNewMacroGroup();
    EXPECT_THAT(takeAlerts(), ElementsAre(Alert(u"Macro Group Created!.", u"New Macro Grop Added.")));
    EXPECT_THAT(storedGroups(), ElementsAre(u"fight", u"walk", u""));
    selector->createNewMacroGroup();
    EXPECT_EQ(takeAlerts().at(0).first, u"Macro Name taken");
    EXPECT_EQ(storedGroups().size(), 3u);
}

TEST_F(ZNTMacroControllers, DeletingAGroupAsksAndDeletesItsMacros)
{
    for (const auto* none : {u"", u"unknown"}) {
        choose(none);
        selector->deleteMacroGroup();
        EXPECT_THAT(
            takeAlerts(),
            ElementsAre(Alert(u"Delete Macro.", u"Please select a macro before trying to delete one ^_^.")));
    }
    EXPECT_THAT(machine.alert.asked, IsEmpty());

    choose(u"fight");
    machine.alert.answer = false;
    selector->deleteMacroGroup();
    EXPECT_THAT(machine.alert.asked,
                ElementsAre(Alert(u"Delete Macro.", u"Are you sure you want to delete this macro?.")));
    EXPECT_EQ(comboBox.content, u"fight");
    EXPECT_THAT(storedGroups(), ElementsAre(u"fight", u"walk"));
    EXPECT_EQ(store.getAllMacroNames().size(), 3u);

    machine.alert.answer = true;
    selector->deleteMacroGroup();
    EXPECT_EQ(comboBox.content, u"");
    EXPECT_THAT(namesOf(selector->macroGroups()), ElementsAre(u"walk"));
    EXPECT_THAT(storedGroups(), ElementsAre(u"walk"));
    EXPECT_THAT(store.getAllMacroNames(), ElementsAre(u"home"));
    EXPECT_THAT(takeAlerts(), IsEmpty());
}

TEST_F(ZNTMacroControllers, TheListFollowsTheSelectorAndTheNotices)
{
    EXPECT_THAT(shownMacros(), IsEmpty());
    choose(u"fight");
    EXPECT_THAT(shownMacros(), ElementsAre(u"kick", u"bash"));
    choose(u"walk");
    EXPECT_THAT(shownMacros(), ElementsAre(u"home"));
    EXPECT_EQ(list->getMacroAtIndex(1), std::nullopt);
    EXPECT_EQ(list->getMacroAtIndex(-1), std::nullopt);

    storeMacro(groups[1].oid, u"away", u"leave");
    for (const auto* notice : {"MACRO_ADDED", "MACRO_REMOVED"}) {
        list->clearMacroList();
        post(notice);
        EXPECT_THAT(shownMacros(), ElementsAre(u"home", u"away")) << notice;
    }
    comboBox.content = u"";
    selector->setCurrentValueInComboBox(u"no such group");
    EXPECT_THAT(shownMacros(), IsEmpty());
    list->setNewList({ZNTMacro{}});
    post("MACRO_ADDED");
    EXPECT_EQ(list->countOfMacros(), 1) << "without a current group the list stays";

    ZNTMacroGroup elsewhere{0, u"shop", {}};
    store.insertMacroGroup(elsewhere);
    EXPECT_EQ(selector->macroGroups().size(), 2u);
    post("COMBO_BOX_CHANGED");
    EXPECT_THAT(namesOf(selector->macroGroups()), ElementsAre(u"fight", u"walk", u"shop"));

    list.reset();
    post("MACRO_ADDED"); // the list no longer observes
    choose(u"fight");
}

TEST_F(ZNTMacroControllers, MacrosOfEveryGroupAreFoundByName)
{
    storeMacro(groups[1].oid, u"kick", u"kick the door");
    choose(u"fight");
    EXPECT_EQ(list->getMacroByName(u"kick")->dataToExecute, u"kick the door") << "the one stored last";
    EXPECT_EQ(list->textOfMacroNamed(u"home"), u"recall");
    EXPECT_EQ(list->textOfMacroNamed(u"nothing"), std::nullopt);
    EXPECT_THAT(list->getAllMacroNames(), ElementsAre(u"kick", u"bash", u"home", u"kick"));
}

TEST_F(ZNTMacroControllers, AddingStoresTheFieldsAsTheyStand)
{
    choose(u"walk");
    auto add = sheet<ZNTAddMacroViewController>();
    EXPECT_EQ(label.content, u"walk");
    for (const auto* typed : {u" lead ", u""}) {
        finish(add, typed, u"open door\nnorth");
        EXPECT_EQ(list->getMacroByName(typed)->dataToExecute, u"open door\nnorth");
        EXPECT_EQ(list->getMacroByName(typed)->groupOid, groups[1].oid);
    }
    EXPECT_THAT(shownMacros(), ElementsAre(u"home", u" lead ", u""));

    add.showWindow();
    name.content = u"unfinished";
    add.cancelEditing();
    EXPECT_FALSE(panel.isShown);
    EXPECT_EQ(name.content, u"unfinished") << "the typed text stays for the next time";
    EXPECT_EQ(list->getMacroByName(u"unfinished"), std::nullopt);

    choose(u"no such group");
    add.showWindow();
    EXPECT_EQ(label.content, u"no such group");
    add.doneEditing();
    EXPECT_EQ(list->getMacroByName(u"unfinished")->groupOid, 0);
}

TEST_F(ZNTMacroControllers, EditingStoresTheSelectedMacro)
{
    choose(u"fight");
    table.selected = 1;
    auto edit = sheet<ZNTEditMacroViewController>();
    EXPECT_EQ(name.content, u"bash");
    table.selected = 0;
    edit.showWindow();
    EXPECT_EQ(label.content + u": " + name.content + u" = " + command.content, u"fight: kick = kick %1");
    finish(edit, u"", u"kick it");
    EXPECT_THAT(shownMacros(), ElementsAre(u"", u"bash"));
    EXPECT_EQ(list->getMacroByName(u"")->dataToExecute, u"kick it");
    EXPECT_EQ(list->getMacroByName(u"")->groupOid, groups[0].oid);

    edit.showWindow();
    name.content = u"changed";
    edit.cancelEditing();
    edit.showWindow();
    EXPECT_EQ(name.content, u"") << "each showing reads the selected macro again";
}

TEST_F(ZNTMacroControllers, AMacroWhoseInsertFailedIsInsertedLaterAndChangesNoOther)
{
    choose(u"walk");
    store.runSQL("create trigger refuse before insert on ZNTMacro begin select raise(abort, ''); end");
    auto add = sheet<ZNTAddMacroViewController>();
    for (const auto* typed : {u"lead", u"lost"})
        finish(add, typed, u"open door");
    EXPECT_THAT(shownMacros(), ElementsAre(u"home", u"lead", u"lost")) << "the typed text is not lost";

    table.selected = 1;
    auto edit = sheet<ZNTEditMacroViewController>();
    finish(edit, u"leader", u"open door");
    EXPECT_THAT(shownMacros(), ElementsAre(u"home", u"leader", u"lost")) << "it is refused once more";
    table.selected = 2;
    list->removeItem();
    EXPECT_THAT(shownMacros(), ElementsAre(u"home", u"leader"));
    EXPECT_EQ(list->textOfMacroNamed(u"home"), u"recall");

    EXPECT_TRUE(list->tableViewToolTipForRow(1).starts_with(u"Not saved"));
    EXPECT_EQ(list->tableViewToolTipForRow(0), u"");
    store.runSQL("drop trigger refuse");
    table.selected = 1;
    edit.showWindow();
    EXPECT_EQ(command.content, u"open door");
    edit.doneEditing();
    EXPECT_THAT(shownMacros(), ElementsAre(u"home", u"leader"));
    EXPECT_EQ(list->textOfMacroNamed(u"leader"), u"open door");
    EXPECT_EQ(store.getAllMacroNames().size(), 4u);
}

} // namespace
