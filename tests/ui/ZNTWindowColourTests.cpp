#include "ZNTReadableColour.h"
#include "ZNTWindowFixture.h"

#include <QImage>

// Whether what has to be seen stands out, by the pixels that are really drawn.

namespace
{

double contrast(const QColor& one, const QColor& other)
{
    const auto channels = [](const QColor& colour) {
        return ZNTColour{static_cast<std::uint8_t>(colour.red()), static_cast<std::uint8_t>(colour.green()),
                         static_cast<std::uint8_t>(colour.blue())};
    };
    return znt::contrastRatio(channels(one), channels(other));
}

} // namespace

class ZNTWindowColours : public ZNTWindowFixture
{
protected:
    /// Calls `look` with each of the looks that can be chosen in force.
    void inEachLook(const std::function<void()>& look)
    {
        for (const char* name : {"lightColours", "darkColours", "highContrastColours"}) {
            SCOPED_TRACE(name);
            find<QAction>(name).trigger();
            QTest::qWait(1);
            look();
        }
        action("systemColours").trigger();
    }
    static QImage picture(QWidget& widget)
    {
        QTest::qWait(10);
        QImage image = widget.grab().toImage();
        image.setDevicePixelRatio(1);
        return image;
    }
};

TEST_F(ZNTWindowColours, ADisabledButtonLooksDisabledInEachLook)
{
    QPushButton button(u"Button"_s);
    button.setFocusPolicy(Qt::NoFocus);
    button.show();
    inEachLook([&] {
        const QColor window = QApplication::palette().color(QPalette::Window);
        // What stands out most are the words.
        const auto strongest = [&](bool isEnabled) {
            button.setEnabled(isEnabled);
            const QImage drawn = picture(button);
            double most = 1;
            for (int y = 0; y < drawn.height(); ++y)
                for (int x = 0; x < drawn.width(); ++x)
                    most = std::max(most, contrast(drawn.pixelColor(x, y), window));
            return most;
        };
        const double enabled = strongest(true), disabled = strongest(false);
        EXPECT_GE(enabled / disabled, 1.5);
        EXPECT_GE(disabled, 3);
    });
}

TEST_F(ZNTWindowColours, TheGamesColoursAreExactUntilReadableOnesAreTicked)
{
    ZNTAttributedText text;
    text.text = u"\u2588\u2588\u2588\u2588"; // full blocks fill their cells
    text.sets.emplace_back().foreground = znt::colours::blue;
    text.runs = {{0, 0}};
    ZNTOutputView& view = *window.textFromServer;
    view.append(text);
    const auto shown = [&] {
        QTest::qWait(50);
        const QRect cell = view.characterRect(view.store().start() + 1);
        return picture(*view.viewport()).pixelColor(cell.center() * view.devicePixelRatio());
    };
    inEachLook([&] {
        EXPECT_EQ(shown(), QColor(Qt::blue));
        const QImage around = picture(*view.viewport());
        EXPECT_EQ(around.pixelColor(around.width() / 2, around.height() / 2), QColor(Qt::black));
    });
    action("readableColours").trigger();
    EXPECT_GE(contrast(shown(), Qt::black), znt::readableContrast);
    action("readableColours").trigger();
    EXPECT_EQ(shown(), QColor(Qt::blue));
}
