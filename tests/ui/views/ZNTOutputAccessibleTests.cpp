#include "ZNTAccessibleFactories.h"
#include "ZNTOutputViewFixture.h"

#include <numeric>

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
        EXPECT_TRUE(QTest::qWaitFor([] { return QAccessible::isActive(); }, 10'000));
        previous = QAccessible::installUpdateHandler(&hear);
    }
    ~OutputAccessible() override { QAccessible::installUpdateHandler(previous); }
    QAccessibleTextInterface* text() { return QAccessible::queryAccessibleInterface(&view)->textInterface(); }

    QAccessible::UpdateHandler previous = nullptr;
};

/// And every question ends, also beyond the text.
void expectUnitsTile(const QString& all, QAccessibleTextInterface& text)
{
    int start = 0, end = 0, other = 0, otherEnd = 0;
    for (const auto boundary :
         {QAccessible::CharBoundary, QAccessible::WordBoundary, QAccessible::SentenceBoundary,
          QAccessible::ParagraphBoundary, QAccessible::LineBoundary}) {
        SCOPED_TRACE(all.toStdString() + ", " + std::to_string(boundary));
        for (int offset = 0; offset < all.size(); offset = end) {
            const auto unit = text.textAtOffset(offset, boundary, &start, &end);
            ASSERT_EQ(start, offset);
            ASSERT_GT(end, start);
            ASSERT_EQ(unit, all.mid(start, end - start));
            ASSERT_TRUE(unit.isValidUtf16()) << "no character is cut";
            text.textAfterOffset(offset, boundary, &other, &otherEnd);
            ASSERT_EQ(other, end);
            text.textBeforeOffset(end, boundary, &other, &otherEnd);
            ASSERT_TRUE(end == all.size() || (other == start && otherEnd == end));
        }
        for (const int offset : {-2, -1, static_cast<int>(all.size()), static_cast<int>(all.size()) + 1}) {
            text.textBeforeOffset(offset, boundary, &start, &end);
            text.textAtOffset(offset, boundary, &start, &end);
            text.textAfterOffset(offset, boundary, &start, &end);
        }
    }
}

TEST(FieldAccessible, UnitsOfEveryKindTileTheTextAndHiddenTypingIsDots)
{
    znt::installAccessibleFactories();
    QLineEdit line;
    QSpinBox number;
    number.setMaximum(120);
    const auto expectTile = [](QWidget& field, const QString& text, const QString& shown) {
        auto* element = QAccessible::queryAccessibleInterface(&field);
        ASSERT_NE(element->textInterface(), nullptr);
        element->editableTextInterface()->replaceText(0, -1, text);
        EXPECT_EQ(element->text(QAccessible::Value), shown);
        expectUnitsTile(shown, *element->textInterface());
        int start = 0, end = 0;
        element->textInterface()->attributes(0, &start, &end);
        EXPECT_EQ(end, shown.size()) << "one run";
    };
    for (const auto* text :
         {u"", u"l", u"look", u"look at  the well", u"cafe\u0301 e\u0301", u"\U0001F44D\U0001F3FD go", u"?!"})
        expectTile(line, QString::fromUtf16(text), QString::fromUtf16(text));
    expectTile(number, u"120"_s, u"120"_s);
    line.setEchoMode(QLineEdit::Password);
    expectTile(line, u"secret"_s, QString(6, QChar(0x2022)));
    EXPECT_TRUE(QAccessible::queryAccessibleInterface(&line)->state().passwordEdit);
}

TEST_F(OutputAccessible, UnitsOfEveryKindTileTheText)
{
    int start = 0, end = 0;
    view.append(coloured(
        u"You stand here. A guard\u0301 \u4F60\u7AD9 \U0001F600 watches the long road that wraps.\r\n"
        u"\r\nExits: north\r\n> "));
    settle();
    expectUnitsTile(QString::fromStdU16String(everything(view.store())), *text());
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
    EXPECT_EQ(std::accumulate(inserted.begin(), inserted.end(), QString()), u"hello\n"_s.repeated(20));
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
    EXPECT_EQ(caretPlaces, std::vector{text()->cursorPosition()});
    text()->setCursorPosition(3);
    EXPECT_EQ(view.caret(), 3);
    text()->setSelection(0, 5, 12);
    EXPECT_EQ(view.selectedText(), u"0\nline "_s);
    int start = 0, end = 0;
    text()->selection(0, &start, &end);
    EXPECT_EQ(std::make_pair(start, end), std::make_pair(5, 12));
    EXPECT_EQ(text()->offsetAtPoint(text()->characterRect(9).center()), 9);
    EXPECT_TRUE(text()->characterRect(text()->characterCount() / 2).isEmpty()); // out of sight
    text()->scrollToSubstring(400, 404);
    EXPECT_FALSE(text()->characterRect(400).isEmpty());
}

} // namespace
