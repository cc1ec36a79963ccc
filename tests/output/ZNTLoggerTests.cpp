#include "ZNTLogger.h"
#include "ZNTTestPlatform.h"

#include <cstdlib>
#include <ctime>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace
{

class Logger : public testing::Test
{
protected:
    Logger()
    {
        ::setenv("TZ", "UTC", 1);
        ::tzset();
        machine.loop.startOfTime = at(2012, 3, 7, 21, 5);
    }

    static std::chrono::system_clock::time_point at(int year, int month, int day, int hour, int minute)
    {
        std::tm parts{};
        parts.tm_year = year - 1900;
        parts.tm_mon = month - 1;
        parts.tm_mday = day;
        parts.tm_hour = hour;
        parts.tm_min = minute;
        return std::chrono::system_clock::from_time_t(::timegm(&parts));
    }

    ZNTTestPlatform machine;
    const std::string file = "Library/Zantor/logs/zantor_log_07.03.12_21.05.log";
};

} // namespace

TEST_F(Logger, KeepsTextsAsTheyAreInAFileOfThisMinuteForThePlayerAlone)
{
    ZNTLogger logger(machine.platform.places, machine.loop);
    logger.loggerText(u"萬 gold\r\n");
    logger.loggerText(u"");
    logger.loggerText(u"half a \xD83D pair");
    logger.loggerText(u"\x1b[1;36mlook\r");
    EXPECT_EQ(machine.home.read(file), "萬 gold\r\n\x1b[1;36mlook\r");
    struct stat status {
    };
    ASSERT_EQ(::stat(machine.home.path(file).c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0600U);
}

TEST_F(Logger, KeepsLongTextsWholeWhereverACharacterLies)
{
    ZNTLogger logger(machine.platform.places, machine.loop);
    std::string logged;
    for (const std::size_t before : {32767U, 32768U, 65535U}) {
        const std::u16string start(before, u'x'), end(70'000, u'灯');
        logger.loggerText(start + u"🏮" + end + u'\xD83C');
        EXPECT_EQ(machine.home.read(file), logged) << "half a pair at the very end";
        logger.loggerText(start + u"🏮" + end);
        logged += std::string(before, 'x') + "🏮";
        for (std::size_t count = 0; count < end.size(); ++count)
            logged += "灯";
        EXPECT_TRUE(machine.home.read(file) == logged) << before;
    }
}

TEST_F(Logger, TwoRunsOfOneMinuteAppendInTurn)
{
    ZNTLogger first(machine.platform.places, machine.loop);
    first.loggerText(u"a");
    ZNTLogger second(machine.platform.places, machine.loop);
    second.loggerText(u"b");
    first.loggerText(u"c");
    EXPECT_EQ(machine.home.read(file), "abc");
}

TEST_F(Logger, NamesTheYearByItsWeeks)
{
    EXPECT_EQ(ZNTLogger::fileName(at(2012, 12, 31, 0, 0)), "zantor_log_31.12.13_00.00.log");
    EXPECT_EQ(ZNTLogger::fileName(at(2021, 1, 1, 9, 7)), "zantor_log_01.01.20_09.07.log");
}

TEST_F(Logger, GoesWithoutAFileWhereNoneCanBeMade)
{
    machine.home.write("Library", "a file where a folder should be");
    ZNTLogger logger(machine.platform.places, machine.loop);
    logger.loggerText(u"lost");
    EXPECT_EQ(machine.home.read("Library"), "a file where a folder should be");
}
