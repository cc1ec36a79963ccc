#include "ZNTMacroGroupDropDownController.h"

#include "ZNTText.h"

#include <utility>

namespace
{
constexpr std::string_view currentValueKey = "currentValueInComboBox";
} // namespace

ZNTMacroGroupDropDownController::ZNTMacroGroupDropDownController(const ZNTPlatform& platform,
                                                                 ZNTDatabaseHelper& database,
                                                                 ZNTComboBox& macroGroupComboBox)
    : platform(platform),
      macroGroupComboBox(macroGroupComboBox),
      groups(database, platform.log),
      comboBoxChanged(platform.notifications.observe(
          std::string(comboBoxChangedName),
          [this](std::string_view name, const void*) { loadAllMacroGroups(name); }))
{
    macroGroupComboBox.reloadData();
}

const ZNTMacroGroup* ZNTMacroGroupDropDownController::getCurrentMacroGroup() const
{
    return groups.named(currentValueInComboBox_.empty() ? macroGroupComboBox.text()
                                                        : currentValueInComboBox_);
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
    const auto show = [this](const ZNTMacroGroups::Message& message) {
        platform.alert.showMessage(message.title, message.text);
    };
    if (getCurrentMacroGroup()) {
        show(ZNTMacroGroups::nameTaken);
    } else if (currentValueInComboBox_.empty()) {
        show(ZNTMacroGroups::nameMissing);
    } else {
        groups.add(znt::trimmedOfBlanks(macroGroupComboBox.text()));
        macroGroupComboBox.reloadData();
        platform.notifications.post(comboBoxChangedName, this);
        // Also if it was not saved; the log says so.
        platform.alert.showSuccess(ZNTMacroGroups::created.title, ZNTMacroGroups::created.text);
    }
}

bool ZNTMacroGroupDropDownController::createNamedMacroGroup()
{
    if (znt::trimmedOfBlanks(macroGroupComboBox.text()).empty() || getCurrentMacroGroup())
        return false;
    createNewMacroGroup();
    return true;
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
    groups.remove(oid);
    macroGroupComboBox.setText(u"");
    macroGroupComboBox.reloadData();
}

std::u16string ZNTMacroGroupDropDownController::comboBoxObjectValueForItemAtIndex(long index) const
{
    return index >= 0 && index < numberOfItemsInComboBox()
               ? macroGroups()[static_cast<std::size_t>(index)].groupName
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
        groups.reload();
}
