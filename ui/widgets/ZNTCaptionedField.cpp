#include "ZNTCaptionedField.h"

#include <QEvent>
#include <QLabel>
#include <algorithm>

namespace
{
constexpr int gap = 8;
constexpr int gapBelow = 2;
/// If fewer characters than this fit beside the caption, the field goes below it.
constexpr int leastColumns = 6;
} // namespace

ZNTCaptionedField::ZNTCaptionedField(const QString& caption, QWidget* field, int columns)
    : label(new QLabel(caption, this)),
      field(field),
      columns(columns)
{
    field->setParent(this);
    field->setAccessibleName(QString(caption).remove(QLatin1Char('&')));
    label->setBuddy(field);
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

int ZNTCaptionedField::fieldWidth(int characters) const
{
    // The frame around the text of a field grows with the font, too.
    return field->fontMetrics().averageCharWidth() * characters + field->fontMetrics().height();
}

QSize ZNTCaptionedField::sizeHint() const
{
    const QSize caption = label->sizeHint();
    return {caption.width() + gap + fieldWidth(columns),
            std::max(caption.height(), field->sizeHint().height())};
}

QSize ZNTCaptionedField::minimumSizeHint() const
{
    return {std::max(label->sizeHint().width(), fieldWidth(leastColumns)), sizeHint().height()};
}

bool ZNTCaptionedField::isBeside(int width) const { return width >= leastWidthBeside(); }

int ZNTCaptionedField::leastWidthBeside() const
{
    return label->sizeHint().width() + gap + fieldWidth(leastColumns);
}

int ZNTCaptionedField::heightForWidth(int width) const
{
    if (isBeside(width))
        return sizeHint().height();
    return label->sizeHint().height() + gapBelow + field->sizeHint().height();
}

bool ZNTCaptionedField::event(QEvent* event)
{
    // Sent when the caption or the field asks for another size.
    if (event->type() == QEvent::LayoutRequest) {
        updateGeometry();
        place();
    }
    return QWidget::event(event);
}

void ZNTCaptionedField::resizeEvent(QResizeEvent*) { place(); }

void ZNTCaptionedField::place()
{
    const QSize caption = label->sizeHint();
    const int height = field->sizeHint().height();
    if (isBeside(width())) {
        const int x = caption.width() + gap;
        label->setGeometry(0, (this->height() - caption.height()) / 2, caption.width(), caption.height());
        field->setGeometry(x, (this->height() - height) / 2, width() - x, height);
    } else {
        label->setGeometry(0, 0, width(), caption.height());
        field->setGeometry(0, caption.height() + gapBelow, width(), height);
    }
}
