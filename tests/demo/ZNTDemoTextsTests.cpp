#include "ZNTDemoTexts.h"

#include "ZNTText.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace znt::demo;

namespace
{

std::vector<std::u16string> allTexts(const ZNTDemoTexts& texts)
{
    std::vector<std::u16string> all;
    const auto add = [&](const auto& table) {
        for (const auto& row : table)
            all.emplace_back(row.text);
    };
    add(texts.phrases);
    add(texts.roomNames);
    add(texts.roomDescriptions);
    add(texts.directions);
    add(texts.things);
    add(texts.thingDescriptions);
    return all;
}

} // namespace

TEST(DemoTexts, EveryTextCanBeSentInItsEncodingAndIsPlainAndFilledInAsTheEnglishOne)
{
    const auto english = allTexts(ZNTDemoTexts::forEncoding(ZNTStringEncoding::Ascii));
    for (const auto encoding :
         {ZNTStringEncoding::Ascii, ZNTStringEncoding::EucCn, ZNTStringEncoding::Big5Hkscs}) {
        const auto texts = allTexts(ZNTDemoTexts::forEncoding(encoding));
        for (std::size_t at = 0; at < texts.size(); ++at) {
            const auto& text = texts[at];
            SCOPED_TRACE(znt::utf8FromText(text));
            EXPECT_EQ(znt::decodedText(znt::encodedText(text, encoding), encoding), text);
            EXPECT_FALSE(znt::contains(text, u"\x1b")) << "colours are laid on where the text is used";
            EXPECT_FALSE(znt::contains(text, u"!!")) << "a client takes this for a sound tag";
            for (const auto* placeholder : {u"%1", u"%2"})
                EXPECT_EQ(znt::contains(text, placeholder), znt::contains(english[at], placeholder));
        }
    }
}
