#pragma once

#include "ZNTTrigger.h"

#include <functional>
#include <string>
#include <string_view>

class ZNTConsoleReplies;
class ZNTDatabaseHelper;

/// The command "/trigger". A change takes effect at once.
class ZNTConsoleTriggers
{
public:
    /// Both references outlive this. `reload` makes the session read the triggers from the store again.
    ZNTConsoleTriggers(ZNTConsoleReplies& replies, ZNTDatabaseHelper& database, std::function<void()> reload);

    /// What may follow "/trigger", with the options of the columns.
    static std::u16string usage();
    /// `words` are those behind "/trigger".
    void carryOut(std::u16string_view words);

private:
    void add(std::u16string_view words);
    /// Complains if the pattern is ill-formed.
    bool canMatch(const ZNTTrigger& trigger);
    bool readOptions(std::u16string_view& words, ZNTTrigger& trigger);
    void list();
    void remove(std::u16string_view word);
    void turn(std::u16string_view word, bool on);
    void withTrigger(std::u16string_view word, const std::function<void(ZNTTrigger&)>& change);
    void finishChange(const ZNTTrigger& trigger, std::u16string_view whatHappened);

    ZNTConsoleReplies& replies;
    ZNTDatabaseHelper& database;
    std::function<void()> reload;
};
