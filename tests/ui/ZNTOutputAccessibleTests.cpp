#include "ZNTOutputViewFixture.h"

#include <QAccessible>

namespace
{

std::vector<QString> inserted;
std::vector<int> caretPlaces;

void hear(QAccessibleEvent* event)
{
    if (event->type() == QAccessible::TextInserted)
        inserted.push_back(static_cast<QAccessibleTextInsertEvent*>(event)->textInserted());
    if (event->type() == QAccessible::TextCaretMoved)
        caretPlaces.push_back(static_cast<QAccessibleTextCursorEvent*>(event)->cursorPosition());
}

class OutputAccessible : public ZNTOutputViewTest
{
protected:
    OutputAccessible()
    {
        inserted.clear();
        caretPlaces.clear();
        // Qt announces nothing before the accessibility bus has answered.
        for (int turn = 0; turn < 100 && !QAccessible::isActive(); ++turn)
            settle();
        EXPECT_TRUE(QAccessible::isActive());
        previous = QAccessible::installUpdateHandler(&hear);
    }
    ~OutputAccessible() override { QAccessible::installUpdateHandler(previous); }
    [[nodiscard]] QAccessibleInterface* element() { return QAccessible::queryAccessibleInterface(&view); }
    [[nodiscard]] QAccessibleTextInterface* text() { return element()->textInterface(); }

    QAccessible::UpdateHandler previous = nullptr;
};

TEST_F(OutputAccessible, UnitsOfEveryKindTileTheText)
{
    int start = 7, end = 7;
    EXPECT_EQ(text()->textAtOffset(0, QAccessible::LineBoundary, &start, &end), QString())
        << "empty at first";
    view.append(coloured(
        u"You stand here. A guard\u0301 \u4F60\u7AD9 \U0001F600 watches the long road that wraps.\r\n"
        u"\r\nExits: north\r\n> "));
    settle();
    const auto all = text()->text(0, -1);
    EXPECT_EQ(all.toStdU16String(), everything(view.store()));
    for (const auto boundary :
         {QAccessible::CharBoundary, QAccessible::WordBoundary, QAccessible::SentenceBoundary,
          QAccessible::ParagraphBoundary, QAccessible::LineBoundary}) {
        SCOPED_TRACE(static_cast<int>(boundary));
        int before = 0, beforeEnd = 0, after = 0, afterEnd = 0;
        for (int offset = 0; offset < all.size(); offset = end) {
            const auto unit = text()->textAtOffset(offset, boundary, &start, &end);
            ASSERT_EQ(start, offset);
            ASSERT_GT(end, start);
            ASSERT_EQ(unit, all.mid(start, end - start));
            text()->textAfterOffset(offset, boundary, &after, &afterEnd);
            ASSERT_EQ(after, end);
            if (end < all.size()) {
                text()->textBeforeOffset(end, boundary, &before, &beforeEnd);
                ASSERT_EQ(before, start);
                ASSERT_EQ(beforeEnd, end);
            }
        }
    }
    EXPECT_EQ(text()->textAtOffset(-2, QAccessible::LineBoundary, &start, &end), u"> "_s);
    EXPECT_EQ(text()->textAtOffset(20, QAccessible::WordBoundary, &start, &end).toStdU16String(),
              u"guard\u0301");
    EXPECT_EQ(text()->textAtOffset(2, QAccessible::SentenceBoundary, &start, &end), u"You stand here. "_s);
}

TEST_F(OutputAccessible, NewTextIsAnnouncedOnceARefreshAndAFloodByItsEnd)
{
    for (int line = 0; line < 20; ++line)
        view.append(coloured(u"hello\r\n"));
    settle();
    ASSERT_LE(inserted.size(), 2u); // the first may have come alone
    QString told;
    for (const auto& piece : inserted)
        told += piece;
    EXPECT_EQ(told, u"hello\n"_s.repeated(20));
    EXPECT_TRUE(caretPlaces.empty()); // a reader's attention stays where it is

    inserted.clear();
    view.append(coloured(std::u16string(100'000, u'x') + u"the end"));
    settle();
    ASSERT_EQ(inserted.size(), 1u);
    EXPECT_TRUE(inserted[0].endsWith(u"the end"_s));
    EXPECT_LT(inserted[0].size(), 20'000);
}

TEST_F(OutputAccessible, CaretSelectionAndPlacesCanBeReadAndSet)
{
    addLines(0, 60);
    press(Qt::Key_Up);
    ASSERT_EQ(caretPlaces.size(), 1u);
    EXPECT_EQ(caretPlaces[0], text()->cursorPosition());
    text()->setCursorPosition(3);
    EXPECT_EQ(view.caret(), 3);
    text()->setSelection(0, 5, 12);
    EXPECT_EQ(view.selectedText(), u"0\nline "_s);
    int start = 0, end = 0;
    text()->selection(0, &start, &end);
    EXPECT_EQ(std::make_pair(start, end), std::make_pair(5, 12));
    const auto area = text()->characterRect(9);
    EXPECT_EQ(text()->offsetAtPoint(area.center()), 9);
    EXPECT_TRUE(text()->characterRect(text()->characterCount() / 2).isEmpty()); // out of sight
    text()->scrollToSubstring(400, 404);
    EXPECT_FALSE(text()->characterRect(400).isEmpty());
}

TEST_F(OutputAccessible, AttributesAreThoseOfTheRun)
{
    view.append(coloured(u"white "));
    auto bold = coloured(u"bold red", znt::colours::red);
    bold.sets[0].font = ZNTFont{u"Menlo-Bold", 12};
    view.append(bold);
    int start = 0, end = 0;
    const auto described = text()->attributes(8, &start, &end);
    EXPECT_EQ(std::make_pair(start, end), std::make_pair(6, 14));
    EXPECT_TRUE(described.contains(u"color:rgb(255,0,0);"_s));
    EXPECT_TRUE(described.contains(u"font-weight:bold;"_s));
}

} // namespace
