#include "ZNTLogger.h"
#include "ZNTTestPlatform.h"

#include <cstdlib>
#include <ctime>
#include <filesystem>

using namespace std::chrono_literals;

namespace
{

struct Logger : testing::Test {
    Logger()
    {
        ::setenv("TZ", "UTC", 1);
        ::tzset();
        machine.loop.startOfTime = std::chrono::sys_days(2012y / 12 / 31) + 21h + 5min;
    }

    ZNTTestPlatform machine;
    /// The year is that of the week.
    const std::string file = "Library/Zantor/logs/zantor_log_31.12.13_21.05.log";
};

} // namespace

TEST_F(Logger, KeepsTextsAsTheyAreInAFileOfThisMinuteForThePlayerAlone)
{
    ZNTLogger logger(machine.platform.places, machine.loop), second(machine.platform.places, machine.loop);
    logger.loggerText(u"萬 gold\r\n");
    second.loggerText(u"of a second run,\n");
    logger.loggerText(u"half a \xD83D pair");
    logger.loggerText(u"\x1b[1;36mlook\r");
    EXPECT_EQ(machine.home.read(file), "萬 gold\r\nof a second run,\n\x1b[1;36mlook\r");
    EXPECT_EQ(std::filesystem::status(machine.home.path(file)).permissions(), std::filesystem::perms(0600));
}

TEST_F(Logger, KeepsLongTextsWholeWhereverACharacterLies)
{
    ZNTLogger logger(machine.platform.places, machine.loop);
    std::string logged;
    for (const std::size_t before : {32766U, 32767U, 32768U, 65535U}) {
        const auto text = std::u16string(before, u'x') + u"🏮" + std::u16string(70'000, u'y');
        // Half a pair at the very end: nothing is kept.
        logger.loggerText(std::u16string_view(text + u"🏮").substr(0, text.size() + 1));
        logger.loggerText(text);
        logged += std::string(before, 'x') + "🏮" + std::string(70'000, 'y');
        EXPECT_TRUE(machine.home.read(file) == logged) << before;
    }
}
