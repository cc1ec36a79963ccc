#include "ZNTLogger.h"
#include "ZNTTestPlatform.h"

#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <gtest/gtest.h>

using namespace std::chrono_literals;

namespace
{

class Logger : public testing::Test
{
protected:
    Logger()
    {
        ::setenv("TZ", "UTC", 1);
        ::tzset();
        machine.loop.startOfTime = std::chrono::sys_days(2012y / 3 / 7) + 21h + 5min;
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
    EXPECT_EQ(std::filesystem::status(machine.home.path(file)).permissions(), std::filesystem::perms(0600));
}

TEST_F(Logger, KeepsLongTextsWholeWhereverACharacterLies)
{
    ZNTLogger logger(machine.platform.places, machine.loop);
    std::string logged;
    for (const std::size_t before : {32767U, 32768U, 65535U}) {
        const std::u16string start(before, u'x'), end(70'000, u'y');
        logger.loggerText(start + u"🏮" + end + u'\xD83C');
        EXPECT_EQ(machine.home.read(file), logged) << "half a pair at the very end";
        logger.loggerText(start + u"🏮" + end);
        logged += std::string(before, 'x') + "🏮" + std::string(70'000, 'y');
        EXPECT_TRUE(machine.home.read(file) == logged) << before;
    }
}

TEST_F(Logger, TwoRunsOfOneMinuteAppendInTurn)
{
    ZNTLogger first(machine.platform.places, machine.loop), second(machine.platform.places, machine.loop);
    first.loggerText(u"a");
    second.loggerText(u"b");
    first.loggerText(u"c");
    EXPECT_EQ(machine.home.read(file), "abc");
}

TEST_F(Logger, NamesTheYearByItsWeeks)
{
    const auto name = [](std::chrono::sys_days day) { return ZNTLogger::fileName(day); };
    EXPECT_EQ(name(2012y / 12 / 31), "zantor_log_31.12.13_00.00.log");
    EXPECT_EQ(name(2021y / 1 / 1), "zantor_log_01.01.20_00.00.log");
}

TEST_F(Logger, GoesWithoutAFileWhereNoneCanBeMade)
{
    machine.home.write("Library", "a file where a folder should be");
    ZNTLogger logger(machine.platform.places, machine.loop);
    logger.loggerText(u"lost");
    EXPECT_EQ(machine.home.read("Library"), "a file where a folder should be");
}
