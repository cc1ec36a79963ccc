#include "ZNTCommandInterpreter.h"
#include "ZNTSessionFixture.h"

#include <algorithm>
#include <map>
#include <set>

namespace
{

/// An interpreter among records of what it sets going.
class CommandInterpreter : public testing::Test, protected ZNTCommandActions, protected ZNTLineSender
{
protected:
    void speedwalk(const std::shared_ptr<const ZNTSpeedWalking::Route>& route) override
    {
        done.push_back(u"walk " + route->path);
        routes.insert(route);
    }
    void stopSpeedwalk() override { done.emplace_back(u"stop"); }
    std::vector<std::u16string> getAllMacroNames() override
    {
        std::vector<std::u16string> names;
        for (const auto& [name, text] : macros)
            names.push_back(name);
        return names;
    }
    std::optional<std::u16string> getMacroByName(std::u16string_view name) override
    {
        ++timesLookedUp;
        const auto found = macros.find(std::u16string(name));
        return found == macros.end() ? std::nullopt : std::optional(found->second);
    }
    void insertTextIntoTheWindow(std::u16string_view text) override
    {
        done.push_back(u"show " + std::u16string(text));
    }
    void sendMessageToServer(std::u16string_view line, bool ignoreSpecials) override
    {
        if (!ignoreSpecials && ZNTCommandInterpreter::hasPrefix(line))
            interpreter.showStrings(line);
        else
            done.push_back(u"send " + std::u16string(line));
    }
    std::vector<std::u16string> doneBy(std::u16string_view line)
    {
        done.clear();
        sendMessageToServer(line, false);
        return done;
    }

    using Done = std::vector<std::u16string>;
    std::map<std::u16string, std::u16string> macros;
    int timesLookedUp = 0;
    std::set<std::shared_ptr<const ZNTSpeedWalking::Route>> routes;
    Done done;
    ZNTCommandInterpreter interpreter{*this, *this};
};

} // namespace

TEST_F(CommandInterpreter, FillsTheWordsOfTheLineIntoAMacro)
{
    macros = {{u"greet", u"say hello %1"},
              {u"go", u"%2 then %1"},
              {u"two", u"%2 only"},
              {u"ten", u"%1 %10"},
              {u"late", u"%1 %3 %2 %9"}};
    EXPECT_EQ(doneBy(u"~greet Bob"), Done{u"send say hello Bob"});
    EXPECT_EQ(doneBy(u"~greet"), Done{u"send say hello %1"});
    EXPECT_EQ(doneBy(u"~greet  Bob"), Done{u"send say hello "}) << "two blanks part an empty word";
    EXPECT_EQ(doneBy(u"~go a b"), Done{u"send b then a"});
    EXPECT_EQ(doneBy(u"~go a"), Done{u"send %2 then a"});
    EXPECT_EQ(doneBy(u"~two a b"), Done{u"send %2 only"});
    EXPECT_EQ(doneBy(u"~ten x"), Done{u"send x x0"});
    EXPECT_EQ(doneBy(u"~late %3 %1% c"), Done{u"send c c %1% %9"})
        << "a word's own keys are filled in by later words";
    EXPECT_TRUE(doneBy(u"~unknown").empty());
}

TEST_F(CommandInterpreter, ListsMacroNamesEachInItsOwnFrame)
{
    EXPECT_TRUE(doneBy(u"~list-macro").empty());
    macros = {{u"a", u""}, {u"b", u""}};
    EXPECT_EQ(doneBy(u"~list-macro"), (Done{u"show Macro Names", u"show a", u"show End of Macro Names",
                                            u"show Macro Names", u"show b", u"show End of Macro Names"}));
}

TEST_F(CommandInterpreter, ActsOnEachPrefix)
{
    EXPECT_EQ(doneBy(u"!3n2e"), Done{u"walk 3n2e"});
    EXPECT_EQ(doneBy(u"!3n !stop"), (Done{u"walk 3n !stop", u"stop"}));
    EXPECT_EQ(doneBy(u"!stopped"), Done{u"walk stopped"});
    EXPECT_TRUE(doneBy(u"! ").empty());
    EXPECT_TRUE(doneBy(u"#anything at all").empty());
    EXPECT_EQ(doneBy(u"@look"), Done{u"send @look"});
    EXPECT_EQ(doneBy(u"@~greet"), Done{u"send @~greet"});
    EXPECT_EQ(doneBy(u"éclair"), Done{u"send éclair"});
    EXPECT_EQ(doneBy(u"\u0140 look"), Done{u"send \u0140 look"}) << "its low byte is that of @";
    EXPECT_TRUE(doneBy(u"\u017E").empty()) << "its low byte is that of ~";
}

TEST_F(CommandInterpreter, MacrosCanRunMacrosAndWalks)
{
    macros = {{u"home", u"!2n"}, {u"both", u"~home ~greet"}, {u"greet", u"hello"}};
    EXPECT_EQ(doneBy(u"~both"), (Done{u"walk 2n", u"send hello"}));
}

TEST_F(CommandInterpreter, MacrosThatNeverEndAreStoppedWithAMessage)
{
    macros = {{u"self", u"~self"},
              {u"twice", u"~twice ~twice"},
              {u"grow", u"~grow %1%1%1%1%1%1%1%1"},
              {u"fine", u"ok"}};
    for (const auto* line : {u"~self", u"~twice", u"~grow xxxxxxxxxxxxxxxxxxxxxxxx"}) {
        const auto said = doneBy(line);
        ASSERT_EQ(said.size(), 1U) << znt::utf8FromText(line);
        EXPECT_TRUE(said.front().starts_with(u"show The macro "));
    }
    EXPECT_EQ(doneBy(u"~fine"), Done{u"send ok"});
}

TEST_F(CommandInterpreter, ALongLineOfWordsIsFilledInAtOnceOrRefused)
{
    macros = {{u"say", u"say %1"}, {u"key", u"%1 %2"}};
    std::u16string words;
    for (int count = 0; count < 400'000; ++count)
        words += u" a";
    const std::u16string longWord(400'000, u'w');
    EXPECT_EQ(doneBy(u"~say " + longWord + words), Done{u"send say " + longWord});

    EXPECT_EQ(doneBy(u"~key " + longWord + u"% b%" + words), Done{u"send " + longWord + u"% b%"});

    std::u16string chain = u"~key " + longWord + u"%2"; // each word holds the key of the next
    for (int number = 3; number < 1000; ++number)
        chain += u" %" + znt::decimalText(number);
    const auto said = doneBy(chain);
    ASSERT_EQ(said.size(), 1U);
    EXPECT_TRUE(said.front().starts_with(u"show The macro key was stopped: "));
}

/// A server can write such lines, where a trigger hands them on.
TEST_F(CommandInterpreter, OneLineHasOneBudget)
{
    const auto repeated = [](std::u16string_view text) {
        std::u16string line;
        for (int count = 0; count < 4000; ++count)
            line += text;
        return line;
    };
    macros = {{u"give", u"give %1 100%"}, {u"two", u"~give ~give"}, {u"long", std::u16string(400'000, u'x')}};

    for (const auto* word : {u"~give ", u"~two ", u"~list-macro ", u"~nobody ~give "}) {
        SCOPED_TRACE(znt::utf8FromText(word));
        timesLookedUp = 0;
        const auto said = doneBy(repeated(word));
        const auto message = std::u16string_view(u" was stopped: one line can run 1000 macros at most.");
        ASSERT_FALSE(said.empty());
        EXPECT_TRUE(said.back().ends_with(message));
        EXPECT_EQ(std::count_if(said.begin(), said.end(),
                                [](const auto& what) { return what.starts_with(u"send "); }),
                  word == std::u16string_view(u"~two ") ? 666
                  : word[1] == u'l'                     ? 0
                                                        : 1000);
        EXPECT_LE(said.size(), 3 * 1002u + 1);
        EXPECT_LE(timesLookedUp, 2);
    }
    EXPECT_EQ(doneBy(repeated(u"~long ")).size(), 4u) << "past 1 Mi characters no further macro runs";
    std::u16string unknown;
    for (int number = 0; number < 4000; ++number)
        unknown += u"~x" + znt::decimalText(number) + u' ';
    timesLookedUp = 0;
    EXPECT_EQ(doneBy(unknown + u"~give"), Done{u"send give ~x1 100%"});
    EXPECT_LE(timesLookedUp, 2);

    EXPECT_EQ(doneBy(repeated(u"!n ")).size(), 4000u);
    EXPECT_EQ(routes.size(), 1u) << "the walks of one line share its path";
}

using CommandLine = ZNTSessionFixture;

TEST_F(CommandLine, ReturnSendsUpBringsBackAndResendInterpretsAgain)
{
    connect();
    commandLine.setText(u"kill orc");
    EXPECT_FALSE(session().controlTextViewDoCommandBySelector(ZNTCommandLineKey::MoveUp));
    EXPECT_EQ(commandLine.text(), u"kill orc") << "there is no last command to put in its place";
    EXPECT_TRUE(session().controlTextViewDoCommandBySelector(ZNTCommandLineKey::InsertNewline));
    EXPECT_EQ(commandLine.text(), u"");
    EXPECT_FALSE(session().controlTextViewDoCommandBySelector(ZNTCommandLineKey::MoveDown));
    EXPECT_EQ(commandLine.text(), u"");
    EXPECT_FALSE(session().controlTextViewDoCommandBySelector(ZNTCommandLineKey::MoveUp));
    EXPECT_EQ(commandLine.text(), u"kill orc");
    EXPECT_TRUE(commandLine.caretIsAtEnd);
    session().resendLastCommand();

    type(u"");
    EXPECT_EQ(session().lastCommand(), u"kill orc") << "an empty line is sent but not remembered";
    type(u"#note");
    session().resendLastCommand();
    session().sendTextToServerNoWidget(u"@raw");
    settle();
    EXPECT_EQ(server.received(), "kill orc\r\nkill orc\r\n\r\n@raw\r\n");
}
