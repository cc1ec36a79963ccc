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
using Alerts = std::vector<std::pair<std::u16string, std::u16string>>;

/// The selector and the list as the preferences hold them, over a store with two groups.
class ZNTMacroControllers : public testing::Test
{
protected:
    ZNTMacroControllers()
    {
        for (const auto* name : {u"fight", u"walk"})
            store.insertMacroGroup(groups.emplace_back(ZNTMacroGroup{0, name, {}}));
        storeMacro(groups[0].oid, u"kick", u"kick %1");
        storeMacro(groups[0].oid, u"bash", u"bash %1");
        storeMacro(groups[1].oid, u"home", u"recall");
        selector = std::make_unique<ZNTMacroGroupDropDownController>(machine.platform, store, comboBox);
        list = std::make_unique<ZNTMudMacroTableViewController>(machine.platform, store, *selector, table);
    }
    void storeMacro(std::int64_t group, std::u16string name, std::u16string text)
    {
        ZNTMacro macro{
            .oid = 0, .groupOid = group, .name = std::move(name), .dataToExecute = std::move(text)};
        store.insertMacroSetWithMacroGroup(macro);
    }
    /// What the front end does when the player picks or types a name.
    void choose(const std::u16string& name)
    {
        comboBox.content = name;
        selector->setCurrentValueInComboBox(name);
    }
    std::vector<std::u16string> shownMacros() const
    {
        std::vector<std::u16string> names;
        for (long row = 0; row < list->countOfMacros(); ++row)
            names.push_back(list->getMacroAtIndex(row)->name);
        return names;
    }
    std::vector<std::u16string> shownGroups() const
    {
        std::vector<std::u16string> names;
        for (long row = 0; row < selector->numberOfItemsInComboBox(); ++row)
            names.push_back(selector->comboBoxObjectValueForItemAtIndex(row));
        return names;
    }
    std::vector<std::u16string> storedGroups()
    {
        std::vector<std::u16string> names;
        for (const auto& group : store.getAllMacroGroupsFromDatabase())
            names.push_back(group.groupName);
        return names;
    }
    Alerts takeAlerts() { return std::exchange(machine.alert.shown, {}); }

    const Alerts nameTaken{{u"Macro Name taken", u"You can not name 2 macro groups with the same name."}};
    const Alerts created{{u"Macro Group Created!.", u"New Macro Grop Added."}};
    const Alerts nameMissing{
        {u"Please input a Macro Group name.", u"You need to have at least 1 character for a macro name."}};

    ZNTTestPlatform machine;
    ZNTDatabaseHelper store{machine.platform.places, machine.log};
    ZNTPlainComboBox comboBox;
    ZNTPlainTableView table;
    std::vector<ZNTMacroGroup> groups;
    std::unique_ptr<ZNTMacroGroupDropDownController> selector;
    std::unique_ptr<ZNTMudMacroTableViewController> list;
};

using ZNTMacroGroups = ZNTMacroControllers;
using ZNTMacroList = ZNTMacroControllers;

TEST_F(ZNTMacroGroups, TheCurrentGroupIsTheOneNamed)
{
    using Selector = ZNTMacroGroupDropDownController;
    EXPECT_THAT(shownGroups(), ElementsAre(u"fight", u"walk"));
    EXPECT_EQ(selector->comboBoxObjectValueForItemAtIndex(2), u"");
    EXPECT_EQ(selector->getCurrentMacroGroup(), nullptr);
    EXPECT_EQ(selector->getCurrentMacroGroupOid(Selector::WhenNoneMatches::ShowAlert), -1);
    EXPECT_THAT(takeAlerts(), IsEmpty()) << "an empty box is not worth an alert";

    comboBox.content = u"\t walk ";
    ASSERT_TRUE(selector->getCurrentMacroGroup()) << "the box's own text, where nothing was picked";
    EXPECT_EQ(selector->getCurrentMacroGroup()->oid, groups[1].oid);
    selector->setCurrentValueInComboBox(u"fight");
    EXPECT_EQ(selector->getCurrentMacroGroupOid(Selector::WhenNoneMatches::ShowAlert), groups[0].oid);
    comboBox.content.clear();
    EXPECT_EQ(selector->getCurrentMacroGroup()->oid, groups[0].oid);
    EXPECT_EQ(selector->getCurrentMacroGroupOid(Selector::WhenNoneMatches::ShowAlert), -1);

    for (const auto* unknown : {u"Fight", u"fight\n", u"fi"}) {
        choose(unknown);
        EXPECT_EQ(selector->getCurrentMacroGroupOid(Selector::WhenNoneMatches::SayNothing), -1);
        EXPECT_THAT(takeAlerts(), IsEmpty());
        EXPECT_EQ(selector->getCurrentMacroGroupOid(Selector::WhenNoneMatches::ShowAlert), -1);
        EXPECT_EQ(
            takeAlerts(),
            (Alerts{{u"NO MACRO LOADED",
                     u"Please select a Macro Group before trying to load the macros from the database."}}));
    }
}

TEST_F(ZNTMacroGroups, ANameOfBlanksIsTheEmptyNameAndCanBeTakenOnce)
{
    choose(u"  ");
    selector->createNewMacroGroup();
    EXPECT_EQ(takeAlerts(), created);
    EXPECT_THAT(storedGroups(), ElementsAre(u"fight", u"walk", u""));
    selector->createNewMacroGroup();
    EXPECT_EQ(takeAlerts(), nameTaken);
}

TEST_F(ZNTMacroGroups, DeletingAsksAndTakesTheMacrosAlong)
{
    const Alerts nothingSelected{
        {u"Delete Macro.", u"Please select a macro before trying to delete one ^_^."}};
    const Alerts question{{u"Delete Macro.", u"Are you sure you want to delete this macro?."}};
    for (const auto* none : {u"", u"unknown"}) {
        choose(none);
        selector->deleteMacroGroup();
        EXPECT_EQ(takeAlerts(), nothingSelected);
    }
    EXPECT_THAT(machine.alert.asked, IsEmpty());

    choose(u"fight");
    machine.alert.answer = false;
    selector->deleteMacroGroup();
    EXPECT_EQ(machine.alert.asked, question);
    EXPECT_EQ(comboBox.content, u"fight");
    EXPECT_THAT(storedGroups(), ElementsAre(u"fight", u"walk"));
    EXPECT_EQ(store.getAllMacroNames().size(), 3u);

    machine.alert.answer = true;
    selector->deleteMacroGroup();
    EXPECT_EQ(comboBox.content, u"");
    EXPECT_THAT(shownGroups(), ElementsAre(u"walk"));
    EXPECT_THAT(storedGroups(), ElementsAre(u"walk"));
    EXPECT_THAT(store.getAllMacroNames(), ElementsAre(u"home"));
    EXPECT_THAT(takeAlerts(), IsEmpty());
}

TEST_F(ZNTMacroGroups, AGroupMadeElsewhereShowsAfterTheNotice)
{
    ZNTMacroGroup elsewhere{0, u"shop", {}};
    store.insertMacroGroup(elsewhere);
    EXPECT_EQ(shownGroups().size(), 2u);
    machine.notifications.post("COMBO_BOX_CHANGED", nullptr);
    EXPECT_THAT(shownGroups(), ElementsAre(u"fight", u"walk", u"shop"));
}

TEST_F(ZNTMacroList, FollowsTheSelector)
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
        machine.notifications.post(notice, nullptr);
        EXPECT_THAT(shownMacros(), ElementsAre(u"home", u"away")) << notice;
    }
    comboBox.content = u"";
    selector->setCurrentValueInComboBox(u"no such group");
    EXPECT_THAT(shownMacros(), IsEmpty());
    list->setNewList({ZNTMacro{}});
    machine.notifications.post("MACRO_ADDED", nullptr);
    EXPECT_EQ(list->countOfMacros(), 1) << "without a current group the list stays";

    list.reset();
    machine.notifications.post("MACRO_ADDED", nullptr); // nobody listens any more
    choose(u"fight");
}

TEST_F(ZNTMacroList, FindsMacrosOfEveryGroupByName)
{
    storeMacro(groups[1].oid, u"kick", u"kick the door");
    choose(u"fight");
    EXPECT_EQ(list->getMacroByName(u"kick")->dataToExecute, u"kick the door") << "the one stored last";
    EXPECT_EQ(list->getMacroByName(u"home")->dataToExecute, u"recall");
    EXPECT_EQ(list->getMacroByName(u"nothing"), std::nullopt);
    EXPECT_THAT(list->getAllMacroNames(), ElementsAre(u"kick", u"bash", u"home", u"kick"));
}

class ZNTMacroSheets : public ZNTMacroControllers
{
protected:
    ZNTPlainLabel label;
    ZNTPlainTextArea command;
    ZNTPlainTextField name;
    ZNTPlainPanel panel;
    ZNTMacroSheetElements elements{label, command, name, panel};
};

TEST_F(ZNTMacroSheets, AddingStoresTheFieldsAsTheyStand)
{
    choose(u"walk");
    ZNTAddMacroViewController sheet(machine.platform, store, *selector, *list, elements);
    EXPECT_EQ(label.content, u"walk");
    for (const auto* typed : {u" lead ", u""}) {
        sheet.showWindow();
        EXPECT_TRUE(panel.isShown);
        name.content = typed;
        command.content = u"open door\nnorth";
        sheet.doneEditing();
        EXPECT_FALSE(panel.isShown);
        EXPECT_EQ(name.content + command.content, u"");
        EXPECT_EQ(list->getMacroByName(typed)->dataToExecute, u"open door\nnorth");
        EXPECT_EQ(list->getMacroByName(typed)->groupOid, groups[1].oid);
    }
    EXPECT_THAT(shownMacros(), ElementsAre(u"home", u" lead ", u""));

    sheet.showWindow();
    name.content = u"unfinished";
    sheet.cancelEditing();
    EXPECT_FALSE(panel.isShown);
    EXPECT_EQ(name.content, u"unfinished") << "it is kept for the next time";
    EXPECT_EQ(list->getMacroByName(u"unfinished"), std::nullopt);

    choose(u"no such group");
    sheet.showWindow();
    EXPECT_EQ(label.content, u"no such group");
    sheet.doneEditing();
    EXPECT_EQ(list->getMacroByName(u"unfinished")->groupOid, 0);
}

TEST_F(ZNTMacroSheets, EditingStoresTheSelectedMacro)
{
    choose(u"fight");
    table.selected = 1;
    ZNTEditMacroViewController sheet(machine.platform, store, *selector, *list, elements);
    EXPECT_EQ(name.content, u"bash");
    table.selected = 0;
    sheet.showWindow();
    EXPECT_EQ(label.content, u"fight");
    EXPECT_EQ(name.content, u"kick");
    EXPECT_EQ(command.content, u"kick %1");
    name.content = u"";
    command.content = u"kick it";
    sheet.doneEditing();
    EXPECT_FALSE(panel.isShown);
    EXPECT_EQ(name.content + command.content, u"");
    EXPECT_THAT(shownMacros(), ElementsAre(u"", u"bash"));
    EXPECT_EQ(list->getMacroByName(u"")->dataToExecute, u"kick it");
    EXPECT_EQ(list->getMacroByName(u"")->groupOid, groups[0].oid);

    sheet.showWindow();
    name.content = u"changed";
    sheet.cancelEditing();
    sheet.showWindow();
    EXPECT_EQ(name.content, u"") << "each showing reads the selected macro again";
}

TEST_F(ZNTMacroSheets, AMacroWhoseInsertFailedIsInsertedLaterAndTouchesNoOther)
{
    choose(u"walk");
    store.runSQL("create trigger refuse before insert on ZNTMacro begin select raise(abort, ''); end");
    ZNTAddMacroViewController add(machine.platform, store, *selector, *list, elements);
    for (const auto* typed : {u"lead", u"lost"}) {
        add.showWindow();
        name.content = typed;
        command.content = u"open door";
        add.doneEditing();
    }
    EXPECT_THAT(shownMacros(), ElementsAre(u"home", u"lead", u"lost")) << "what was typed is not lost";

    table.selected = 1;
    ZNTEditMacroViewController edit(machine.platform, store, *selector, *list, elements);
    edit.showWindow();
    EXPECT_EQ(command.content, u"open door");
    name.content = u"leader";
    edit.doneEditing();
    EXPECT_THAT(shownMacros(), ElementsAre(u"home", u"leader", u"lost")) << "it is refused once more";
    table.selected = 2;
    list->removeItem();
    EXPECT_THAT(shownMacros(), ElementsAre(u"home", u"leader"));
    EXPECT_EQ(store.getMacroFromDatabaseByName(u"home")->dataToExecute, u"recall");

    EXPECT_TRUE(list->tableViewToolTipForRow(1).starts_with(u"Not saved"));
    EXPECT_EQ(list->tableViewToolTipForRow(0), u"");
    store.runSQL("drop trigger refuse");
    table.selected = 1;
    edit.showWindow();
    edit.doneEditing();
    EXPECT_THAT(shownMacros(), ElementsAre(u"home", u"leader"));
    EXPECT_EQ(store.getMacroFromDatabaseByName(u"leader")->dataToExecute, u"open door");
    EXPECT_EQ(store.getAllMacroNames().size(), 4u);
}

} // namespace
