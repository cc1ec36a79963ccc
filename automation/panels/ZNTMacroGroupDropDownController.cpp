#include "ZNTMacroGroupDropDownController.h"

#include "ZNTDatabaseHelper.h"
#include "ZNTText.h"

#include <algorithm>
#include <utility>

namespace
{
constexpr std::string_view currentValueKey = "currentValueInComboBox";
} // namespace

ZNTMacroGroupDropDownController::ZNTMacroGroupDropDownController(const ZNTPlatform& platform,
                                                                 ZNTDatabaseHelper& database,
                                                                 ZNTComboBox& macroGroupComboBox)
    : platform(platform),
      database(database),
      macroGroupComboBox(macroGroupComboBox),
      macroGroups_(database.getAllMacroGroupsFromDatabase()),
      comboBoxChanged(platform.notifications.observe(
          std::string(comboBoxChangedName),
          [this](std::string_view name, const void*) { loadAllMacroGroups(name); }))
{
    macroGroupComboBox.reloadData();
}

const ZNTMacroGroup* ZNTMacroGroupDropDownController::getCurrentMacroGroup() const
{
    const auto name = currentValueInComboBox_.empty() ? macroGroupComboBox.text() : currentValueInComboBox_;
    if (name.empty())
        return nullptr;
    const auto wanted = znt::trimmedOfBlanks(name);
    const auto found = std::find_if(macroGroups_.begin(), macroGroups_.end(),
                                    [&](const ZNTMacroGroup& group) { return group.groupName == wanted; });
    return found == macroGroups_.end() ? nullptr : &*found;
}

std::int64_t ZNTMacroGroupDropDownController::getCurrentMacroGroupOid(WhenNoneMatches whenNoneMatches)
{
    if (macroGroupComboBox.text().empty())
        return -1;
    if (const auto* group = getCurrentMacroGroup())
        return group->oid;
    if (whenNoneMatches == WhenNoneMatches::ShowAlert)
        platform.alert.showMessage(
            u"NO MACRO LOADED",
            u"Please select a Macro Group before trying to load the macros from the database.");
    return -1;
}

void ZNTMacroGroupDropDownController::createNewMacroGroup()
{
    if (getCurrentMacroGroup()) {
        platform.alert.showMessage(u"Macro Name taken",
                                   u"You can not name 2 macro groups with the same name.");
        return;
    }
    if (currentValueInComboBox_.empty()) {
        platform.alert.showMessage(u"Please input a Macro Group name.",
                                   u"You need to have at least 1 character for a macro name.");
        return;
    }
    ZNTMacroGroup group;
    group.groupName = znt::trimmedOfBlanks(macroGroupComboBox.text());
    database.insertMacroGroup(group);
    if (!database.didLastChangeSucceed())
        platform.log.log("The macro group was not saved: the database could not be written.");
    macroGroups_.push_back(std::move(group));
    macroGroupComboBox.reloadData();
    platform.notifications.post(comboBoxChangedName, this);
    platform.alert.showMessage(u"Macro Group Created!.", u"New Macro Grop Added.");
}

void ZNTMacroGroupDropDownController::deleteMacroGroup()
{
    const auto oid = getCurrentMacroGroupOid(WhenNoneMatches::SayNothing);
    if (oid < 0) {
        platform.alert.showMessage(u"Delete Macro.",
                                   u"Please select a macro before trying to delete one ^_^.");
        return;
    }
    platform.alert.askForConfirmation(u"Delete Macro.", u"Are you sure you want to delete this macro?.",
                                      [this, oid](bool confirmed) {
                                          if (confirmed)
                                              deleteConfirmedGroup(oid);
                                      });
}

void ZNTMacroGroupDropDownController::deleteConfirmedGroup(std::int64_t oid)
{
    database.deleteMacroByOid(oid);
    std::erase_if(macroGroups_, [oid](const ZNTMacroGroup& group) { return group.oid == oid; });
    macroGroupComboBox.setText(u"");
    macroGroupComboBox.reloadData();
}

std::u16string ZNTMacroGroupDropDownController::comboBoxObjectValueForItemAtIndex(long index) const
{
    return index >= 0 && index < numberOfItemsInComboBox()
               ? macroGroups_[static_cast<std::size_t>(index)].groupName
               : std::u16string();
}

void ZNTMacroGroupDropDownController::setCurrentValueInComboBox(std::u16string_view value)
{
    currentValueInComboBox_ = value;
    valueObservers.post(currentValueKey, this);
}

std::unique_ptr<ZNTNotificationCenter::Observation>
ZNTMacroGroupDropDownController::observeCurrentValueInComboBox(std::function<void()> observer)
{
    return valueObservers.observe(
        std::string(currentValueKey),
        [observer = std::move(observer)](std::string_view, const void*) { observer(); });
}

void ZNTMacroGroupDropDownController::loadAllMacroGroups(std::string_view notification)
{
    if (notification == comboBoxChangedName)
        macroGroups_ = database.getAllMacroGroupsFromDatabase();
}
