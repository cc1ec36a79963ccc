#pragma once

#include "ZNTOutputSamples.h"
#include "ZNTOutputView.h"

#include <QTest>
#include <QtWidgets>

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
    static void settle() { QTest::qWait(80); }
    void addLines(int from, int to)
    {
        for (int line = from; line < to; ++line)
            view.append(coloured(u"line " + QString::number(line).toStdU16String() + u"\r\n"));
        view.scrollToEnd();
        settle();
    }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) { QTest::keyClick(&view, key, modifiers); }
    void mouse(QEvent::Type type, QPoint point)
    {
        const bool isHeld = type != QEvent::MouseButtonRelease;
        QMouseEvent event(type, QPointF(point), QPointF(view.viewport()->mapToGlobal(point)), Qt::LeftButton,
                          isHeld ? Qt::LeftButton : Qt::NoButton, Qt::NoModifier);
        QApplication::sendEvent(view.viewport(), &event);
    }
    void clickAcross(QPoint from, QPoint to)
    {
        mouse(QEvent::MouseButtonPress, from);
        mouse(QEvent::MouseMove, to);
        mouse(QEvent::MouseButtonRelease, to);
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
