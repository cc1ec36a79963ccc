#include "ZNTLogReader.h"
#include "ZNTOldLogs.h"
#include "ZNTTemporaryFolder.h"
#include "ZNTText.h"

#include <filesystem>
#include <sys/stat.h>

namespace
{

std::string allOf(ZNTLogReader& reader)
{
    std::string text;
    while (!reader.isAtEnd())
        if (const auto part = reader.nextPart())
            text += znt::utf8FromText(part.value());
        else
            text += part.error().description;
    return text;
}

TEST(OldLogs, TheNewestStandsFirstAndYearsOfWeeksAreRead)
{
    const ZNTTemporaryFolder folder;
    for (const auto* name : {"zantor_log_31.12.13_21.05.log", "zantor_log_01.02.13_21.05.log",
                             "zantor_log_01.01.10_00.00.log", // of 2011
                             "zantor_log_31.02.13_21.05.log", "zantor_log_31.12.13_25.05.log", "my fight.log",
                             "notes.txt", "sub.log/x"})
        folder.write(name, "");
    std::vector<std::string> names;
    for (const auto& log : znt::oldLogsIn(folder.path()))
        names.push_back(std::filesystem::path(log.path).filename().string());
    // Those without a time of their own were written just now.
    EXPECT_EQ(names,
              (std::vector<std::string>{"zantor_log_31.12.13_25.05.log", "zantor_log_31.02.13_21.05.log",
                                        "my fight.log", "zantor_log_01.02.13_21.05.log",
                                        "zantor_log_31.12.13_21.05.log", "zantor_log_01.01.10_00.00.log"}));
    for (const ZNTLogTime started : {ZNTLogTime{2009, 1, 1, 0, 0}, ZNTLogTime{2010, 1, 1, 0, 0}})
        EXPECT_EQ(znt::timeOfLogNamed("zantor_log_01.01.09_00.00.log", {started.year, 1, 1, 3, 0}), started);
    EXPECT_TRUE(znt::oldLogsIn(folder.path("none")).empty());
}

TEST(OldLogs, APartNeverCutsACharacterAndALargeLogLosesItsBeginning)
{
    const ZNTTemporaryFolder folder;
    for (std::size_t before = 0; before < 8; ++before) { // at 7 the last part is one byte
        const auto log = std::string(ZNTLogReader::partSize - before, 'x') + "\xF0\x9F\x90\x89 \xE0\xB8\x81" +
                         std::string(ZNTLogReader::partSize, 'y');
        folder.write("a.log", log);
        ZNTLogReader whole(folder.path("a.log"));
        EXPECT_TRUE(allOf(whole) == log) << before;
        ZNTLogReader end(folder.path("a.log"), ZNTLogReader::partSize + before);
        const auto text = allOf(end);
        EXPECT_TRUE(log.ends_with(text) && text.size() + 3 >= ZNTLogReader::partSize + before) << before;
    }
    folder.write("a.log", "cut \xE5\x89");
    ZNTLogReader cut(folder.path("a.log"));
    EXPECT_EQ(allOf(cut), "cut \uFFFD");
}

TEST(OldLogs, AFileThatShrinksOrIsNoneEndsTheReading)
{
    const ZNTTemporaryFolder folder;
    ASSERT_EQ(::mkfifo(folder.path("pipe.log").c_str(), 0600), 0);
    for (const auto* name : {"pipe.log", "none.log", "."}) {
        ZNTLogReader reader(folder.path(name));
        EXPECT_FALSE(reader.nextPart()) << name;
        EXPECT_TRUE(reader.isAtEnd()) << name;
    }
    folder.write("a.log", std::string(2 * ZNTLogReader::partSize, 'x'));
    ZNTLogReader reader(folder.path("a.log"));
    EXPECT_TRUE(reader.nextPart());
    std::filesystem::resize_file(folder.path("a.log"), 10);
    EXPECT_EQ(allOf(reader), "");
}

} // namespace
