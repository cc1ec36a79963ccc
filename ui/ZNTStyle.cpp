#include "ZNTStyle.h"

#include "ZNTWindowFit.h"

#include <QApplication>
#include <QMenu>
#include <QMenuBar>
#include <QPainter>
#include <QScrollArea>
#include <QStyleOption>
#include <QTimer>
#include <algorithm>

namespace
{
constexpr int ringWidth = 2;

bool isOnDark(const QStyleOption& option) { return option.palette.color(QPalette::Window).lightness() < 128; }

void drawBorder(const QStyleOption& option, QPainter& painter)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(option.palette.color(QPalette::Mid));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(QRectF(option.rect).adjusted(0.5, 0.5, -0.5, -0.5), 2, 2);
    painter.restore();
}
} // namespace

ZNTStyle::ZNTStyle() : QProxyStyle(QStringLiteral("Fusion")) {}

void ZNTStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                           const QWidget* widget) const
{
    if (element != CE_FocusFrame) {
        QProxyStyle::drawControl(element, option, painter, widget);
        return;
    }
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(QPen(option->palette.color(QPalette::Highlight), ringWidth));
    painter->setBrush(Qt::NoBrush);
    const double half = ringWidth / 2.0;
    painter->drawRoundedRect(QRectF(option->rect).adjusted(half, half, -half, -half), 3, 3);
    painter->restore();
}

void ZNTStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                             const QWidget* widget) const
{
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    switch (element) {
    case PE_FrameLineEdit:
    case PE_Frame:
    case PE_PanelButtonCommand:
    case PE_IndicatorCheckBox:
        if (isOnDark(*option))
            drawBorder(*option, *painter);
        break;
    default:
        break;
    }
}

void ZNTStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                  QPainter* painter, const QWidget* widget) const
{
    QProxyStyle::drawComplexControl(control, option, painter, widget);
    if ((control == CC_ComboBox || control == CC_SpinBox) && isOnDark(*option))
        drawBorder(*option, *painter);
}

QSize ZNTStyle::sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contents,
                                 const QWidget* widget) const
{
    QSize size = QProxyStyle::sizeFromContents(type, option, contents, widget);
    if (option == nullptr)
        return size;
    const int line = option->fontMetrics.height();
    switch (type) {
    case CT_PushButton:
        // What Fusion puts around the words is the same few pixels for each font.
        size.setWidth(std::max(size.width(), contents.width() + line * 4 / 3));
        [[fallthrough]];
    case CT_ComboBox:
    case CT_LineEdit:
    case CT_SpinBox:
        size.setHeight(std::max(size.height(), line * 5 / 4 + 7));
        break;
    default:
        break;
    }
    return size;
}

int ZNTStyle::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const
{
    const int pixels = QProxyStyle::pixelMetric(metric, option, widget);
    const int line =
        widget != nullptr ? widget->fontMetrics().height() : QFontMetrics(QApplication::font()).height();
    switch (metric) {
    case PM_FocusFrameHMargin:
    case PM_FocusFrameVMargin:
        return ringWidth;
    case PM_IndicatorWidth:
    case PM_IndicatorHeight:
    case PM_ExclusiveIndicatorWidth:
    case PM_ExclusiveIndicatorHeight:
        return std::max(pixels, line * 4 / 5);
    case PM_ScrollBarExtent:
    case PM_TabBarScrollButtonWidth:
        return std::max(pixels, line / 2);
    default:
        return pixels;
    }
}

int ZNTStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                        QStyleHintReturn* returned) const
{
    if (hint == SH_FocusFrame_AboveWidget)
        return 1;
    // One column that scrolls, where Fusion puts what has no room into a second one beyond the screen.
    if (hint == SH_Menu_Scrollable)
        return 1;
    if (hint == SH_DialogButtonBox_ButtonsHaveIcons)
        return 0;
    return QProxyStyle::styleHint(hint, option, widget, returned);
}

ZNTFocusRing::ZNTFocusRing(QObject* parent) : QObject(parent)
{
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) { follow(now); });
}

void ZNTFocusRing::bringIntoSight(QWidget* focused)
{
    for (QWidget* around = focused->parentWidget(); around && !around->isWindow();
         around = around->parentWidget())
        if (auto* area = qobject_cast<QScrollArea*>(around))
            znt::scrollIntoSight(*area, *focused);
}

void ZNTFocusRing::follow(QWidget* focused)
{
    if (focused) {
        bringIntoSight(focused);
        // Once more when what was just opened or enlarged has found its place.
        QTimer::singleShot(0, focused, [focused] { bringIntoSight(focused); });
    }
    const bool isRinged = focused != nullptr && !qobject_cast<QMenuBar*>(focused) &&
                          !qobject_cast<QMenu*>(focused) &&
                          (focused->windowFlags() & Qt::WindowType_Mask) != Qt::Popup;
    if (!isRinged) {
        if (frame)
            frame->setWidget(nullptr);
        return;
    }
    if (!frame)
        frame = new QFocusFrame;
    frame->setWidget(focused);
}
