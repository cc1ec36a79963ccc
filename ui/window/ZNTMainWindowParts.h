#pragma once

#include "ZNTWindowFit.h"

#include <QLabel>
#include <QLayout>
#include <QResizeEvent>
#include <QScrollArea>
#include <QTimer>
#include <algorithm>

// Widgets of the main window alone: each is one of Qt's with a size of its own.

/// Output and command line. Its hint is the least that its rows need at the present width: a larger one would
/// push the rest of the window out of sight, though the output can scroll.
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

/// When its content or its size changes, it scrolls to keep the widget that has the focus in sight.
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

/// A line that wraps if the window is too narrow for it, because a status bar cannot scroll.
class ZNTStatusLabel final : public QLabel
{
public:
    ZNTStatusLabel() { setWordWrap(true); }
    /// The hint has the height, since a status bar does not ask for the height at a width.
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
