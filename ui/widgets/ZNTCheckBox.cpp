#include "ZNTCheckBox.h"

#include <QStyleOptionButton>
#include <QStylePainter>
#include <algorithm>

namespace
{
constexpr int flags = Qt::AlignLeft | Qt::AlignVCenter | Qt::TextShowMnemonic | Qt::TextWordWrap;
}

ZNTCheckBox::ZNTCheckBox(QWidget* parent) : QCheckBox(parent)
{
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Preferred, QSizePolicy::CheckBox);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

int ZNTCheckBox::widthBeforeWords() const
{
    return style()->pixelMetric(QStyle::PM_IndicatorWidth, nullptr, this) +
           style()->pixelMetric(QStyle::PM_CheckBoxLabelSpacing, nullptr, this);
}

QSize ZNTCheckBox::minimumSizeHint() const
{
    int widest = 0;
    for (const QString& word : text().split(QLatin1Char(' ')))
        widest = std::max(widest, fontMetrics().horizontalAdvance(word));
    return {widthBeforeWords() + widest, QCheckBox::sizeHint().height()};
}

int ZNTCheckBox::heightForWidth(int width) const
{
    const QRect room(0, 0, std::max(1, width - widthBeforeWords()), QWIDGETSIZE_MAX);
    return std::max(QCheckBox::sizeHint().height(), fontMetrics().boundingRect(room, flags, text()).height());
}

void ZNTCheckBox::paintEvent(QPaintEvent*)
{
    QStylePainter painter(this);
    QStyleOptionButton option;
    initStyleOption(&option);
    QStyleOptionButton mark = option;
    mark.rect = style()->subElementRect(QStyle::SE_CheckBoxIndicator, &option, this);
    painter.drawPrimitive(QStyle::PE_IndicatorCheckBox, mark);
    const QRect words = rect().adjusted(widthBeforeWords(), 0, 0, 0);
    painter.drawItemText(QStyle::visualRect(layoutDirection(), rect(), words), flags, option.palette,
                         isEnabled(), option.text, QPalette::WindowText);
}
