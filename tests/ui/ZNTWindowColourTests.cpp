#include "ZNTReadableColour.h"
#include "ZNTStyle.h"
#include "ZNTWindowFixture.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QImage>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QScrollBar>
#include <QSlider>
#include <QSpinBox>
#include <QStyleOption>
#include <QTabWidget>
#include <QTableWidget>
#include <QVBoxLayout>

// Whether what has to be seen stands out, by the pixels that are really drawn.

namespace
{

constexpr double leastContrast = 3; // of what is no text (WCAG 2.1, 1.4.11)

ZNTColour colourOf(const QColor& colour)
{
    return {static_cast<std::uint8_t>(colour.red()), static_cast<std::uint8_t>(colour.green()),
            static_cast<std::uint8_t>(colour.blue())};
}

double contrast(const QColor& one, const QColor& other)
{
    return znt::contrastRatio(colourOf(one), colourOf(other));
}

/// How far the edge that begins at `edge`, going right, stands out from what is left of it and from what it
/// encloses.
double borderContrast(const QImage& picture, QPoint edge)
{
    constexpr int outside = 3, inside = 6, widestEdge = 4;
    const QColor around = picture.pixelColor(edge - QPoint(outside, 0));
    const QColor within = picture.pixelColor(edge + QPoint(inside, 0));
    double best = 0;
    for (int x = -1; x < widestEdge; ++x) {
        const QColor drawn = picture.pixelColor(edge + QPoint(x, 0));
        best = std::max(best, std::min(contrast(drawn, around), contrast(drawn, within)));
    }
    return best;
}

/// Each kind of control that has a border.
class Samples final : public QWidget
{
public:
    Samples()
    {
        auto* column = new QVBoxLayout(this);
        column->setContentsMargins(12, 12, 12, 12);
        auto* group = new QGroupBox(u"Group"_s);
        auto* standard = new QPushButton(u"Default"_s);
        standard->setDefault(true);
        auto* editable = new QComboBox;
        editable->setEditable(true);
        auto* number = new QSpinBox;
        number->setAlignment(Qt::AlignCenter); // away from the edge that is measured
        auto* table = new QTableWidget(2, 2);
        table->verticalHeader()->hide(); // as in all of ours
        auto* tabs = new QTabWidget;
        tabs->addTab(new QWidget, u"Tab"_s);
        for (QWidget* large : std::initializer_list<QWidget*>{tabs, group})
            large->setMinimumHeight(80);
        bordered = {new QLineEdit,
                    new QPlainTextEdit,
                    new QPushButton(u"Button"_s),
                    standard,
                    new QComboBox,
                    editable,
                    number,
                    new QCheckBox(u"Mark"_s),
                    new QRadioButton(u"Choice"_s),
                    group,
                    table,
                    tabs};
        for (QWidget* widget : bordered) {
            widget->setFocusPolicy(Qt::NoFocus);
            column->addWidget(widget);
        }
        for (const auto orientation : {Qt::Vertical, Qt::Horizontal}) {
            auto* bar = new QScrollBar(orientation);
            bar->setRange(0, 100);
            bar->setPageStep(30);
            bar->setValue(50);
            bar->setMinimumSize(40, 40);
            if (orientation == Qt::Vertical)
                bar->setMinimumHeight(160);
            column->addWidget(bar);
            bars.push_back(bar);
        }
    }

    std::vector<QWidget*> bordered;
    std::vector<QScrollBar*> bars;
};

QPoint leftEdgeOf(const QWidget& widget)
{
    QRect place = widget.rect();
    if (const auto* box = qobject_cast<const QAbstractButton*>(&widget); box && box->isCheckable()) {
        QStyleOptionButton option;
        option.initFrom(box);
        const bool isRadio = qobject_cast<const QRadioButton*>(&widget);
        place = box->style()->subElementRect(
            isRadio ? QStyle::SE_RadioButtonIndicator : QStyle::SE_CheckBoxIndicator, &option, box);
    }
    return widget.mapTo(widget.window(), QPoint(place.left(), place.center().y()));
}

} // namespace

class ZNTWindowColours : public ZNTWindowFixture
{
protected:
    /// Calls `look` with each of the looks that can be chosen in force.
    void inEachLook(const std::function<void()>& look)
    {
        for (QAction* each :
             {parts->menu["lightColours"], parts->menu["darkColours"], parts->menu["highContrastColours"]}) {
            SCOPED_TRACE(each->text().toStdString());
            each->trigger();
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

TEST_F(ZNTWindowColours, BordersAndThumbsOfScrollBarsStandOut)
{
    Samples samples;
    samples.show();
    inEachLook([&] {
        const QImage drawn = picture(samples);
        for (const QWidget* each : samples.bordered)
            EXPECT_GE(borderContrast(drawn, leftEdgeOf(*each)), leastContrast)
                << each->metaObject()->className();
        for (const QScrollBar* bar : samples.bars) {
            QStyleOptionSlider option;
            option.initFrom(bar);
            option.orientation = bar->orientation();
            option.maximum = bar->maximum();
            option.pageStep = bar->pageStep();
            option.sliderPosition = option.sliderValue = bar->value();
            const auto at = [&](QStyle::SubControl part) {
                const QRect place = bar->style()->subControlRect(QStyle::CC_ScrollBar, &option, part, bar);
                return drawn.pixelColor(bar->mapTo(&samples, place.center()));
            };
            for (const auto page : {QStyle::SC_ScrollBarSubPage, QStyle::SC_ScrollBarAddPage})
                EXPECT_GE(contrast(at(QStyle::SC_ScrollBarSlider), at(page)), leastContrast)
                    << bar->orientation();
        }
    });
}

TEST_F(ZNTWindowColours, DisabledControlsLookDisabledInEachLook)
{
    QPushButton button(u"Button"_s);
    QCheckBox box(u"Mark"_s);
    for (QAbstractButton* each : std::initializer_list<QAbstractButton*>{&button, &box}) {
        each->setFocusPolicy(Qt::NoFocus);
        each->show();
        inEachLook([&] {
            const QColor window = QApplication::palette().color(QPalette::Window);
            // What stands out most are the words.
            const auto strongest = [&](bool isEnabled) {
                each->setEnabled(isEnabled);
                const QImage drawn = picture(*each);
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
    auto& readable = find<QAction>("readableColours");
    EXPECT_FALSE(readable.isChecked());
    readable.trigger();
    EXPECT_GE(contrast(shown(), Qt::black), znt::readableContrast);
    readable.trigger();
    EXPECT_EQ(shown(), QColor(Qt::blue));
}
