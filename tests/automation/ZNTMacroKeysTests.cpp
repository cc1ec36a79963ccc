#include "ZNTMacroKeys.h"
#include "ZNTTestPlatform.h"

namespace
{

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr const char* keysFile = "Library/Zantor/macro-keys.plist";

struct ZNTMacroKeysTest : testing::Test {
    ZNTTestPlatform machine;
    [[nodiscard]] ZNTMacroKeys read() { return {machine.platform.places, machine.platform.log}; }
};

TEST_F(ZNTMacroKeysTest, AKeyBelongsToOneMacroAndAMacroHasOneKeyAlsoAfterARestart)
{
    auto keys = read();
    EXPECT_FALSE(machine.home.has(keysFile)) << "nothing is written before a key is given";
    EXPECT_TRUE(keys.give(7, "Ctrl+K") && keys.give(8, "F4"));
    EXPECT_TRUE(keys.give(7, "Ctrl+Shift+K")); // in place of the first
    EXPECT_THAT(read().all(), ElementsAre(ZNTMacroKey{8, "F4"}, ZNTMacroKey{7, "Ctrl+Shift+K"}));
    EXPECT_TRUE(keys.give(9, "F4")); // taken from macro 8
    EXPECT_EQ(keys.keyOf(8), "");
    EXPECT_TRUE(keys.give(7, ""));
    EXPECT_THAT(read().all(), ElementsAre(ZNTMacroKey{9, "F4"}));
}

TEST_F(ZNTMacroKeysTest, WhatAnotherWindowOrVersionHasWrittenStays)
{
    auto first = read(), second = read();
    EXPECT_TRUE(first.give(1, "F4") && second.give(2, "Ctrl+K"));
    EXPECT_THAT(second.all(), ElementsAre(ZNTMacroKey{1, "F4"}, ZNTMacroKey{2, "Ctrl+K"}));
    auto text = machine.home.read(keysFile);
    const auto entry = [](const std::string& macro, const std::string& key) {
        return "<dict><key>macro</key><integer>" + macro + "</integer><key>key</key><string>" + key +
               "</string></dict>";
    };
    const std::string tooLong(ZNTMacroKeys::longestKey + 1, 'x');
    text.insert(text.find("</array>"),
                "<string>later</string><dict><key>macro</key><string>x</string></dict>" + entry("1", "F5") +
                    entry("3", "F4") + entry("4", "") + entry("5", tooLong));
    machine.home.write(keysFile, text);
    auto third = read();
    EXPECT_EQ(third.all(), second.all());
    EXPECT_FALSE(third.give(1, tooLong));
    EXPECT_TRUE(third.give(1, ""));
    EXPECT_THAT(machine.home.read(keysFile), AllOf(HasSubstr("<string>later</string>"), HasSubstr(tooLong)));
}

TEST_F(ZNTMacroKeysTest, AFailedWriteChangesNothing)
{
    machine.home.write("Library", "no folder");
    auto keys = read();
    EXPECT_FALSE(keys.give(1, "F4"));
    EXPECT_THAT(keys.all(), IsEmpty());
}

} // namespace
