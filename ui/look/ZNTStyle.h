#pragma once

#include <QFocusFrame>
#include <QPointer>
#include <QProxyStyle>
#include <QStyleOptionSlider>

/// Qt's own Fusion with four changes. A strong ring stands around the widget that has the focus; of a mark
/// and its words, around these. Borders and scroll bars have a contrast of 3 to 1 with their surroundings in
/// each palette. The room around the words of buttons and fields grows with their font. A flat group is a
/// heading in bold with its content below, at the same left edge.
class ZNTStyle final : public QProxyStyle
{
public:
    ZNTStyle();

    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                            const QWidget* widget) const override;
    [[nodiscard]] QRect subControlRect(ComplexControl control, const QStyleOptionComplex* option,
                                       SubControl part, const QWidget* widget) const override;
    [[nodiscard]] QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contents,
                                         const QWidget* widget) const override;
    int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override;
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* returned) const override;

private:
    void drawScrollBar(const QStyleOptionSlider& bar, QPainter& painter, const QWidget* widget) const;
};

/// Keeps the ring around the widget that has the focus, and scrolls that widget into sight.
class ZNTFocusRing final : public QObject
{
public:
    explicit ZNTFocusRing(QObject* parent = nullptr);

private:
    void follow(QWidget* focused);
    static void bringIntoSight(QWidget* focused);

    QPointer<QFocusFrame> frame; // goes with the window that it is in
};
