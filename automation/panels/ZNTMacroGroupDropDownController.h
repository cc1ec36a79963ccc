#pragma once

#include "ZNTMacroGroups.h"
#include "ZNTPlatform.h"
#include "ZNTScreenElements.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

/// The selector of macro groups: an editable combo box over the stored groups. The current group is the one
/// whose name the box shows. It is looked up again each time; nothing else remembers it.
class ZNTMacroGroupDropDownController
{
public:
    /// The notification after which the groups are read from the store again.
    static constexpr std::string_view comboBoxChangedName = "COMBO_BOX_CHANGED";

    /// All arguments outlive this.
    ZNTMacroGroupDropDownController(const ZNTPlatform& platform, ZNTDatabaseHelper& database,
                                    ZNTComboBox& macroGroupComboBox);

    /// The group named by the selector, or null. Valid until the groups change.
    [[nodiscard]] const ZNTMacroGroup* getCurrentMacroGroup() const;

    enum class WhenNoneMatches { SayNothing, ShowAlert };
    /// The current group's key, or -1. The alert is not shown for an empty box.
    std::int64_t getCurrentMacroGroupOid(WhenNoneMatches whenNoneMatches);

    // The buttons
    void createNewMacroGroup();
    /// The same if a name is typed that no group has yet. Answers whether it is.
    bool createNamedMacroGroup();
    void deleteMacroGroup();

    // The combo box's questions
    [[nodiscard]] long numberOfItemsInComboBox() const { return static_cast<long>(macroGroups().size()); }
    [[nodiscard]] std::u16string comboBoxObjectValueForItemAtIndex(long index) const;

    /// The name that the player picked or typed last. The front end sets it on every change of the box, and
    /// each setting calls the observers.
    [[nodiscard]] const std::u16string& currentValueInComboBox() const { return currentValueInComboBox_; }
    void setCurrentValueInComboBox(std::u16string_view value);
    /// Calls `observer` at every setting, until the returned object is destroyed.
    [[nodiscard]] std::unique_ptr<ZNTNotificationCenter::Observation>
    observeCurrentValueInComboBox(std::function<void()> observer);

    [[nodiscard]] const std::vector<ZNTMacroGroup>& macroGroups() const { return groups.all(); }

private:
    void loadAllMacroGroups(std::string_view notification);
    void deleteConfirmedGroup(std::int64_t oid);

    ZNTPlatform platform;
    ZNTComboBox& macroGroupComboBox;
    ZNTMacroGroups groups;
    std::u16string currentValueInComboBox_;
    ZNTNotificationCenter valueObservers;
    std::unique_ptr<ZNTNotificationCenter::Observation> comboBoxChanged;
};
