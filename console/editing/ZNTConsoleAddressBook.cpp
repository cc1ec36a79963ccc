#include "ZNTConsoleAddressBook.h"

#include "ZNTConsoleReplies.h"
#include "ZNTConsoleVerbs.h"
#include "ZNTConsoleWords.h"
#include "ZNTDatabaseHelper.h"

#include <utility>

using namespace znt::words;

namespace
{

/// Takes the last word from the end of `words`. Empty if there is no other word before it.
std::u16string_view takeLastWord(std::u16string_view& words)
{
    const auto blank = words.rfind(u' ');
    if (blank == words.npos)
        return {};
    const auto word = words.substr(blank + 1);
    words = znt::trimmedOfWhitespace(words.substr(0, blank));
    return word;
}

} // namespace

ZNTConsoleAddressBook::ZNTConsoleAddressBook(ZNTConsoleReplies& replies, ZNTDatabaseHelper& database)
    : replies(replies),
      database(database)
{
    reread();
}

void ZNTConsoleAddressBook::carryOut(std::u16string_view words)
{
    carryOutVerb(replies, u"mud",
                 {{u"add", [this](auto rest) { add(rest); }},
                  {u"list", [this](auto) { list(); }},
                  {u"remove", [this](auto word) { remove(word); }},
                  {u"default", [this](auto word) { makeDefault(word); }},
                  {u"restore", [this](auto) { restore(); }}},
                 words);
}

void ZNTConsoleAddressBook::list()
{
    for (long row = 0; row < book->numberOfRowsInTableView(); ++row) {
        const auto& mud = *book->objectAtIndex(row);
        replies.say(joined({numbered(static_cast<std::size_t>(row)), mud.name, u": ", mud.telnetURL, u" ",
                            znt::decimalText(mud.port), mud.defaultConnection ? u" (default)" : u""}));
    }
    if (book->numberOfRowsInTableView() == 0)
        replies.say(u"The address book is empty; /mud restore lists the removed games again.");
}

/// The name of a game may have blanks in it: the port is the last word and the host the one before it.
void ZNTConsoleAddressBook::add(std::u16string_view words)
{
    const int port = portNumber(takeLastWord(words));
    const auto host = takeLastWord(words);
    if (port == 0 || host.empty()) {
        replies.complain(u"Say its name, its host and a port from 1 to 65535: /mud add NAME HOST PORT");
        return;
    }
    ZNTMudList mud;
    mud.name = words;
    mud.telnetURL = host;
    mud.port = port;
    database.addNewRowMudList(mud);
    if (!replies.complainUnless(database.didLastChangeSucceed()))
        return;
    replies.say(joined({mud.name, u" is in the address book."}));
    book->add(std::move(mud));
}

long ZNTConsoleAddressBook::meant(std::u16string_view word)
{
    std::vector<std::u16string> names;
    for (long row = 0; row < book->numberOfRowsInTableView(); ++row)
        names.push_back(book->objectAtIndex(row)->name);
    return indexMeant(replies, names, word, u"game");
}

void ZNTConsoleAddressBook::remove(std::u16string_view word)
{
    const long row = meant(word);
    if (row < 0)
        return;
    const auto name = book->objectAtIndex(row)->name;
    if (replies.complainUnless(book->deleteRow(row)))
        replies.say(joined({name, u" is listed no more; /mud restore brings it back."}));
    else
        reread();
}

void ZNTConsoleAddressBook::makeDefault(std::u16string_view word)
{
    const long row = meant(word);
    if (row < 0)
        return;
    if (replies.complainUnless(book->tableViewSetObjectValue(true, "defaultConnection", row)))
        replies.say(
            joined({book->objectAtIndex(row)->name, u" is offered from now on when the program starts."}));
    else
        reread();
}

void ZNTConsoleAddressBook::restore()
{
    if (replies.complainUnless(book->restoreSystemMudList()))
        replies.say(u"Every game is listed again.");
}
