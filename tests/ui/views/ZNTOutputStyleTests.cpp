#include "ZNTOutputViewFixture.h"

using OutputStyle = ZNTOutputViewTest;

TEST_F(OutputStyle, ConcealedStruckAndItalicTextAreDrawnAndReadersReadThem)
{
    // The bits of ZNTTextStyle: 1 italic, 2 strike, 16 conceal.
    const auto add = [&](std::u16string_view text, std::uint8_t styles) {
        auto styled = coloured(text, znt::colours::red);
        styled.sets[0].styles = styles;
        view.append(styled);
    };
    add(u"lllllll\n", 16);
    add(u"       \n", 2);
    add(u"lllllll\n", 1);
    add(u"lllllll\n       \n", 0);
    view.setReadableColours(true);
    view.clearFocus();
    settle();
    const auto image = view.viewport()->grab().toImage();
    const auto drawn = [&](int line) { return image.copy(rectOf(line, 1).united(rectOf(line, 5))); };
    EXPECT_EQ(drawn(0), drawn(4));
    EXPECT_NE(drawn(1), drawn(4));
    EXPECT_NE(drawn(2), drawn(3));
    EXPECT_EQ(rectOf(2, 5).size(), rectOf(3, 5).size()) << "slanted letters stand in the same cells";

    int start = 0, end = 0;
    auto* text = QAccessible::queryAccessibleInterface(&view)->textInterface();
    EXPECT_EQ(text->text(0, 7), u"lllllll"_s);
    EXPECT_TRUE(text->attributes(9, &start, &end).contains(u"text-line-through-type:single;"_s));
    EXPECT_TRUE(text->attributes(17, &start, &end).contains(u"font-style:italic;"_s));
}
