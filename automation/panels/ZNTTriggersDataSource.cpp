#include "ZNTTriggersDataSource.h"

#include "ZNTDatabaseHelper.h"
#include "ZNTShownRows.h"
#include "ZNTText.h"
#include "ZNTTriggerColumns.h"

#include <algorithm>
#include <type_traits>
#include <utility>

namespace
{

constexpr std::u16string_view paneSeparator = u"~\n";
constexpr std::u16string_view sentenceOfRest = u"Too slow: the pattern took too long for three texts in a "
                                               u"row. For half a minute it is tried with little "
                                               u"time.";

std::u16string paneTextOf(const ZNTTrigger& trigger)
{
    return trigger.check + std::u16string(paneSeparator) + trigger.action;
}

struct PaneFields {
    std::u16string check, action;
    bool operator==(const PaneFields&) const = default;
};

PaneFields readPane(const std::u16string& text)
{
    PaneFields fields;
    const auto checkEnd = text.find(paneSeparator);
    fields.check = text.substr(0, checkEnd);
    if (fields.check.ends_with(u'~'))
        fields.check.pop_back();
    if (checkEnd == std::u16string::npos)
        return fields;
    const auto actionStart = checkEnd + paneSeparator.size();
    fields.action = text.substr(actionStart, text.find(paneSeparator, actionStart) - actionStart);
    return fields;
}

/// Calls `use` with the field of `trigger` that `column` names; no call for any other name.
template <typename Trigger, typename Use>
void withField(Trigger& trigger, std::string_view column, Use use)
{
    const auto* known = std::ranges::find(ZNTTriggerColumns, column, &ZNTTriggerColumn::name);
    if (known != ZNTTriggerColumns.end())
        std::visit([&](auto field) { use(trigger.*field); }, known->field);
}

struct ReadField {
    ZNTTriggersDataSource::Value& value;
    void operator()(const std::u16string& text) { value = text; }
    void operator()(const std::optional<std::u16string>& text) { value = text.value_or(u""); }
    void operator()(bool flag) { value = flag; }
};

struct WriteField {
    const ZNTTriggersDataSource::Value& value;
    bool hasWritten = false;

    template <typename Field>
    void operator()(Field& field)
    {
        using Held = std::conditional_t<std::is_same_v<Field, bool>, bool, std::u16string>;
        if (const auto* held = std::get_if<Held>(&value)) {
            field = *held;
            hasWritten = true;
        }
    }
};

} // namespace

ZNTTriggersDataSource::ZNTTriggersDataSource(ZNTDatabaseHelper& database, ZNTTableView& tableView,
                                             ZNTTextArea& triggerTextView)
    : database(database),
      _dataObjects(database.loadTriggers()),
      _tableView(tableView),
      triggerTextView(triggerTextView)
{
}

// The rows

const ZNTTrigger* ZNTTriggersDataSource::getObjectAtIndex(long index) const
{
    return index >= 0 && index < countOfDataObjects() ? &_dataObjects[static_cast<std::size_t>(index)]
                                                      : nullptr;
}

ZNTTrigger* ZNTTriggersDataSource::rowAt(long index)
{
    return index >= 0 && index < countOfDataObjects() ? &_dataObjects[static_cast<std::size_t>(index)]
                                                      : nullptr;
}

void ZNTTriggersDataSource::addObjectToList(ZNTTrigger trigger)
{
    _dataObjects.push_back(std::move(trigger));
    _tableView.reloadData();
}

void ZNTTriggersDataSource::addObjectsToList(const std::vector<ZNTTrigger>& triggers)
{
    _dataObjects.insert(_dataObjects.end(), triggers.begin(), triggers.end());
    _tableView.reloadData();
}

void ZNTTriggersDataSource::setNewList(std::vector<ZNTTrigger> triggers)
{
    _dataObjects = std::move(triggers);
    _tableView.reloadData();
}

void ZNTTriggersDataSource::updateTriggerInList(ZNTTrigger trigger, long indexOfObject)
{
    auto* row = rowAt(indexOfObject);
    if (row == nullptr)
        return;
    *row = std::move(trigger);
    _tableView.reloadData();
}

// The table's questions

ZNTTriggersDataSource::Value
ZNTTriggersDataSource::tableViewObjectValueForTableColumn(std::string_view column, long row) const
{
    Value value;
    if (const auto* trigger = getObjectAtIndex(row))
        withField(*trigger, column, ReadField{value});
    return value;
}

std::u16string ZNTTriggersDataSource::tableViewToolTipForRow(long row) const
{
    const auto* trigger = getObjectAtIndex(row);
    if (trigger == nullptr)
        return {};
    const bool isResting = !trigger->isUnsaved && isTriggerResting && isTriggerResting(trigger->oid);
    return znt::joinedSentences(
        {znt::unsavedSentence(*trigger), isResting ? sentenceOfRest : std::u16string_view()});
}

void ZNTTriggersDataSource::tableViewSetObjectValue(const Value& value, std::string_view column, long row)
{
    auto* trigger = rowAt(row);
    if (trigger == nullptr)
        return;
    const bool isPaneToFollow = row == getCurrentSelectedTriggerIndex() && !isPaneEdited(*trigger);
    WriteField write{value};
    withField(*trigger, column, [&](auto& field) { write(field); });
    if (!write.hasWritten)
        return;
    znt::saveShownRow(database, *trigger);
    _tableView.reloadData();
    if (isPaneToFollow)
        insertTriggerText(); // else saving the pane would undo the edit
}

bool ZNTTriggersDataSource::tableViewShouldSelectRow(long)
{
    insertTriggerText();
    return true;
}

bool ZNTTriggersDataSource::tableViewShouldSelectTableColumn(std::string_view)
{
    insertTriggerText();
    return true;
}

// The pane

void ZNTTriggersDataSource::insertTriggerText()
{
    const auto* trigger = getObjectAtIndex(getCurrentSelectedTriggerIndex());
    triggerTextView.setText(trigger ? paneTextOf(*trigger) : std::u16string());
}

void ZNTTriggersDataSource::fillDataObjectFromScreen(ZNTTrigger& trigger) const
{
    const auto fields = readPane(triggerTextView.text());
    trigger.check = fields.check;
    trigger.action = fields.action;
}

bool ZNTTriggersDataSource::isPaneEdited(const ZNTTrigger& trigger) const
{
    // A "~" at the check's end, or a separator inside, is read back as less than was shown.
    return readPane(triggerTextView.text()) != readPane(paneTextOf(trigger));
}

// The buttons

void ZNTTriggersDataSource::saveToDatabase()
{
    auto* trigger = rowAt(getCurrentSelectedTriggerIndex());
    if (trigger == nullptr)
        return;
    fillDataObjectFromScreen(*trigger);
    if (trigger->oid < 0)
        database.insertTrigger(*trigger);
    else
        znt::saveShownRow(database, *trigger);
    _tableView.reloadData();
}

void ZNTTriggersDataSource::addEmptyRow()
{
    ZNTTrigger trigger;
    trigger.name = u"Change Me";
    trigger.check = u"A %1 kicks you hard!";
    trigger.action = u"kick %1";
    database.insertTrigger(trigger);
    addObjectToList(std::move(trigger));
    _tableView.scrollToEndOfTable();
}

void ZNTTriggersDataSource::removeItem()
{
    _tableView.abortEditing();
    const auto index = getCurrentSelectedTriggerIndex();
    const auto* trigger = getObjectAtIndex(index);
    if (trigger == nullptr)
        return;
    znt::deleteShownRow(database, *trigger);
    _dataObjects.erase(_dataObjects.begin() + index);
    _tableView.reloadData();
    insertTriggerText(); // the selected row holds another trigger now, or none
}
