#include "ZNTOutputSamples.h"
#include "ZNTWebAddresses.h"

namespace
{

using testing::ElementsAre;
using Texts = std::vector<std::u16string>;

Texts addressesIn(std::u16string_view line)
{
    std::vector<std::pair<std::size_t, std::size_t>> found;
    znt::webAddressesIn(line, found);
    Texts texts;
    for (const auto& [from, to] : found)
        texts.emplace_back(line.substr(from, to - from));
    return texts;
}

TEST(WebAddresses, EndWhereTheSentenceGoesOn)
{
    const std::pair<std::u16string_view, Texts> rows[] = {
        {u"See http://a.example.", {u"http://a.example"}},
        {u"HTTPS://A.example/?q=1,2!) and", {u"HTTPS://A.example/?q=1,2"}},
        {u"(http://a.example/b_(c))", {u"http://a.example/b_(c)"}},
        {u"http://a.example/b(c, d", {u"http://a.example/b"}},
        {u"http://a.example/b([c)]", {u"http://a.example/b"}},
        {u"[http://a.example](https://b.example/)", {u"http://a.example", u"https://b.example/"}},
        {u"<http://a.example> \"http://b.example\"", {u"http://a.example", u"http://b.example"}},
        {u"http://[2001:db8::1]:8080/x.", {u"http://[2001:db8::1]:8080/x"}},
        {u"http://a.example\uFF0C\u4F60", {u"http://a.example"}},
        {u"\u8BBF\u95EEhttp://a.example/\u4F60\u7AD9", {u"http://a.example/"}},
        {u"http://m\u00FCnchen.example/\u0436\u201D", {u"http://m\u00FCnchen.example/\u0436"}},
        {u"http://good.example\u202Egnp.exe", {u"http://good.example"}}, // turns the writing round
        {u"http://a.example\u200B/b", {u"http://a.example"}},            // a blank without width
        {u"http://a.example/\xD800", {u"http://a.example/"}},            // half a character
    };
    for (const auto& [line, addresses] : rows)
        EXPECT_EQ(addressesIn(line), addresses) << testing::PrintToString(line);
    for (const auto* none : {u"xhttp://a.example", u"http://", u"http:// a", u"http://...",
                             u"ftp://a.example", u"javascript://a", u"://a.example", u"http:/a.example"})
        EXPECT_EQ(addressesIn(none), Texts{}) << testing::PrintToString(none);
    const auto longest = u"http://a/" + std::u16string(znt::longestWebAddress - 9, u'b');
    EXPECT_EQ(addressesIn(longest), Texts{longest});
    EXPECT_EQ(addressesIn(longest + u"b http://c"), Texts{u"http://c"});
}

/// A scan that begins anew behind each address, and looks at the rest each time, takes many minutes for
/// these.
TEST(WebAddresses, ALineOfAnyLengthIsScannedOnce)
{
    constexpr std::size_t pieces = 100'000;
    const std::pair<std::u16string_view, std::size_t> rows[] = {
        {u"http://a)", pieces}, {u"http://a(]", pieces}, {u"http://a(", 1}, {u"http://", 0}, {u"://", 0}};
    for (const auto& [piece, expected] : rows) {
        std::u16string line;
        for (std::size_t number = 0; number < pieces; ++number)
            line += piece;
        EXPECT_EQ(addressesIn(line).size(), expected) << testing::PrintToString(piece);
    }
}

TEST(WebAddresses, OfTheLastLinesAreListedNewestFirstAndOnce)
{
    ZNTOutputStore store;
    store.append(coloured(u"http://old\nhttp://a http://b\nhttp://c\nhttp://a\nno\n"));
    EXPECT_THAT(znt::newestWebAddresses(store, 5), ElementsAre(u"http://a", u"http://c", u"http://b"));
    EXPECT_EQ(znt::newestWebAddresses(store, 1), Texts{}) << "the line that waits for text";
    EXPECT_EQ(znt::newestWebAddresses(ZNTOutputStore(), 500), Texts{});
}

} // namespace
