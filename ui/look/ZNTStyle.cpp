#include "ZNTStyle.h"

#include "ZNTReadableColour.h"
#include "ZNTWindowFit.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QListView>
#include <QMenu>
#include <QMenuBar>
#include <QPainter>
#include <QRadioButton>
#include <QScrollArea>
#include <QStyleOption>
#include <QTabBar>
#include <QTimer>
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>

namespace
{
constexpr int ringWidth = 2;
constexpr int gapInRing = 2; // of a mark, which would touch the ring
constexpr int belowHeading = 6;

constexpr double leastContrast =
    3; // of borders and thumbs with their surroundings and their inside (WCAG 2.1, 1.4.11)
constexpr int mixingSteps = 20;
constexpr int thumbInset = 3;
constexpr int menuLineInset = 5;
constexpr int edgeOfDialog = 16, gapInDialog = 8; // as the forms have them
constexpr int airInRow = 4; // the words of a row do not touch the edges of its highlight
constexpr int chosenTabLine = 3;
constexpr int fusionGroupMargin = 3; // between the title of a group and its frame

double contrast(const QColor& one, const QColor& other)
{
    const auto channels = [](const QColor& colour) {
        return ZNTColour{static_cast<std::uint8_t>(colour.red()), static_cast<std::uint8_t>(colour.green()),
                         static_cast<std::uint8_t>(colour.blue())};
    };
    return znt::contrastRatio(channels(one), channels(other));
}

QColor mixed(const QColor& from, const QColor& to, double part)
{
    const auto channel = [part](int a, int b) { return static_cast<int>(std::lround(a + (b - a) * part)); };
    return {channel(from.red(), to.red()), channel(from.green(), to.green()),
            channel(from.blue(), to.blue())};
}

/// The palette's colour for borders. If its contrast is too low, as a desktop's own palette may have it, the
/// colour moves towards that of the text.
QColor edgeColour(const QStyleOption& option)
{
    const QPalette& palette = option.palette;
    const QColor asked = palette.color(QPalette::Mid);
    const QColor text = palette.color(QPalette::Active, QPalette::WindowText);
    const auto standsOut = [&](const QColor& edge) {
        return std::ranges::all_of(
            std::array{QPalette::Window, QPalette::Base, QPalette::Button}, [&](QPalette::ColorRole role) {
                return contrast(edge, palette.color(QPalette::Active, role)) >= leastContrast;
            });
    };
    for (int step = 0; step < mixingSteps; ++step)
        if (const QColor edge = mixed(asked, text, static_cast<double>(step) / mixingSteps); standsOut(edge))
            return edge;
    return text;
}

/// The control in a ring, if it has a mark and words. It may be wider than these.
const QAbstractButton* markedIn(const QWidget* ring)
{
    const auto* frame = qobject_cast<const QFocusFrame*>(ring);
    QWidget* ringed = frame ? frame->widget() : nullptr;
    if (qobject_cast<QCheckBox*>(ringed) || qobject_cast<QRadioButton*>(ringed))
        return static_cast<QAbstractButton*>(ringed);
    return nullptr;
}

/// A row of tabs stands at the edge of its window, which would cut off a ring around it. So it has the ring
/// inside.
bool isRingInside(const QWidget* ring)
{
    const auto* frame = qobject_cast<const QFocusFrame*>(ring);
    return frame && qobject_cast<const QTabBar*>(frame->widget());
}

QRect placeOfRing(const QRect& whole, const QWidget* ring)
{
    if (isRingInside(ring))
        return whole.adjusted(ringWidth + gapInRing, ringWidth, -ringWidth - gapInRing, -ringWidth);
    const auto* marked = markedIn(ring);
    if (!marked)
        return whole.adjusted(gapInRing, 0, -gapInRing, 0);
    const int around = 2 * (ringWidth + gapInRing);
    const QRect words(0, 0, std::min(whole.width(), marked->sizeHint().width() + around), whole.height());
    return QStyle::visualRect(marked->layoutDirection(), whole, words);
}

/// A group without a frame: a heading, and what stands below it.
const QStyleOptionGroupBox* headedGroup(const QStyleOption* option)
{
    const auto* group = qstyleoption_cast<const QStyleOptionGroupBox*>(option);
    return group && group->features & QStyleOptionFrame::Flat ? group : nullptr;
}

QFont headingFont(QFont font)
{
    font.setBold(true);
    return font;
}

void drawHeading(const QStyleOptionGroupBox& group, const QRect& place, QPainter& painter,
                 const QStyle& style)
{
    painter.save();
    painter.setFont(headingFont(painter.font()));
    style.drawItemText(&painter, place, Qt::TextShowMnemonic | Qt::AlignLeading | Qt::AlignVCenter,
                       group.palette, group.state & QStyle::State_Enabled, group.text, QPalette::WindowText);
    painter.restore();
}

enum class Shape { Box, Circle };

void drawBorder(const QStyleOption& option, const QRect& place, QPainter& painter, Shape shape = Shape::Box)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    // Fusion tints the button that Return presses.
    const auto* button = qstyleoption_cast<const QStyleOptionButton*>(&option);
    const bool isDefault = button && button->features & QStyleOptionButton::DefaultButton;
    painter.setPen(isDefault ? option.palette.color(QPalette::WindowText) : edgeColour(option));
    painter.setBrush(Qt::NoBrush);
    const QRectF line = QRectF(place).adjusted(0.5, 0.5, -0.5, -0.5);
    if (shape == Shape::Circle)
        painter.drawEllipse(line);
    else
        painter.drawRoundedRect(line, 2, 2);
    painter.restore();
}

/// Where Fusion draws its own, which is black on black in high contrast.
void drawMenuLine(const QStyleOption& option, QPainter& painter)
{
    const QRect& place = option.rect;
    painter.fillRect(place.left() + menuLineInset, place.center().y(), place.width() - 2 * menuLineInset, 1,
                     mixed(option.palette.color(QPalette::Window), edgeColour(option), 0.5));
}

/// Around the current cell of a table, a line or a tab. Fusion draws this over the words and fills it, so
/// that the words lose contrast: only the line, in a colour that stands out from what is below it.
void drawCurrentItem(const QStyleOption& option, QPainter& painter)
{
    if (!(option.state & QStyle::State_KeyboardFocusChange))
        return;
    const bool isSelected = option.state & QStyle::State_Item && option.state & QStyle::State_Selected;
    painter.save();
    painter.setPen(option.palette.color(isSelected ? QPalette::HighlightedText : QPalette::Highlight));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(option.rect.adjusted(0, 0, -1, -1));
    painter.restore();
}

/// A line along the top of the chosen tab. Fusion tells it from the others by its ground alone, which is
/// black for all of them in high contrast.
void drawChosenTab(const QStyleOption& option, QPainter& painter)
{
    if (option.state & QStyle::State_Selected)
        painter.fillRect(QRect(option.rect.topLeft(), QSize(option.rect.width(), chosenTabLine)),
                         option.palette.color(QPalette::Highlight));
}
} // namespace

ZNTStyle::ZNTStyle() : QProxyStyle(QStringLiteral("Fusion")) {}

void ZNTStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                           const QWidget* widget) const
{
    if (element != CE_FocusFrame) {
        QProxyStyle::drawControl(element, option, painter, widget);
        if (const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
            item && element == CE_MenuItem && item->menuItemType == QStyleOptionMenuItem::Separator &&
            item->text.isEmpty())
            drawMenuLine(*item, *painter);
        if (element == CE_TabBarTabShape)
            drawChosenTab(*option, *painter);
        return;
    }
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(QPen(option->palette.color(QPalette::Highlight), ringWidth));
    painter->setBrush(Qt::NoBrush);
    const double half = ringWidth / 2.0;
    const QRectF ring = placeOfRing(option->rect, widget);
    painter->drawRoundedRect(ring.adjusted(half, half, -half, -half), 3, 3);
    painter->restore();
}

void ZNTStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                             const QWidget* widget) const
{
    if (element == PE_FrameFocusRect) {
        if (!qobject_cast<const QAbstractButton*>(widget)) // a button has the ring alone
            drawCurrentItem(*option, *painter);
        return;
    }
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    switch (element) {
    case PE_FrameLineEdit:
    case PE_Frame:
    case PE_PanelButtonCommand:
    case PE_IndicatorCheckBox:
    case PE_FrameTabWidget:
    case PE_PanelMenu: // Fusion draws the edge of a menu with its ground
        drawBorder(*option, option->rect, *painter);
        break;
    case PE_FrameGroupBox: {
        // Below the title, where Fusion draws its own.
        const int title =
            std::max(QProxyStyle::pixelMetric(PM_ExclusiveIndicatorHeight), option->fontMetrics.height()) +
            fusionGroupMargin;
        drawBorder(*option, option->rect.adjusted(0, title, 0, 0), *painter);
        break;
    }
    case PE_IndicatorRadioButton:
        drawBorder(*option, option->rect, *painter, Shape::Circle);
        break;
    default:
        break;
    }
}

void ZNTStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                  QPainter* painter, const QWidget* widget) const
{
    if (const auto* bar = qstyleoption_cast<const QStyleOptionSlider*>(option);
        bar && control == CC_ScrollBar) {
        drawScrollBar(*bar, *painter, widget);
        return;
    }
    if (const auto* group = headedGroup(option); group && control == CC_GroupBox) {
        drawHeading(*group, proxy()->subControlRect(control, option, SC_GroupBoxLabel, widget), *painter,
                    *proxy());
        return;
    }
    QProxyStyle::drawComplexControl(control, option, painter, widget);
    if (control == CC_ComboBox || control == CC_SpinBox)
        drawBorder(*option, option->rect, *painter);
    else if (control == CC_Slider)
        drawBorder(*option, proxy()->subControlRect(control, option, SC_SliderHandle, widget), *painter);
}

/// Fusion's thumb has almost the colour of its track.
void ZNTStyle::drawScrollBar(const QStyleOptionSlider& bar, QPainter& painter, const QWidget* widget) const
{
    const auto place = [&](SubControl part) {
        return proxy()->subControlRect(CC_ScrollBar, &bar, part, widget);
    };
    const QColor edge = edgeColour(bar);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(bar.rect, bar.palette.color(QPalette::Active, QPalette::Window));
    painter.setPen(edge);
    painter.drawRect(QRectF(bar.rect).adjusted(0.5, 0.5, -0.5, -0.5));
    if (bar.maximum > bar.minimum) {
        const bool isHeld = bar.activeSubControls == SC_ScrollBarSlider && (bar.state & State_Sunken);
        painter.setPen(Qt::NoPen);
        painter.setBrush(isHeld ? bar.palette.color(QPalette::WindowText) : edge);
        painter.drawRoundedRect(
            QRectF(place(SC_ScrollBarSlider)).adjusted(thumbInset, thumbInset, -thumbInset, -thumbInset), 3,
            3);
    }
    painter.restore();
    const bool isUpright = bar.orientation == Qt::Vertical;
    const auto drawArrow = [&](SubControl part, PrimitiveElement arrow) {
        QStyleOption option = bar;
        option.rect = place(part).marginsRemoved(QMargins(thumbInset, thumbInset, thumbInset, thumbInset));
        proxy()->drawPrimitive(arrow, &option, &painter, widget);
    };
    drawArrow(SC_ScrollBarSubLine, isUpright ? PE_IndicatorArrowUp : PE_IndicatorArrowLeft);
    drawArrow(SC_ScrollBarAddLine, isUpright ? PE_IndicatorArrowDown : PE_IndicatorArrowRight);
}

QRect ZNTStyle::subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                               const QWidget* widget) const
{
    const auto* group = headedGroup(option);
    if (!group || control != CC_GroupBox)
        return QProxyStyle::subControlRect(control, option, part, widget);
    const int heading = group->text.isEmpty() ? 0 : option->fontMetrics.height();
    if (part == SC_GroupBoxLabel)
        return {option->rect.left(), option->rect.top(), option->rect.width(), heading};
    return part == SC_GroupBoxContents ? option->rect.adjusted(0, heading + belowHeading, 0, 0)
                                       : option->rect;
}

QSize ZNTStyle::sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contents,
                                 const QWidget* widget) const
{
    QSize size = QProxyStyle::sizeFromContents(type, option, contents, widget);
    if (option == nullptr)
        return size;
    if (const auto* group = headedGroup(option); group && type == CT_GroupBox && widget)
        return size.expandedTo(
            QFontMetrics(headingFont(widget->font())).size(Qt::TextShowMnemonic, group->text));
    const int line = option->fontMetrics.height();
    const int field = line * 5 / 4 + 7;
    switch (type) {
    case CT_PushButton:
        // Fusion puts the same few pixels around the words of every font.
        size.setWidth(std::max(size.width(), contents.width() + line * 4 / 3));
        [[fallthrough]];
    case CT_ComboBox:
    case CT_LineEdit:
    case CT_Slider: // lying ones only
        size.setHeight(std::max(size.height(), field));
        break;
    case CT_SpinBox: // asks for a field of this height and for edges around it
        size.setHeight(field);
        break;
    case CT_ItemViewItem:
        if (qobject_cast<const QListView*>(widget))
            size.setHeight(std::max(size.height(), line + airInRow));
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
        // A ring asks without naming itself (Qt 6.4) or as the frame that it is (6.8), so each has room for
        // the gap. Item views name themselves: they keep their words as far from the edge of a cell.
        return ringWidth + (widget == nullptr || qobject_cast<const QFocusFrame*>(widget) ? gapInRing : 0);
    case PM_FocusFrameVMargin:
        return ringWidth;
    case PM_HeaderMargin:
        return ringWidth + 1; // as the cells below have it
    case PM_IndicatorWidth:
    case PM_IndicatorHeight:
    case PM_ExclusiveIndicatorWidth:
    case PM_ExclusiveIndicatorHeight:
        return std::max(pixels, line * 4 / 5);
    case PM_ScrollBarExtent:
    case PM_TabBarScrollButtonWidth:
        return std::max(pixels, line / 2);
    case PM_LayoutLeftMargin:
    case PM_LayoutTopMargin:
    case PM_LayoutRightMargin:
    case PM_LayoutBottomMargin:
        return qobject_cast<const QDialog*>(widget) ? edgeOfDialog : pixels;
    case PM_LayoutHorizontalSpacing:
    case PM_LayoutVerticalSpacing:
        return qobject_cast<const QDialog*>(widget) || qobject_cast<const QDialogButtonBox*>(widget)
                   ? gapInDialog
                   : pixels;
    default:
        return pixels;
    }
}

int ZNTStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                        QStyleHintReturn* returned) const
{
    if (hint == SH_FocusFrame_AboveWidget)
        return 1;
    if (hint == SH_FocusFrame_Mask && (markedIn(widget) || isRingInside(widget))) {
        // The ring may go through the control, where Qt would leave the frame away.
        const QRect ring = placeOfRing(widget->rect(), widget);
        if (auto* mask = qstyleoption_cast<QStyleHintReturnMask*>(returned))
            mask->region =
                QRegion(ring).subtracted(ring.adjusted(ringWidth, ringWidth, -ringWidth, -ringWidth));
        return 1;
    }
    // One column that scrolls. Fusion would begin a second one, beyond the screen.
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
        // Again later, when a widget that was just opened or enlarged has its place.
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
