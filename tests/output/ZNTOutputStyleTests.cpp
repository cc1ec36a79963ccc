#include "ZNTOutputSamples.h"

using namespace znt::colours;

TEST(OutputStyle, ColoursAreReversedThenFaintThenConcealedAndFewWhenThereAreTooMany)
{
    // The bits of ZNTTextStyle: 1 italic, 2 strike, 4 reverse, 8 faint, 16 conceal, 32 blink.
    const std::pair<std::uint8_t, ZNTOutputStyle> rows[]{
        {4, {blue, red}},
        {8, {{127, 0, 127}, blue}},
        {4 | 8, {{127, 0, 127}, red}},
        {4 | 8 | 16, {red, red, false, false, 0, false, false, true}},
        {1 | 2 | 32, {red, blue, true, false, 0, true, true}},
    };
    ZNTOutputStore store;
    const auto shownBy = [&](std::uint8_t styles, ZNTColour foreground, ZNTColour background) {
        auto text = coloured(u"x", foreground);
        text.sets[0].background = background;
        text.sets[0].styles = styles;
        store.append(text);
        ZNTOutputStyle style;
        store.forEachRun(store.end() - 1, store.end(), [&](auto, auto, auto n) { style = store.style(n); });
        return style;
    };
    for (const auto& [styles, style] : rows)
        EXPECT_EQ(shownBy(styles, red, blue), style) << int{styles};

    for (int colour = 0; colour < 0x12000; ++colour)
        store.append(coloured(u"x", {static_cast<std::uint8_t>(colour & 0xFF),
                                     static_cast<std::uint8_t>(colour >> 8 & 0xFF),
                                     static_cast<std::uint8_t>(colour >> 16)}));
    EXPECT_EQ(shownBy(0, {250, 3, 4}, {1, 2, 90}), (ZNTOutputStyle{red, black}));
    EXPECT_EQ(shownBy(0, {3, 33, 100}, {4, 5, 6}), (ZNTOutputStyle{white, black})) << "still readable";
}
