#pragma once

#include "ZNTWindowFit.h"

#include <QLabel>
#include <QLayout>
#include <QPushButton>
#include <QResizeEvent>
#include <QScrollArea>
#include <QScrollBar>
#include <QTimer>
#include <algorithm>

// Widgets of the main window alone: each is one of Qt's with a size of its own.

/// As wide with either title, so that the row of fields stands still.
class ZNTConnectionButton final : public QPushButton
{
public:
    [[nodiscard]] QSize sizeHint() const override
    {
        const int longer = fontMetrics().horizontalAdvance(QStringLiteral("Disconnect"));
        const int shown =
            fontMetrics().horizontalAdvance(QString(QPushButton::text()).remove(QLatin1Char('&')));
        const QSize size = QPushButton::sizeHint();
        return {size.width() + std::max(0, longer - shown), size.height()};
    }
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }
};

/// Output and command line. Asks for no more than it needs, so that what can scroll does not push the rest
/// out of sight, but for as much as its rows take at the width it has.
class ZNTPlayArea final : public QWidget
{
public:
    [[nodiscard]] QSize sizeHint() const override { return minimumSizeHint(); }
    [[nodiscard]] QSize minimumSizeHint() const override
    {
        const int least = layout()->minimumSize().width();
        return {least, layout()->minimumHeightForWidth(std::max(least, width()))};
    }

protected:
    void resizeEvent(QResizeEvent* event) override
    {
        QWidget::resizeEvent(event);
        if (event->size().width() != event->oldSize().width())
            updateGeometry();
    }
};

/// Scrolls on its own to keep what has the focus in sight when its content or its room changes.
class ZNTContentScroll final : public QScrollArea
{
public:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        const bool isDone = QScrollArea::eventFilter(watched, event);
        if (watched == widget() && event->type() == QEvent::Resize)
            QTimer::singleShot(0, this, [this] { keepFocusInSight(); });
        return isDone;
    }

protected:
    void resizeEvent(QResizeEvent* event) override
    {
        QScrollArea::resizeEvent(event);
        QTimer::singleShot(0, this, [this] { keepFocusInSight(); });
    }

private:
    void keepFocusInSight()
    {
        if (QWidget* focused = window()->focusWidget(); focused && widget()->isAncestorOf(focused))
            znt::scrollIntoSight(*this, *focused);
    }
};

/// A line that becomes several where the window is too narrow for it: a status bar cannot scroll.
class ZNTStatusLabel final : public QLabel
{
public:
    ZNTStatusLabel() { setWordWrap(true); }
    /// Its height is told by the hint, since a status bar does not ask for the height of a width.
    [[nodiscard]] bool hasHeightForWidth() const override { return false; }
    [[nodiscard]] QSize sizeHint() const override { return {0, heightForWidth(width())}; }
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void resizeEvent(QResizeEvent* event) override
    {
        QLabel::resizeEvent(event);
        if (event->size().width() != event->oldSize().width())
            updateGeometry();
    }
};

/// Scrolls up and down rather than make the window higher, and is never too narrow for its content.
class ZNTSidePanel final : public QScrollArea
{
public:
    [[nodiscard]] int leastWidth() const { return widget()->minimumSizeHint().width() + barWidth(); }
    [[nodiscard]] int comfortableWidth() const
    {
        const int pleasant = std::max(widget()->sizeHint().width(), fontMetrics().averageCharWidth() * 32);
        return std::max(leastWidth(), pleasant + barWidth());
    }
    [[nodiscard]] QSize sizeHint() const override { return {comfortableWidth(), minimumSizeHint().height()}; }
    [[nodiscard]] QSize minimumSizeHint() const override
    {
        return {leastWidth(), isWhole ? widget()->sizeHint().height() : fontMetrics().height() * 5};
    }
    /// Whether it shows its whole content, as where the window scrolls instead.
    void showWhole(bool whole)
    {
        if (isWhole == whole)
            return;
        isWhole = whole;
        updateGeometry();
    }

private:
    [[nodiscard]] int barWidth() const { return verticalScrollBar()->sizeHint().width(); }

    bool isWhole = false;
};
