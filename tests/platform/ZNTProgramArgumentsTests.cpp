#include "ZNTProgramArguments.h"

using testing::HasSubstr;

namespace
{

/// The command line of a program with an option of each kind.
struct ZNTProgramArgumentsTest : testing::Test {
    struct Answer {
        std::optional<int> code;
        std::string output, errors;
    };
    enum class Bell { Off, Loud };

    Answer parse(std::vector<const char*> words)
    {
        arguments.emplace("zant-er", "Rings bells.");
        arguments->addText("HOST", host, "the host");
        arguments->addPort("PORT", port, ZNTProgramArguments::Zero::Refused, "its port");
        arguments->addFlag("-q,--quiet", isQuiet, "say [no] more");
        arguments->addChoice<Bell>("--bell", bell, {{"off", Bell::Off}, {"loud", Bell::Loud}},
                                   "the player's bell: sounds are played or else they are not played");
        arguments->addRepeated(
            "--set", sets, "NAME=VALUE",
            [](const std::string& value) { return value == "x" ? "What is x?" : ""; }, {"rate=", "volume="},
            "change \\ a setting");
        arguments->whenRead([this] { return complaint; });
        words.insert(words.begin(), "zant-er");
        testing::internal::CaptureStdout();
        testing::internal::CaptureStderr();
        const auto code = arguments->parse(static_cast<int>(words.size()), words.data());
        return {code, testing::internal::GetCapturedStdout(), testing::internal::GetCapturedStderr()};
    }

    std::optional<ZNTProgramArguments> arguments;
    std::string host, complaint;
    std::uint16_t port = 0;
    bool isQuiet = false;
    Bell bell = Bell::Off;
    std::vector<std::string> sets;
};

TEST_F(ZNTProgramArgumentsTest, WhatIsGivenIsReadAndAMistakeIsNamed)
{
    EXPECT_EQ(parse({"mud.example", "4000", "-q", "--bell", "LOUD", "--set", "a=1", "--set=b=2"}).code,
              std::nullopt);
    EXPECT_EQ(host, "mud.example");
    EXPECT_EQ(port, 4000);
    EXPECT_TRUE(isQuiet);
    EXPECT_EQ(bell, Bell::Loud);
    EXPECT_EQ(sets, (std::vector<std::string>{"a=1", "b=2"}));
    for (const auto& [words, sentence] : std::vector<std::pair<std::vector<const char*>, std::string>>{
             {{"h", "0"}, "PORT"},
             {{"--bell", "x"}, "\"x\" is none of off|loud"},
             {{"--set", "x"}, "What is x?"},
             {{"--describe", "x"}, "there is no page x"},
             {{"--loud"}, "--loud"}}) {
        const auto answer = parse(words);
        EXPECT_EQ(answer.code, ZNTProgramArguments::usageError) << sentence;
        EXPECT_EQ(answer.output, "");
        EXPECT_THAT(answer.errors, HasSubstr(sentence));
    }
    complaint = "The game needs a name.";
    EXPECT_THAT(parse({}).errors, HasSubstr(complaint));
}

TEST_F(ZNTProgramArgumentsTest, TheHelpIsAsWideAsATerminal)
{
    // How many empty lines follow depends on the library's version.
    EXPECT_THAT(parse({"--help"}).output, testing::StartsWith(R"(Rings bells.

Usage: zant-er [OPTIONS] [HOST [PORT]]

Arguments:
  HOST                  the host
  PORT                  its port

Options:
  -h, --help            show this help
  --version             show the version
  -q, --quiet           say [no] more
  --bell off|loud       the player's bell: sounds are played or else they are
                        not played
  --set NAME=VALUE      change \ a setting
)"));
    EXPECT_EQ(parse({"-h"}).code, 0);
}

TEST_F(ZNTProgramArgumentsTest, EachShellAndTheManPageGetTheOptionsInTheirOwnWriting)
{
    const std::pair<const char*, const char*> pages[] = {{"--describe=man", R"(
.TP
\fB\-q, \-\-quiet\fR
\&say [no] more
.TP
\fB\-\-bell\fR \fIoff|loud\fR
\&the player's bell: sounds are played or else they are not played
.TP
\fB\-\-set\fR \fINAME=VALUE\fR
\&change \e a setting
)"},
                                                         {"--describe=bash", R"(
        --bell)
            words='off loud' ;;
        --set)
            compopt -o nospace
            words='rate= volume=' ;;
)"},
                                                         {"--describe=zsh", R"(
    '(-q --quiet)--quiet[say \[no\] more]' \
    '(--bell)--bell=[the player'\''s bell: sounds are played or else they are not played]:off|loud:(off loud)' \
    '*--set=[change \\ a setting]:NAME=VALUE:{compadd -S "" - rate= volume=}' \
)"},
                                                         {"--describe=fish", R"(
complete -c zant-er -s q -l quiet -d 'say [no] more'
complete -c zant-er -l bell -x -a 'off loud' -d 'the player\'s bell: sounds are played or else they are not played'
complete -c zant-er -l set -x -a 'rate= volume=' -d 'change \\ a setting'
)"}};
    for (const auto& [question, entries] : pages)
        EXPECT_THAT(parse({question}).output,
                    testing::AllOf(HasSubstr(entries), testing::Not(HasSubstr("HOST"))));
    EXPECT_THAT(parse({"--describe=bash"}).output, HasSubstr("complete -F _zant_er zant-er\n"));
}

TEST_F(ZNTProgramArgumentsTest, AQuestionIsFoundBeforeTheDoubleDash)
{
    const auto question = [](std::vector<const char*> words) {
        words.insert(words.begin(), "zant-er");
        const char* found = ZNTProgramArguments::question(static_cast<int>(words.size()), words.data());
        return found ? std::string(found) : "none";
    };
    EXPECT_EQ(question({"--demo", "-h"}), "-h");
    EXPECT_EQ(question({"--describe=man", "--"}), "--describe=man");
    EXPECT_EQ(question({"--version"}), "--version");
    EXPECT_EQ(question({"--", "--help"}), "none");
    EXPECT_EQ(question({"mud.example"}), "none");
}

} // namespace
