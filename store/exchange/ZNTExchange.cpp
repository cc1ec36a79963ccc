#include "ZNTExchange.h"

#include "ZNTDatabaseHelper.h"
#include "ZNTPrivateFiles.h"
#include "ZNTRecordsFile.h"
#include "ZNTRecordsImport.h"
#include "ZNTRecordsText.h"
#include "ZNTText.h"

#include <cerrno>

using namespace znt::exchange;

namespace
{

constexpr std::u16string_view storeUnreadable = u"The database could not be read; nothing was exported.";
constexpr std::u16string_view storeUnchanged = u"This could not be stored; nothing has changed.";

std::u16string counted(std::size_t count, std::u16string_view one)
{
    return znt::decimalText(static_cast<std::int64_t>(count)) + u" " + std::u16string(one) +
           (count == 1 ? u"" : u"s");
}

/// "12 triggers, 30 macros in 2 groups and 3 games", without what there is none of.
std::u16string inWords(const Counts& counts)
{
    std::vector<std::u16string> parts;
    if (counts.triggers > 0)
        parts.push_back(counted(counts.triggers, u"trigger"));
    if (counts.macros > 0 && counts.groups > 0)
        parts.push_back(counted(counts.macros, u"macro") + u" in " + counted(counts.groups, u"group"));
    else if (counts.macros > 0)
        parts.push_back(counted(counts.macros, u"macro"));
    else if (counts.groups > 0)
        parts.push_back(counted(counts.groups, u"group"));
    if (counts.games > 0)
        parts.push_back(counted(counts.games, u"game"));
    std::u16string words;
    for (std::size_t at = 0; at < parts.size(); ++at)
        words += (at == 0 ? u"" : at + 1 == parts.size() ? u" and " : u", ") + parts[at];
    return words;
}

Counts countsOf(const ZNTRecords& records)
{
    Counts counts{.triggers = records.triggers.size(),
                  .macros = 0,
                  .groups = records.groups.size(),
                  .games = records.games.size()};
    for (const auto& group : records.groups)
        counts.macros += group.macrosList.size();
    return counts;
}

std::u16string inWords(const Imported& report)
{
    std::u16string words =
        report.added.isNothing() ? u"Nothing was new." : inWords(report.added) + u" imported.";
    if (!report.alreadyThere.isNothing())
        words += u" Already there: " + inWords(report.alreadyThere) + u".";
    if (!report.newDefault.empty())
        words += u" " + report.newDefault + u" is the default game now.";
    return words;
}

ZNTExchange::Answer failure(std::u16string_view words) { return {false, std::u16string(words)}; }

/// "FILE could not be read: No such file or directory. Nothing has changed."
ZNTExchange::Answer failure(const std::string& path, std::u16string_view what, const ZNTError& error)
{
    return failure(znt::textFromUtf8(path) + std::u16string(what) + znt::textFromUtf8(error.description));
}

} // namespace

ZNTExchange::Answer ZNTExchange::exportTo(const std::string& path, Overwrite overwrite)
{
    const auto there = fileAt(path);
    if (there == FileThere::NoFile)
        return failure(znt::textFromUtf8(path) + u" is no ordinary file. Name another one.");
    if (there == FileThere::OtherFile && overwrite == Overwrite::ExportsOnly)
        return failure(znt::textFromUtf8(path) +
                       u" is there already and is no exported file. Name another file.");
    const auto records = database.allRecords();
    if (!records)
        return failure(storeUnreadable);
    const auto counts = countsOf(*records);
    if (counts.isNothing())
        return failure(u"There is nothing to export.");
    const auto text = textOfRecords(*records);
    // A file that could not be imported would be noticed when it is too late.
    if (const auto readAgain = recordsInText(text); !readAgain)
        return failure(
            u"This is too much for a file, or holds what a file cannot hold. Nothing was exported. " +
            znt::textFromUtf8(readAgain.error().description));
    if (const auto written = znt::replacePrivateFile(path, text); !written)
        return failure(path, u" could not be written: ", written.error());
    return {true, inWords(counts) + u" exported to " + znt::textFromUtf8(path) + u"."};
}

ZNTExchange::Answer ZNTExchange::importFrom(const std::string& path)
{
    const auto text = contentOfRegularFile(path, mostBytes);
    if (!text && text.error().code == EFBIG)
        return failure(znt::textFromUtf8(path) + u" is longer than 16 MiB. Nothing has changed.");
    if (!text)
        return failure(path, u" could not be read: ", text.error());
    const auto records = recordsInText(text.value());
    if (!records)
        return failure(u"Nothing has changed. " + znt::textFromUtf8(records.error().description));
    const auto imported = addToStore(database, records.value());
    if (!imported)
        return failure(storeUnchanged);
    return {true, inWords(*imported), imported->triggers};
}
