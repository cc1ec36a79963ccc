#include "ZNTReadableColour.h"

TEST(ReadableColour, EveryPairOfTheGamesColoursCanBeReadAndGoodOnesStay)
{
    using namespace znt::colours;
    const ZNTColour all[] = {red, green, yellow, blue, magenta, cyan, black, white};
    for (const auto foreground : all)
        for (const auto background : all) {
            const znt::ColourPair given{foreground, background};
            const auto shown = znt::readable(given);
            EXPECT_GE(znt::contrastRatio(shown.foreground, shown.background), znt::readableContrast);
            if (znt::contrastRatio(foreground, background) >= znt::readableContrast) {
                EXPECT_EQ(shown, given);
            }
        }
    EXPECT_NEAR(znt::contrastRatio(white, black), 21, 0.01);
    EXPECT_NEAR(znt::contrastRatio(white, {0x76, 0x76, 0x76, 255}), 4.54, 0.005) << "as WCAG 2 has it";
    EXPECT_EQ(znt::readable({blue, black}).foreground.blue, 255) << "it is still blue";
}
