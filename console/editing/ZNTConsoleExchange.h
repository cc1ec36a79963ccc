#pragma once

#include "ZNTExchange.h"

#include <functional>
#include <string>
#include <string_view>

class ZNTConsoleReplies;

/// The commands "/export" and "/import". A file name may hold blanks; "~/" at its start is the player's home.
class ZNTConsoleExchange
{
public:
    /// All outlive this. `whenImported` is called after each import.
    ZNTConsoleExchange(ZNTConsoleReplies& replies, ZNTDatabaseHelper& database, std::string home,
                       std::function<void()> whenImported);

    /// Only an exported file is written over.
    void exportTo(std::u16string_view file);
    void importFrom(std::u16string_view file);

private:
    void reply(const ZNTExchange::Answer& answer);
    /// The path of `file`. Empty, with a complaint, if no file is named.
    [[nodiscard]] std::string pathOf(std::u16string_view file, std::u16string_view command);

    ZNTConsoleReplies& replies;
    ZNTExchange exchange;
    std::string home;
    std::function<void()> whenImported;
};
