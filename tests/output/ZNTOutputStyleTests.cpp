#include "ZNTOutputSamples.h"

#include <gtest/gtest.h>

using namespace znt::colours;

namespace
{

ZNTAttributedText styled(std::initializer_list<ZNTTextStyle> styles, ZNTColour foreground,
                         ZNTColour background)
{
    auto text = coloured(u"x", foreground);
    text.sets[0].background = background;
    for (const auto style : styles)
        text.sets[0].styles |= static_cast<std::uint8_t>(style);
    return text;
}

const ZNTOutputStyle& lastStyle(const ZNTOutputStore& store)
{
    const ZNTOutputStyle* found = nullptr;
    store.forEachRun(store.end() - 1, store.end(),
                     [&](auto, auto, auto number) { found = &store.style(number); });
    return *found;
}

} // namespace

TEST(OutputStyle, ColoursAreReversedThenFaintThenConcealed)
{
    using enum ZNTTextStyle;
    const struct {
        std::initializer_list<ZNTTextStyle> styles;
        ZNTColour foreground, background;
    } rows[]{{{Reverse}, blue, red},
             {{Faint}, {127, 0, 127}, blue},
             {{Reverse, Faint}, {127, 0, 127}, red},
             {{Reverse, Faint, Conceal}, red, red},
             {{Italic, Strike, Blink}, red, blue}};
    ZNTOutputStore store;
    for (const auto& row : rows) {
        SCOPED_TRACE(&row - rows);
        store.append(styled(row.styles, red, blue));
        EXPECT_EQ(lastStyle(store).foreground, row.foreground);
        EXPECT_EQ(lastStyle(store).background, row.background);
    }
    const ZNTOutputStyle all{red, blue, true, false, 0, true, true, false};
    EXPECT_EQ(lastStyle(store), all) << "what blinks is bold";
}

TEST(OutputStyle, TextOfMoreColoursThanCanBeNumberedKeepsAColourAndStaysReadable)
{
    ZNTOutputStore store;
    auto text = styled({}, white, black);
    for (int colour = 0; colour < 0x12000; ++colour) {
        const auto channel = [&](int shift) { return static_cast<std::uint8_t>(colour >> shift & 0xFF); };
        text.sets[0].foreground = ZNTColour{channel(0), channel(8), channel(16)};
        store.append(text);
    }
    store.append(styled({}, {250, 3, 4}, {1, 2, 90}));
    EXPECT_EQ(lastStyle(store).foreground, red);
    EXPECT_EQ(lastStyle(store).background, black);
    store.append(styled({}, {3, 33, 100}, {4, 5, 6}));
    EXPECT_EQ(lastStyle(store).foreground, white) << "two dark colours do not become one";
}
