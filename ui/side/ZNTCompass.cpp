#include "ZNTCompass.h"

#include "ZNTQtText.h"

#include <QEvent>
#include <QGridLayout>
#include <QPainter>
#include <QPainterPath>
#include <QPushButton>

namespace
{

constexpr int buttonGap = 4;

constexpr int belowThePoints = 3;

QString text(const char* latin) { return QString::fromLatin1(latin); }

/// No wider than its letters need. A style would give it room for a word.
class DirectionButton final : public QPushButton
{
public:
    using QPushButton::QPushButton;
    [[nodiscard]] QSize sizeHint() const override { return minimumSize(); }
    [[nodiscard]] QSize minimumSizeHint() const override { return minimumSize(); }
};

} // namespace

ZNTCompass::ZNTCompass(QWidget* parent) : QWidget(parent), centre(new QWidget(this))
{
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(buttonGap);
    auto* below = new QHBoxLayout;
    below->setSpacing(buttonGap);
    for (const ZNTDirectionRow& way : ZNTDirections) {
        const QString name = znt::latinText(way.name);
        auto* button = new DirectionButton(znt::latinText(way.shortName), this);
        button->setObjectName(znt::latinText(way.buttonName));
        button->setAccessibleName(name);
        const QString keypad = text("keypad ") + znt::latinText(way.keypadKeyName);
        button->setToolTip(name + text(" (") + keypad + text(")"));
        // Without a description of its own a reader would say the tool tip, which has the name again.
        button->setAccessibleDescription(keypad);
        button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
        if (way.row < belowThePoints)
            grid->addWidget(button, way.row, way.column);
        else
            below->addWidget(button);
        buttons[static_cast<std::size_t>(way.direction)] = button;
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
    for (const ZNTDirectionRow& way : ZNTDirections) {
        const bool isWord = way.row == belowThePoints;
        const int textWidth = metrics.horizontalAdvance(isWord ? text("Down") : text("NW"));
        button(way.direction)
            ->setMinimumSize(textWidth + metrics.height() / 2 + 8, metrics.height() * 5 / 4 + 7);
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
