#include "ZNTExplanation.h"

#include <QAccessibleWidget>
#include <QApplication>
#include <QCheckBox>
#include <QFontInfo>
#include <QRadioButton>
#include <QStyle>

namespace
{

constexpr double shareOfFont = 0.9;
constexpr int roomBelow = 4; // so that it stands nearer to what it explains than to what follows

class Paragraph final : public QAccessibleWidget
{
public:
    explicit Paragraph(ZNTExplanation& words) : QAccessibleWidget(&words, QAccessible::Paragraph) {}

    [[nodiscard]] QString text(QAccessible::Text kind) const override
    {
        return kind == QAccessible::Name ? static_cast<ZNTExplanation*>(object())->text()
                                         : QAccessibleWidget::text(kind);
    }
};

QAccessibleInterface* makeParagraph(const QString&, QObject* object)
{
    auto* words = qobject_cast<ZNTExplanation*>(object);
    return words ? new Paragraph(*words) : nullptr;
}

} // namespace

ZNTExplanation::ZNTExplanation(QWidget* parent) : QLabel(parent)
{
    QAccessible::installFactory(&makeParagraph); // again changes nothing
    setWordWrap(true);
    setTextFormat(Qt::PlainText);
    takeFont();
    takeIndent();
}

void ZNTExplanation::standBelow(const QWidget& explained)
{
    if (qobject_cast<const QCheckBox*>(&explained))
        mark = Mark::Box;
    else if (qobject_cast<const QRadioButton*>(&explained))
        mark = Mark::Circle;
    takeIndent();
}

void ZNTExplanation::standBeside()
{
    isBeside = true;
    takeIndent();
}

bool ZNTExplanation::event(QEvent* event)
{
    const bool isHandled = QLabel::event(event);
    if (event->type() == QEvent::ApplicationFontChange)
        takeFont();
    else if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        takeIndent();
    return isHandled;
}

void ZNTExplanation::takeFont()
{
    QFont small; // all but its size is inherited
    small.setPointSizeF(QFontInfo(QApplication::font()).pointSizeF() * shareOfFont);
    setFont(small);
}

void ZNTExplanation::takeIndent()
{
    const QWidget* form = parentWidget(); // its font is that of the control
    if (mark == Mark::None || form == nullptr)
        return setContentsMargins(0, 0, 0, isBeside ? 0 : roomBelow);
    const auto metric = [&](QStyle::PixelMetric what) { return style()->pixelMetric(what, nullptr, form); };
    const bool isBox = mark == Mark::Box;
    const int left = metric(isBox ? QStyle::PM_IndicatorWidth : QStyle::PM_ExclusiveIndicatorWidth) +
                     metric(isBox ? QStyle::PM_CheckBoxLabelSpacing : QStyle::PM_RadioButtonLabelSpacing);
    setContentsMargins(isRightToLeft() ? 0 : left, 0, isRightToLeft() ? left : 0, roomBelow);
}
