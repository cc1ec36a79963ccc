#pragma once

#include "ZNTMudListArrayController.h"

#include <optional>
#include <string_view>

class ZNTConsoleReplies;
class ZNTDatabaseHelper;

/// The commands "/mud" and "/muds": the address book, with the rules of the window's sheet.
class ZNTConsoleAddressBook
{
public:
    /// Both outlive this.
    ZNTConsoleAddressBook(ZNTConsoleReplies& replies, ZNTDatabaseHelper& database);

    /// `words` are those behind "/mud".
    void carryOut(std::u16string_view words);
    void list();

private:
    void add(std::u16string_view words);
    void remove(std::u16string_view word);
    void makeDefault(std::u16string_view word);
    void restore();
    /// The row that `word` means. Complains and returns -1 if it means none or several.
    [[nodiscard]] long meant(std::u16string_view word);
    /// Reads the list again. The list changes with each command, also if the store has refused the change.
    void reread() { book.emplace(database); }

    ZNTConsoleReplies& replies;
    ZNTDatabaseHelper& database;
    std::optional<ZNTMudListArrayController> book;
};
