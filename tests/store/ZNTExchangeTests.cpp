#include "ZNTExchange.h"
#include "ZNTRecordsText.h"
#include "ZNTStoredFiles.h"
#include "ZNTText.h"

#include <sys/stat.h>

using testing::HasSubstr;

namespace
{

const std::string begin = "Zantor export 1\n";

class ZNTExchangeTest : public ZNTStoreFixture
{
protected:
    using Overwrite = ZNTExchange::Overwrite;

    ZNTExchangeTest()
    {
        store.runSQL("delete from ZNTMudList");
        store.runSQL("insert into ZNTMudList (name, telnetURL, port) values ('a', 'a.example', 23)");
    }
    std::string exported(Overwrite overwrite = Overwrite::ExportsOnly, const std::string& behindPath = "")
    {
        return znt::utf8FromText(exchange.exportTo(path + behindPath, overwrite).words);
    }
    std::string importedFrom(const std::string& place)
    {
        const auto done = exchange.importFrom(place);
        newTriggers = done.newTriggers.size();
        return znt::utf8FromText(done.words);
    }
    std::size_t newTriggers = 0; ///< of the last import
    /// What an import of a file with this content answers.
    std::string answerTo(const std::string& content)
    {
        machine.home.write("records.txt", content);
        return importedFrom(path);
    }
    std::vector<std::string> everything() const
    {
        return files.rows(
            "select 't', name, checkString, action, enabled, gag, sound_file_to_play from ZNTTrigger "
            "union all select 'm', ZNTMacro.name, dataToExecute, groupName, '', '', '' from ZNTMacro, "
            "ZNTMacroGroup where ZNTMacroGroup.oid = zntMacroGroupFK union all select 'g', name, telnetURL, "
            "port, defaultConnection, active, url from ZNTMudList");
    }

    ZNTDatabaseHelper store{places, machine.log};
    ZNTExchange exchange{store};
    const std::string path = machine.home.path("records.txt");
};

TEST_F(ZNTExchangeTest, EveryTextComesBackAsItWas)
{
    for (const std::u16string& text : std::initializer_list<std::u16string>{
             u"", u" blanks ", u"\ttab", u"in\tside", u"(\\w+) = \"x\" # [end]", u"\"quoted\"", u"\"\\", u"#",
             u"[end]", u"two\nlines\r\n", u"bell \a\x1B[0m", u"\x85\u2028\uFEFF", u"剑 \U0001F409",
             u"half \xD83D pair", u"=", u"\\n", std::u16string(u"nul \0 inside", 12)}) {
        SCOPED_TRACE(znt::utf8FromText(text));
        ZNTMudList second;
        second.port = 70'000;
        second.defaultConnection = true;
        second.active = false;
        const ZNTRecords records{
            .triggers = {{.name = text, .check = text, .action = text, .soundFileToPlay = text, .gag = true},
                         {.check = text, .active = true}},
            .groups = {{.groupName = text, .macrosList = {{.name = text, .dataToExecute = text}}}},
            .games = {{.name = text, .url = text, .telnetURL = text, .port = 23, .defaultConnection = true},
                      second}};
        const auto written = znt::exchange::textOfRecords(records);
        const auto read = znt::exchange::recordsInText(written);
        ASSERT_TRUE(read) << read.error().description;
        const auto& [triggers, groups, games] = read.value();
        EXPECT_EQ(triggers[0].check, text);
        EXPECT_EQ(triggers[0].soundFileToPlay, text) << "an empty one is not the same as none";
        EXPECT_EQ(triggers[1].soundFileToPlay, std::nullopt);
        EXPECT_TRUE(triggers[0].gag && !triggers[0].active && triggers[1].active);
        EXPECT_EQ(groups.at(0).macrosList.at(0).dataToExecute, text);
        EXPECT_TRUE(games[0].telnetURL == text && games[0].defaultConnection && games[0].active);
        EXPECT_FALSE(games[1].defaultConnection || games[1].active || games[1].port != 0);
        EXPECT_EQ(znt::exchange::textOfRecords(read.value()), written);
        EXPECT_TRUE(znt::exchange::isExported("\xEF\xBB\xBF" + written));
        EXPECT_FALSE(znt::exchange::isExported("\xEF\xBB\xBF not " + written));
    }
}

TEST_F(ZNTExchangeTest, AWrongFileChangesNothingAndNamesTheLine)
{
    const struct {
        std::string content;
        const char* complaint;
    } rows[] = {
        {"", "Line 1: The file is empty."},
        {"\x89PNG\r\n", "Line 1: This is no exported file"},
        {"Zantor export 2\n[end]\n", "Line 1: The file was exported by another version"},
        {begin, "Line 1: The file is cut off"},
        {begin + "[group]\nname = g\n", "Line 3: The file is cut off"},
        {begin + "[end]\n\n[trigger]\n", "Line 4: Nothing may follow"},
        {begin + "[alias]\n", "Line 2: \"[alias]\" is none of"},
        {begin + "name = x\n[end]\n", "Line 2: A field stands before"},
        {begin + "[macro]\nname = x\n", "Line 2: A macro stands below its group"},
        {begin + "[trigger]\npatern = x\n",
         "Line 3: A trigger has no field \"patern\". It has name, pattern"},
        {begin + "[trigger]\npattern = x\npattern = y\n", "Line 4: \"pattern\" stands twice"},
        {begin + "[trigger]\nname = x\n\n[end]\n", "Line 2: The trigger that starts here has no \"pattern\""},
        {begin + "[trigger]\nkick him\n", "Line 3: This is neither"},
        {begin + "[trigger]\nactive = YES\n", "Line 3: \"active\" is yes or no"},
        {begin + "[game]\nport = 65536\n", "Line 3: \"port\" is a number"},
        {begin + "[game]\nport = -1\n", "Line 3: \"port\" is a number"},
        {begin + "[game]\nport =\n", "Line 3: \"port\" is a number"},
        {begin + "[group]\nname = \"x\n", "Line 3: A value that starts"},
        {begin + "[group]\nname = \"x\" y\n", "Line 3: A value that starts"},
        {begin + "[group]\nname = \"\\\n", "Line 3: Between quotation marks"},
        {begin + "[group]\nname = \"\\u12g4\"\n", "Line 3: Between quotation marks"},
        {begin + "[group]\nname = a\x01\n", "Line 3: This value holds a control"},
        {begin + "[group]\nname = \xFF\n", "Line 3: This is no text in UTF-8"},
        {begin + "[trigger]\npattern = x\n[game]\nname = a\naddress = a\nport = 1\ndefault = "
                 "yes\n[game]\nname = b\n"
                 "address = b\nport = 1\ndefault = yes\n[end]\n",
         "Line 9: This is a second default game; the first one starts at line 4."}};
    const auto before = everything();
    for (const auto& [content, complaint] : rows) {
        EXPECT_THAT(answerTo(content), testing::StartsWith(std::string("Nothing has changed. ") + complaint));
        EXPECT_EQ(everything(), before) << content;
    }
    std::string tooMany = begin;
    for (std::size_t at = 0; at <= znt::exchange::mostEntries; ++at)
        tooMany += "[trigger]\npattern = x\n";
    EXPECT_THAT(answerTo(tooMany + "[end]\n"), HasSubstr("more than 20,000 entries"));
    EXPECT_THAT(answerTo(begin + std::string(znt::exchange::mostBytes, '#')),
                HasSubstr("longer than 16 MiB"));
    EXPECT_EQ(everything(), before);
}

TEST_F(ZNTExchangeTest, AFileThatWasCutOrDamagedAnywhereIsReadWholeOrRefused)
{
    const auto whole =
        "\xEF\xBB\xBF" + begin +
        "# a note\r\n[trigger]\r\npattern = \"\\u00e4\\n\" \r\nactive=yes\r\n[group]\nname = g\n[macro]\n"
        "name = m\ntext = look\n[game]\nname = \xE5\x89\x91\naddress = b\nport = 1\n\n[end]\n";
    const auto read = znt::exchange::recordsInText(whole);
    ASSERT_TRUE(read) << read.error().description;
    EXPECT_EQ(read.value().triggers.at(0).check, u"\u00e4\n");
    for (std::size_t length = 0; length + 1 < whole.size(); ++length)
        EXPECT_FALSE(znt::exchange::recordsInText(whole.substr(0, length))) << length;
    for (std::size_t at = 0; at < whole.size(); ++at)
        for (const int change : {0x01, 0x20, 0x80, 0xFF}) {
            auto damaged = whole;
            damaged[at] = static_cast<char>(damaged[at] ^ change);
            const auto result = znt::exchange::recordsInText(damaged);
            EXPECT_TRUE(result || result.error().description.starts_with("Line ")) << damaged;
        }
}

TEST_F(ZNTExchangeTest, WhatIsThereAlreadyStaysAsItIsAndIsNotDoubled)
{
    store.runSQL(
        "insert into ZNTTrigger (name, checkString, action, enabled, gag) values ('t', 'x', 'y', 0, 0)");
    store.runSQL("insert into ZNTMacroGroup (groupName) values ('g')");
    const auto content =
        begin + "[trigger]\nname = t\npattern = x\ncommand = y\nactive = yes\n"
                "[trigger]\nname = t\npattern = x\ncommand = z\n[group]\nname = \" g \"\n[macro]\nname = m\n"
                "text = look\n[group]\nname = new\n[macro]\nname = m\ntext = look\n[game]\nname = a\n"
                "address = a.example\nport = 23\nweb page = http://a\ndefault = yes\n"
                "[game]\nname = a\naddress = a.example\nport = 24\navailable = no\n[end]\n";
    EXPECT_EQ(answerTo(content),
              "1 trigger, 2 macros in 2 groups and 1 game imported. Already there: 1 trigger and "
              "1 game. a is the default game now.");
    EXPECT_EQ(newTriggers, 1U);
    const std::vector<std::string> all{"t|t|x|y|0|0|NULL", "t|t|x|z|0|0|NULL",      "m|m|look|g|||",
                                       "m|m|look|new|||",  "g|a|a.example|23|1|1|", "g|a|a.example|24|0|0|"};
    EXPECT_THAT(everything(), testing::UnorderedElementsAreArray(all));
    EXPECT_EQ(answerTo(content),
              "Nothing was new. Already there: 2 triggers, 2 macros in 2 groups and 2 games.");
    EXPECT_EQ(newTriggers, 0U);
    // The player's own default stays.
    EXPECT_EQ(answerTo(begin + "[game]\nname = c\naddress = c\nport = 1\ndefault = yes\n[end]\n"),
              "1 game imported.");
    EXPECT_EQ(files.value("select telnetURL from ZNTMudList where defaultConnection"), "a.example");
}

TEST_F(ZNTExchangeTest, AnImportThatCannotBeStoredWholeIsNotStoredAtAll)
{
    store.runSQL("create trigger full before insert on ZNTMudList begin select raise(abort, 'full'); end");
    const auto before = everything();
    EXPECT_THAT(
        answerTo(begin +
                 "[trigger]\npattern = x\n[group]\nname = g\n[game]\nname = b\naddress = b\nport = 1\n"
                 "[end]\n"),
        HasSubstr("nothing has changed"));
    EXPECT_EQ(everything(), before);
    EXPECT_EQ(files.value("select count(*) from ZNTMacroGroup where groupName = 'g'"), "0");
    store.runSQL("drop trigger full"); // the store can be written again
    EXPECT_EQ(answerTo(begin + "[trigger]\npattern = x\n[end]\n"), "1 trigger imported.");
}

TEST_F(ZNTExchangeTest, AnExportTakesThePlaceOfAnotherExportOnlyAndIsForThePlayerAlone)
{
    store.runSQL("insert into ZNTTrigger (name, checkString, enabled) values ('inactive', 'x', 0)");
    EXPECT_EQ(exported(), "1 trigger and 1 game exported to " + path + ".");
    struct stat facts {
    };
    ASSERT_EQ(::stat(path.c_str(), &facts), 0);
    EXPECT_EQ(facts.st_mode & 0777U, 0600U);
    EXPECT_THAT(machine.home.read("records.txt"),
                HasSubstr("name = inactive\npattern = x\ncommand =\nactive = no\n"));
    EXPECT_THAT(exported(), HasSubstr("exported to")) << "over an older export";
    machine.home.write("records.txt", "my poems");
    EXPECT_THAT(exported(), HasSubstr("is there already and is no exported file"));
    EXPECT_EQ(machine.home.read("records.txt"), "my poems");
    EXPECT_THAT(exported(Overwrite::AnyFile), HasSubstr("exported to"));
}

TEST_F(ZNTExchangeTest, WhatIsNoFileOrCannotBeReadIsRefusedAtOnce)
{
    ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
    EXPECT_THAT(exported(Overwrite::AnyFile), HasSubstr("is no ordinary file"));
    EXPECT_THAT(importedFrom(path), HasSubstr("could not be read"));
    EXPECT_THAT(importedFrom(path + "x"), HasSubstr("No such file"));
    EXPECT_THAT(importedFrom(machine.home.path()), HasSubstr("Is a directory"));
    EXPECT_THAT(exported(Overwrite::AnyFile, "/x"), HasSubstr("could not be"));
    // A part of the store that cannot be read is not taken for an empty one.
    store.runSQL("drop table ZNTMacro");
    store.runSQL("insert into ZNTMacroGroup (groupName) values ('g')");
    EXPECT_THAT(exported(Overwrite::AnyFile, "x"), HasSubstr("nothing was exported"));
    EXPECT_FALSE(machine.home.has("records.txtx"));
}

} // namespace
