#include "ZNTText.h"

using namespace znt;
using namespace std::string_literals;

TEST(Text, ReadsTheLeadingNumberAndIgnoresTheRest)
{
    const std::pair<std::u16string_view, int> cases[] = {
        {u"2.5", 2},      {u"  -7x", -7},
        {u"x", 0},        {u"", 0},
        {u"50)", 50},     {u"+3", 3},
        {u"- 3", 0},      {u"99999999999", 2147483647},
        {u"\t12 13", 12}, {u"-99999999999", -2147483647 - 1},
    };
    for (const auto& [text, number] : cases) {
        SCOPED_TRACE(utf8FromText(text));
        EXPECT_EQ(integerValue(text), number);
    }
    EXPECT_FLOAT_EQ(floatValue(u" 12.5)"), 12.5F);
    EXPECT_FLOAT_EQ(floatValue(u"loud"), 0.0F);
}

TEST(Text, Utf8SurvivesBothWaysAndDamageIsReplaced)
{
    const std::string text = "萬 \xF0\x9F\x97\xA1 é\0x"s;
    EXPECT_EQ(utf8FromText(textFromUtf8(text)), text);
    EXPECT_EQ(textFromUtf8("a\xFF\xE8\x90z"), u"a\uFFFD\uFFFDz");
    EXPECT_EQ(utf8FromText(u"\x80\xD800x"), "\xC2\x80\xEF\xBF\xBDx");
}

TEST(Text, BlanksAndLineEndsAreTrimmedApart)
{
    EXPECT_EQ(trimmedOfBlanks(u" \t\u3000a b\n "), u"a b\n");
    EXPECT_EQ(trimmedOfNewlines(u"\r\n a \u2028\n"), u" a ");
    EXPECT_EQ(trimmedOfWhitespace(u"\n \t"), u"");
}
