#include "ZNTDemoClientTraits.h"
#include "ZNTTelnetCodes.h"

#include <gtest/gtest.h>

using namespace std::string_literals;
using namespace znt::telnet;

const auto askAgain = "\xFF\xFA\x18\x01\xFF\xF0"s;

TEST(DemoClientTraits, ColoursFollowTheTerminalTypesAndTheQuestionsEnd)
{
    using Row = std::tuple<std::vector<std::string>, ZNTDemoColours, std::size_t>;
    for (const auto& [answers, colours, furtherQuestions] :
         {Row{{"ZANTOR", "ANSI-TRUECOLOR", "MTTS 333"}, ZNTDemoColours::True, 2},
          {{"ZANTOR", "ANSI-TRUECOLOR", "mtts 13"}, ZNTDemoColours::TwoHundredFiftySix, 2},
          {{"ZANTOR", "ANSI", "MTTS 5"}, ZNTDemoColours::Eight, 2},
          {{"DUMB", "DUMB", "DUMB"}, ZNTDemoColours::Eight, 1},
          {{"X", "Y", "MTTS 4"}, ZNTDemoColours::None, 2},
          {{"xterm-256color", "xterm-256color"}, ZNTDemoColours::TwoHundredFiftySix, 1},
          {{"A", "B", "C", "D", "E", "F"}, ZNTDemoColours::Eight, 3},
          {{"MTTS 99999999999999999999"}, ZNTDemoColours::Eight, 0}}) {
        SCOPED_TRACE(answers.front());
        ZNTDemoClientTraits traits(false);
        EXPECT_EQ(traits.receive(option::TerminalType, "\0ANSI-TRUECOLOR"s), "") << "nobody asked";
        EXPECT_EQ(traits.askForTerminalType(), askAgain);
        std::size_t questions = 0;
        for (const auto& answer : answers)
            questions += traits.receive(option::TerminalType, "\0"s + answer) == askAgain ? 1 : 0;
        EXPECT_EQ(traits.screen().colours, colours);
        EXPECT_EQ(questions, furtherQuestions);
    }
}

TEST(DemoClientTraits, WidthsStayReadable)
{
    ZNTDemoClientTraits traits(false);
    for (const auto& [size, columns] : {std::pair("\0\x64\0\x18"s, 100U),
                                        {"\0\x01\0\x18"s, 20U},
                                        {"\xFF\xFF\0\x18"s, 250U},
                                        {"\0\x64"s, 250U}, // half an answer
                                        {"\0\0\0\0"s, 76U}}) {
        traits.receive(option::WindowSize, size);
        EXPECT_EQ(traits.screen().columns, columns);
    }
}

TEST(DemoClientTraits, Utf8IsAgreedOnFromEitherSideAndOnlyThen)
{
    const auto rejected = "\xFF\xFA\x2A\x03\xFF\xF0"s;
    using Row = std::tuple<bool, std::string, std::string, bool>;
    for (const auto& [isAsked, content, answer, isUnicode] :
         {Row{true, "\2utf-8", "", true},
          {true, "\2BIG5", "", false},
          {true, "\3", "", false},
          {false, "\2UTF-8", "", false},
          {true, "\1;UTF-8", rejected, false}, // both asked at once: the game's question stands
          {false, "\1;BIG5;utf-8;GBK", "\xFF\xFA\x2A\x02utf-8\xFF\xF0", true},
          {false, "\1[TTABLE ]\1 UTF-8", "\xFF\xFA\x2A\x02UTF-8\xFF\xF0", true},
          {false, "\1[TTABLE ]", rejected, false},
          {false, "\1;UTF-80;", rejected, false},
          {false, "\1", rejected, false},
          {false, "", "", false}}) {
        SCOPED_TRACE(content);
        ZNTDemoClientTraits traits(false);
        if (isAsked)
            traits.askForUnicode();
        EXPECT_EQ(traits.receive(option::Charset, content), answer);
        EXPECT_EQ(traits.screen().hasEveryCharacter, isUnicode);
    }
}
