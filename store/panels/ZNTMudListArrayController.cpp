#include "ZNTMudListArrayController.h"

#include "ZNTDatabaseHelper.h"
#include "ZNTShownRows.h"
#include "ZNTText.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace
{

using Value = ZNTMudListArrayController::Value;

/// The field of `entry` that a column names, as one of the three kinds. All are null if the column is
/// unknown.
struct Field {
    std::u16string* text = nullptr;
    std::int64_t* number = nullptr;
    bool* flag = nullptr;
};

Field fieldOf(ZNTMudList& entry, std::string_view column)
{
    if (column == "name")
        return {.text = &entry.name};
    if (column == "url")
        return {.text = &entry.url};
    if (column == "telnetURL")
        return {.text = &entry.telnetURL};
    if (column == "port")
        return {.number = &entry.port};
    if (column == "defaultConnection")
        return {.flag = &entry.defaultConnection};
    if (column == "active")
        return {.flag = &entry.active};
    if (column == "userCreated")
        return {.flag = &entry.userCreated};
    if (column == "displayToUser")
        return {.flag = &entry.displayToUser};
    return {};
}

std::u16string asText(const Value& value)
{
    if (const auto* text = std::get_if<std::u16string>(&value))
        return *text;
    if (const auto* number = std::get_if<std::int64_t>(&value))
        return znt::decimalText(*number);
    return std::get<bool>(value) ? u"1" : u"0";
}

std::int64_t asNumber(const Value& value) { return znt::longValue(asText(value)); }

} // namespace

ZNTMudListArrayController::ZNTMudListArrayController(ZNTDatabaseHelper& database)
    : database(database),
      _dataObjects(database.getAllMudsFromMudList())
{
}

const ZNTMudList* ZNTMudListArrayController::objectAtIndex(long row) const
{
    return row >= 0 && row < numberOfRowsInTableView() ? &_dataObjects[static_cast<std::size_t>(row)]
                                                       : nullptr;
}

Value ZNTMudListArrayController::tableViewObjectValueForTableColumn(std::string_view column, long row) const
{
    const auto* entry = objectAtIndex(row);
    if (!entry)
        return std::u16string();
    ZNTMudList copy = *entry;
    const auto field = fieldOf(copy, column);
    if (field.number)
        return *field.number;
    if (field.flag)
        return *field.flag;
    return field.text ? *field.text : std::u16string();
}

std::u16string ZNTMudListArrayController::tableViewToolTipForRow(long row) const
{
    const auto* entry = objectAtIndex(row);
    return std::u16string(entry ? znt::unsavedSentence(*entry) : u"");
}

bool ZNTMudListArrayController::tableViewSetObjectValue(const Value& value, std::string_view column, long row)
{
    if (!objectAtIndex(row))
        return false;
    auto& entry = _dataObjects[static_cast<std::size_t>(row)];
    const auto field = fieldOf(entry, column);
    if (column == "defaultConnection")
        takeDefaultFromAllBut(entry);
    if (field.text)
        *field.text = asText(value);
    else if (field.number)
        *field.number = asNumber(value);
    else if (field.flag)
        *field.flag = asNumber(value) != 0;
    else
        return false;
    znt::saveShownRow(database, entry);
    redisplay();
    return database.didLastChangeSucceed();
}

void ZNTMudListArrayController::takeDefaultFromAllBut(const ZNTMudList& entry)
{
    for (auto& other : _dataObjects) {
        if (&other == &entry || !other.defaultConnection)
            continue;
        other.defaultConnection = false;
        znt::saveShownRow(database, other);
    }
}

void ZNTMudListArrayController::addEmptyRow()
{
    ZNTMudList entry;
    entry.name = u"New Row";
    entry.url = u"http://";
    entry.telnetURL = u"some url";
    database.addNewRowMudList(entry);
    add(std::move(entry));
    if (_tableView)
        _tableView->scrollToEndOfTable();
}

void ZNTMudListArrayController::deleteSelectedRow()
{
    if (_tableView)
        deleteRow(_tableView->selectedRow());
}

bool ZNTMudListArrayController::deleteRow(long row)
{
    const auto* entry = objectAtIndex(row);
    if (!entry)
        return false;
    znt::deleteShownRow(database, *entry);
    _dataObjects.erase(_dataObjects.begin() + row);
    redisplay();
    return database.didLastChangeSucceed();
}

bool ZNTMudListArrayController::restoreSystemMudList()
{
    database.restoreSystemDefaultMudList();
    const bool isStored = database.didLastChangeSucceed();
    _dataObjects = database.getAllMudsFromMudList();
    redisplay();
    return isStored;
}

void ZNTMudListArrayController::reload()
{
    auto read = database.getAllMudsFromMudList();
    std::ranges::copy_if(_dataObjects, std::back_inserter(read), &ZNTMudList::isUnsaved);
    _dataObjects = std::move(read);
    redisplay();
}

void ZNTMudListArrayController::add(ZNTMudList entry)
{
    _dataObjects.push_back(std::move(entry));
    redisplay();
}

void ZNTMudListArrayController::setInactiveByIpAndPort(std::u16string_view address,
                                                       std::int64_t portConnectingTo)
{
    for (auto& entry : _dataObjects) {
        if (entry.port != portConnectingTo || entry.telnetURL != address)
            continue;
        entry.active = false;
        znt::saveShownRow(database, entry);
    }
}

void ZNTMudListArrayController::redisplay()
{
    if (_tableView)
        _tableView->reloadData();
}
