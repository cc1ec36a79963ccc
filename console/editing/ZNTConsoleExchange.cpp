#include "ZNTConsoleExchange.h"

#include "ZNTConsoleReplies.h"
#include "ZNTConsoleWords.h"

#include <utility>

using namespace znt::words;

ZNTConsoleExchange::ZNTConsoleExchange(ZNTConsoleReplies& replies, ZNTDatabaseHelper& database,
                                       std::string home, std::function<void()> whenImported)
    : replies(replies),
      exchange(database),
      home(std::move(home)),
      whenImported(std::move(whenImported))
{
}

std::string ZNTConsoleExchange::pathOf(std::u16string_view file, std::u16string_view command)
{
    const auto path = znt::utf8FromText(znt::trimmedOfWhitespace(file));
    if (path.empty())
        replies.complain(joined({u"Name a file: /", command, u" FILE"}));
    return path.starts_with("~/") ? home + path.substr(1) : path;
}

void ZNTConsoleExchange::exportTo(std::u16string_view file)
{
    if (const auto path = pathOf(file, u"export"); !path.empty())
        reply(exchange.exportTo(path, ZNTExchange::Overwrite::ExportsOnly));
}

void ZNTConsoleExchange::importFrom(std::u16string_view file)
{
    const auto path = pathOf(file, u"import");
    if (path.empty())
        return;
    auto answer = exchange.importFrom(path);
    if (!answer.newTriggers.empty())
        answer.words += u" The triggers take effect after /reload.";
    whenImported();
    reply(answer);
}

void ZNTConsoleExchange::reply(const ZNTExchange::Answer& answer)
{
    if (answer.hasSucceeded)
        replies.say(answer.words);
    else
        replies.complain(answer.words);
}
