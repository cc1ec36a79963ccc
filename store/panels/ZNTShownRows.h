#pragma once

#include "ZNTMacro.h"
#include "ZNTMudList.h"
#include "ZNTTrigger.h"

#include <string_view>

class ZNTDatabaseHelper;

/// Saves and deletes the records that a list shows.
///
/// A record whose insert failed has the key of another row. It stays in its list and is marked as unsaved,
/// and these operations never change or delete that other row.
namespace znt
{

/// Updates the record's row, or inserts the record if it is unsaved.
void saveShownRow(ZNTDatabaseHelper& database, ZNTTrigger& trigger);
void saveShownRow(ZNTDatabaseHelper& database, ZNTMacro& macro);
void saveShownRow(ZNTDatabaseHelper& database, ZNTMudList& entry);

/// Deletes the record's row, a game's row by hiding it. Does nothing if the record is unsaved.
void deleteShownRow(ZNTDatabaseHelper& database, const ZNTTrigger& trigger);
void deleteShownRow(ZNTDatabaseHelper& database, const ZNTMacro& macro);
void deleteShownRow(ZNTDatabaseHelper& database, const ZNTMudList& entry);

/// The sentence of an unsaved record's tool tip; empty for any other record.
template <typename Record>
constexpr std::u16string_view unsavedSentence(const Record& record)
{
    return record.isUnsaved ? u"Not saved: the database could not be written. Edit the row to try again."
                            : std::u16string_view();
}

} // namespace znt
