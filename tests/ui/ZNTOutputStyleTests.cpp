#include "ZNTOutputViewFixture.h"
#include "ZNTReadableColour.h"

#include <QAccessible>
#include <QImage>

namespace
{

using OutputStyle = ZNTOutputViewTest;

/// Full blocks fill their cells, so that a pixel in the middle of one has the colour of the text.
TEST_F(OutputStyle, EveryStyleIsDrawnAndReadableColoursSpareConcealedText)
{
    using enum ZNTTextStyle;
    using namespace znt::colours;
    const auto add = [&](std::u16string_view text, ZNTTextStyle style, ZNTColour foreground) {
        auto styled = coloured(std::u16string(text) + u"\n", foreground);
        styled.sets[0].background = blue;
        styled.sets[0].styles = static_cast<std::uint8_t>(style);
        view.append(styled);
    };
    add(u"\u2588", Reverse, red);
    add(u"\u2588", Conceal, red);
    add(u"\u2588", Faint, red);
    add(u"    ", Strike, red);
    add(u"lllllll", Italic, red);
    add(u"lllllll", ZNTTextStyle{}, red);
    view.clearFocus();
    const auto picture = [&] {
        settle();
        return view.viewport()->grab().toImage();
    };
    auto image = picture();
    const auto middleOf = [&](int line) { return image.pixelColor(rectOf(line).center()); };
    EXPECT_EQ(middleOf(0), QColor(Qt::blue));
    EXPECT_EQ(middleOf(1), QColor(Qt::blue));
    EXPECT_EQ(middleOf(2), QColor(127, 0, 127));

    const auto struck = rectOf(3, 2);
    std::vector<int> lineAt;
    for (int y = struck.top(); y <= struck.bottom(); ++y)
        if (image.pixelColor(struck.center().x(), y) == QColor(Qt::red))
            lineAt.push_back(y - struck.top());
    ASSERT_FALSE(lineAt.empty());
    EXPECT_GT(lineAt.front(), struck.height() / 3);
    EXPECT_LT(lineAt.back(), struck.height() * 3 / 4);

    const auto drawn = [&](int line) { return image.copy(rectOf(line, 1).united(rectOf(line, 5))); };
    EXPECT_NE(drawn(4), drawn(5)) << "slanted";
    EXPECT_EQ(rectOf(4, 5).size(), rectOf(5, 5).size());

    view.setReadableColours(true);
    image = picture();
    EXPECT_EQ(middleOf(1), QColor(Qt::blue));
    EXPECT_NE(middleOf(2), QColor(127, 0, 127)) << "faint text is lifted";

    int start = 0, end = 0;
    auto* text = QAccessible::queryAccessibleInterface(&view)->textInterface();
    EXPECT_EQ(text->text(2, 3), u"\u2588"_s) << "readers read what is concealed";
    EXPECT_TRUE(text->attributes(6, &start, &end).contains(u"text-line-through-type:single;"_s));
    EXPECT_TRUE(text->attributes(12, &start, &end).contains(u"font-style:italic;"_s));
}

} // namespace
