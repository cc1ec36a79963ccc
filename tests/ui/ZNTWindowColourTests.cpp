#include "ZNTWindowFixture.h"

using ZNTWindowColours = ZNTWindowFixture;

TEST_F(ZNTWindowColours, TheGamesColoursAreExactInEachLookUntilReadableOnesAreTicked)
{
    ZNTAttributedText text;
    text.text = u"\u2588\u2588\u2588\u2588"; // full blocks fill their cells
    text.sets.emplace_back().foreground = znt::colours::blue;
    text.runs = {{0, 0}};
    ZNTOutputView& view = *window.textFromServer;
    view.append(text);
    // Of the text and of its background, by the pixels that are really drawn.
    const auto shown = [&] {
        QTest::qWait(50);
        const QImage image = view.viewport()->grab().toImage();
        const QPoint cell = view.characterRect(view.store().start() + 1).center();
        return std::pair{image.pixelColor(cell * view.devicePixelRatio()),
                         image.pixelColor(image.rect().center())};
    };
    const std::pair<QColor, QColor> exact{Qt::blue, Qt::black};
    for (const char* look : {"lightColours", "darkColours", "highContrastColours", "systemColours"}) {
        find<QAction>(look).trigger();
        EXPECT_EQ(shown(), exact) << look;
    }
    for (const bool isExact : {false, true}) {
        action("readableColours").trigger();
        EXPECT_EQ(shown() == exact, isExact);
    }
}
