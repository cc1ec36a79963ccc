#include "ZNTSpokenText.h"

#include <tuple>

namespace
{

TEST(SpokenText, ALongTextIsCutAtTheBestPlaceThereIs)
{
    const std::tuple<const char*, std::u16string_view, std::size_t, std::size_t> rows[] = {
        {"short enough", u"One. Two.", 9, 9},
        {"a sentence", u"One is. Two is too long", 14, 8},
        {"a line", u"no stop here\r\nnor here it goes", 20, 14},
        {"a word, with what clings to it", u"alpha beta, gamma", 14, 12},
        {"a word longer than the limit", u"abcdefghijkl", 5, 5},
        {"a pair at the limit", u"abcd\U0001F600efgh", 5, 4},
        {"a character of several parts", u"abce\u0301fgh", 4, 3},
        {"Chinese, which has no blanks", u"\u4f60\u597d\u4e16\u754c\u3002\u518d\u89c1\u5927\u5bb6", 7, 5},
    };
    for (const auto& [what, text, most, length] : rows) {
        SCOPED_TRACE(what);
        EXPECT_EQ(znt::utteranceLength(text, most), length);
    }
}

TEST(SpokenText, EveryCutMakesProgressWhateverTheText)
{
    // One "character" of a thousand combining marks has no boundary at all.
    for (const auto& text : {std::u16string(5'000, u'\u0301'), std::u16string(5'000, u'\xD83D')}) {
        for (std::u16string_view rest = text; !rest.empty();) {
            const auto length = znt::utteranceLength(rest, 100);
            ASSERT_TRUE(length > 0 && length <= 100);
            rest.remove_prefix(length);
        }
    }
    EXPECT_EQ(znt::utteranceLength(u"\U0001F600\U0001F600", 1), 1u);
}

} // namespace
