#include "ZNTCompass.h"

#include <QEvent>
#include <QGridLayout>
#include <QPainter>
#include <QPainterPath>
#include <QPushButton>

namespace
{

constexpr int gap = 4;

struct Place {
    int row, column;
};
/// The points of the compass on their grid, by direction.
constexpr std::array<Place, 8> places{{{0, 0}, {0, 1}, {0, 2}, {1, 0}, {1, 2}, {2, 0}, {2, 1}, {2, 2}}};
constexpr int belowThePoints = 3;

QString text(const char* latin) { return QString::fromLatin1(latin); }

/// No wider than its letters need: styles give a button room for a word.
class DirectionButton final : public QPushButton
{
public:
    using QPushButton::QPushButton;
    [[nodiscard]] QSize sizeHint() const override { return minimumSize(); }
    [[nodiscard]] QSize minimumSizeHint() const override { return minimumSize(); }
};

/// In words, since speech leaves lone signs out.
QString nameOf(Qt::Key key)
{
    if (key == Qt::Key_Plus)
        return text("plus");
    if (key == Qt::Key_Minus)
        return text("minus");
    return QKeySequence(key).toString();
}

} // namespace

const ZNTDirectionNames& namesOf(ZNTDirection direction)
{
    static const std::array<ZNTDirectionNames, numberOfDirections> all{{
        {text("Northwest"), text("NW"), text("northWestButton"), Qt::Key_7},
        {text("North"), text("N"), text("northButton"), Qt::Key_8},
        {text("Northeast"), text("NE"), text("northEastButton"), Qt::Key_9},
        {text("West"), text("W"), text("westButton"), Qt::Key_4},
        {text("East"), text("E"), text("eastButton"), Qt::Key_6},
        {text("Southwest"), text("SW"), text("southWestButton"), Qt::Key_1},
        {text("South"), text("S"), text("southButton"), Qt::Key_2},
        {text("Southeast"), text("SE"), text("southEastButton"), Qt::Key_3},
        {text("Up"), text("Up"), text("upButton"), Qt::Key_Minus},
        {text("Down"), text("Down"), text("downButton"), Qt::Key_Plus},
    }};
    return all[static_cast<std::size_t>(direction)];
}

ZNTCompass::ZNTCompass(QWidget* parent) : QWidget(parent), centre(new QWidget(this))
{
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(gap);
    auto* below = new QHBoxLayout;
    below->setSpacing(gap);
    for (std::size_t index = 0; index < numberOfDirections; ++index) {
        const ZNTDirectionNames& names = namesOf(static_cast<ZNTDirection>(index));
        auto* button = new DirectionButton(names.shortName, this);
        button->setObjectName(names.objectName);
        button->setAccessibleName(names.name);
        const QString keypad = text("keypad ") + nameOf(names.keypadKey);
        button->setToolTip(names.name + text(" (") + keypad + text(")"));
        // Else the tool tip, which says the name again.
        button->setAccessibleDescription(keypad);
        button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
        if (index < places.size())
            grid->addWidget(button, places[index].row, places[index].column);
        else
            below->addWidget(button);
        buttons[index] = button;
    }
    grid->addLayout(below, belowThePoints, 0, 1, 3);
    grid->addWidget(centre, 1, 1);
    fitButtonsToFont();
}

QPushButton* ZNTCompass::button(ZNTDirection direction) const
{
    return buttons[static_cast<std::size_t>(direction)];
}

void ZNTCompass::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange && centre != nullptr)
        fitButtonsToFont();
}

void ZNTCompass::fitButtonsToFont()
{
    const QFontMetrics metrics(font());
    for (std::size_t index = 0; index < numberOfDirections; ++index) {
        const bool isWord = index >= static_cast<std::size_t>(ZNTDirection::Up);
        const int textWidth = metrics.horizontalAdvance(isWord ? text("Down") : text("NW"));
        buttons[index]->setMinimumSize(textWidth + metrics.height() / 2 + 8, metrics.height() * 5 / 4 + 7);
    }
}

void ZNTCompass::paintEvent(QPaintEvent*)
{
    const QRectF cell = centre->geometry();
    const double radius = std::min(cell.width(), cell.height()) * 0.46;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(cell.center());
    QColor quiet = palette().color(QPalette::WindowText);
    quiet.setAlphaF(0.35F);
    painter.setPen(Qt::NoPen);
    for (int quarter = 0; quarter < 4; ++quarter) {
        QPainterPath half;
        half.moveTo(0, -radius);
        half.lineTo(radius * 0.26, -radius * 0.26);
        half.lineTo(0, 0);
        half.closeSubpath();
        painter.setBrush(quarter == 0 ? palette().color(QPalette::Highlight) : quiet);
        painter.drawPath(half);
        painter.scale(-1, 1);
        painter.drawPath(half);
        painter.scale(-1, 1);
        painter.rotate(90);
    }
}
