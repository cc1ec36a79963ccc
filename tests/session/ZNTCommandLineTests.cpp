#include "ZNTIcuReference.h"
#include "ZNTNotedCommands.h"
#include "ZNTRandomText.h"
#include "ZNTSessionFixture.h"

#include <algorithm>

namespace
{

class CommandInterpreter : public testing::Test, protected ZNTNotedCommands
{
};

} // namespace

TEST_F(CommandInterpreter, ActsOnEachPrefixAndFillsTheWordsOfTheLineIntoAMacro)
{
    macros = {{u"greet", u"say hello %1"}, {u"go", u"%2 then %1"}, {u"ten", u"%1 %10"},
              {u"late", u"%1 %3 %2 %9"},   {u"home", u"!2n"},      {u"both", u"~home ~greet"}};
    const std::pair<std::u16string, Done> rows[] = {
        {u"~greet Bob", {u"send say hello Bob"}},
        {u"~greet", {u"send say hello %1"}},
        {u"~greet  Bob", {u"send say hello "}}, // two blanks part an empty word
        {u"~go a b", {u"send b then a"}},
        {u"~ten x", {u"send x x0"}},
        {u"~late %3 %1% c", {u"send c c %1% %9"}}, // a word's own keys are filled in by later words
        {u"~unknown", {}},
        {u"~both", {u"walk 2n", u"send say hello ~greet"}},
        {u"!3n !stop", {u"walk 3n !stop", u"stop"}},
        {u"!stopped", {u"walk stopped"}},
        {u"! ", {}},
        {u"\u0140 look", {u"send \u0140 look"}}, // its low byte is that of @
        {u"\u017E", {}},                         // its low byte is that of ~
    };
    for (const auto& [line, expected] : rows)
        EXPECT_EQ(doneBy(line), expected) << znt::utf8FromText(line);
}

TEST_F(CommandInterpreter, FindsTheWordsBehindAPrefixAsIcuDoes)
{
    ZNTRandomText texts({u"~", u"!", u" ", u"\u00A0", u"\u2028", u"\u3000", u"\t", u"\r\n", u"\u0085",
                         u"\u200B", u"\u001C", u"a", u"stop", u"萬", u"\xD83D\xDDE1", u"\xD83D", u"%1"});
    for (int round = 0; round < 5'000; ++round) {
        const auto text = texts.next(15);
        SCOPED_TRACE(znt::utf8FromText(text));
        Done expected;
        for (const auto& match : znt::icu::matches(u"~" + text, uR"(~(\S+)\s?)")) {
            macros[match.groups.front().second] = u"found";
            expected.emplace_back(u"send found");
        }
        ASSERT_EQ(doneBy(u"~" + text), expected);
        expected.clear();
        for (const auto& match : znt::icu::matches(u"!" + text, uR"(!(\S+)\s?)"))
            expected.emplace_back(match.groups.front().second == u"stop" ? u"stop" : u"walk");
        ASSERT_EQ(doneBy(u"!" + text).size(), expected.size());
        for (std::size_t at = 0; at < expected.size(); ++at)
            ASSERT_TRUE(done[at].starts_with(expected[at]));
    }
}

/// A server can cause such lines if a trigger sends parts of its text.
TEST_F(CommandInterpreter, OneLineHasOneBudget)
{
    const auto repeated = [](std::u16string_view text) {
        std::u16string line;
        for (int count = 0; count < 4000; ++count)
            line += text;
        return line;
    };
    macros = {{u"give", u"give %1 100%"},
              {u"two", u"~give ~give"},
              {u"self", u"~self"},
              {u"long", std::u16string(400'000, u'x')}};
    const std::pair<const char16_t*, long> rows[] = {
        {u"~give ", 1000}, {u"~two ", 666}, {u"~list-macro ", 0}};
    for (const auto& [words, linesToSend] : rows) {
        SCOPED_TRACE(znt::utf8FromText(words));
        timesLookedUp = 0;
        const auto said = doneBy(repeated(words));
        EXPECT_TRUE(said.back().ends_with(u" was stopped: one line can run 1000 macros at most."));
        EXPECT_EQ(std::ranges::count_if(said, [](auto& what) { return what.starts_with(u"send "); }),
                  linesToSend);
        EXPECT_LE(timesLookedUp, 2);
    }
    EXPECT_EQ(doneBy(repeated(u"~long ")).size(), 4u) << "past 1 Mi characters no further macro runs";
    const auto said = doneBy(u"~self");
    ASSERT_EQ(said.size(), 1U);
    EXPECT_TRUE(said.front().starts_with(u"show The macro "));
    EXPECT_EQ(doneBy(repeated(u"!n ")).size(), 4000u);
}

using CommandLine = ZNTSessionFixture;

TEST_F(CommandLine, ReturnSendsUpBringsBackAndResendInterpretsAgain)
{
    connect();
    const auto press = [this](ZNTCommandLineKey key) {
        return session().controlTextViewDoCommandBySelector(key);
    };
    int changes = 0;
    whenSessionChanges = [&] { ++changes; };
    session().startOrPauseRecording();
    EXPECT_EQ(changes, 1) << "the window shows that it records";
    commandLine.setText(u"kill orc");
    EXPECT_FALSE(press(ZNTCommandLineKey::MoveUp));
    EXPECT_EQ(commandLine.text(), u"kill orc") << "there is no last command to put in its place";
    EXPECT_TRUE(press(ZNTCommandLineKey::InsertNewline));
    EXPECT_EQ(commandLine.text(), u"");
    EXPECT_FALSE(press(ZNTCommandLineKey::MoveUp));
    EXPECT_EQ(commandLine.text(), u"kill orc");
    session().resendLastCommand();

    type(u"");
    EXPECT_EQ(session().lastCommand(), u"kill orc") << "an empty line is sent but not remembered";
    session().sendTextToServerNoWidget(u"@raw");
    EXPECT_EQ(received(), "kill orc\r\nkill orc\r\n\r\n@raw\r\n");
    EXPECT_EQ(session().recorder().getACopyOfTheCommands(),
              (std::vector<std::u16string>{u"kill orc", u"kill orc", u"", u"@raw"}));
}
