#pragma once

#include "ZNTOutputSamples.h"
#include "ZNTOutputView.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScrollBar>

#include <gtest/gtest.h>
#include <string>

using namespace Qt::StringLiterals;

/// A shown view of 40 columns and 10 rows.
class ZNTOutputViewTest : public testing::Test
{
protected:
    ZNTOutputViewTest()
    {
        view.resize(view.sizeForGrid(40, 10));
        view.show();
        view.setFocus();
        settle();
    }

    /// Lets everything due happen: refreshes, counting, painting.
    void settle()
    {
        for (int turn = 0; turn < 4; ++turn) {
            QEventLoop turning;
            QTimer::singleShot(20, &turning, &QEventLoop::quit);
            turning.exec();
        }
    }
    void addLines(int from, int to)
    {
        for (int line = from; line < to; ++line)
            view.append(coloured(u"line " + QString::number(line).toStdU16String() + u"\r\n"));
        view.scrollToEnd();
        settle();
    }
    void press(int key, Qt::KeyboardModifiers modifiers = {}, const QString& text = {})
    {
        QKeyEvent event(QEvent::KeyPress, key, modifiers, text);
        QApplication::sendEvent(&view, &event);
    }
    void mouse(QEvent::Type type, QPoint point, Qt::KeyboardModifiers modifiers = {})
    {
        const bool isHeld = type != QEvent::MouseButtonRelease;
        QMouseEvent event(type, QPointF(point), QPointF(view.viewport()->mapToGlobal(point)), Qt::LeftButton,
                          isHeld ? Qt::LeftButton : Qt::NoButton, modifiers);
        QApplication::sendEvent(view.viewport(), &event);
    }
    [[nodiscard]] QPoint pointOf(std::int64_t position) const
    {
        return view.characterRect(position).center() - QPoint(2, 0);
    }
    /// Of the character at `offset` of a line.
    [[nodiscard]] QRect rectOf(std::int64_t line, int offset = 0) const
    {
        return view.characterRect(view.store().line(line).start + offset);
    }
    [[nodiscard]] std::u16string lineAtCaret() const
    {
        return std::u16string(view.store().line(view.store().lineAt(view.caret())).text);
    }
    /// The first line in sight.
    [[nodiscard]] std::u16string topLine() const
    {
        return std::u16string(view.store().line(view.store().lineAt(view.positionAt({8, 8}))).text);
    }

    ZNTOutputView view;
};
