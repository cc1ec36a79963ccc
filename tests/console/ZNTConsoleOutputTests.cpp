#include "ZNTConsoleOutput.h"
#include "ZNTConsoleWriter.h"

#include "VirtualRunLoop.h"
#include "ZNTNotedOutput.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <unistd.h>

namespace
{

struct ZNTConsoleOutputTest : testing::Test {
    VirtualRunLoop loop;
    ZNTNotedInput input;
    ZNTNotedSink sink;
    ZNTConsoleOutput output{loop, input, sink};
};

TEST_F(ZNTConsoleOutputTest, ATurnsTextAndTheTypedLineBehindItAreWrittenOnce)
{
    input.notesWay = true;
    std::vector<std::string> written;
    sink.beforeWriting = [&](std::string_view text) { written.emplace_back(text); };
    output.write("a troll\n");
    output.write("> ");
    output.setUnfinishedLine("> ");
    loop.runPosted();
    EXPECT_FALSE(input.isHidden);
    EXPECT_EQ(input.prompt, "> ");
    output.write("once\x1b[0m\n\x1b[0m");
    output.catchUp();
    output.write("\x1b[0mtwice");
    output.writeAside("Title: text\n");
    loop.runPosted();
    output.write("\x1b[0m\nthrice");
    loop.runPosted();
    EXPECT_THAT(written, testing::ElementsAre("[s]a troll\n> [> ]", "[t]once\x1b[0m\n\x1b[0m[> ]",
                                              "[s]\x1b[0mtwice", "[s]\x1b[0m\nthrice[> ]"));
    EXPECT_EQ(input.aside, "[a]Title: text\n[> ]");
}

TEST_F(ZNTConsoleOutputTest, AHalfTypedLineIsShownAgainOnceASecondOrByAKey)
{
    input.hasHalfLine = true;
    const auto comesAgainAfter = [&](double seconds) {
        output.write("a troll\n");
        loop.runPosted();
        const bool wasHidden = input.isHidden;
        loop.advance(seconds);
        return wasHidden && !input.isHidden;
    };
    EXPECT_FALSE(comesAgainAfter(0.4)) << "the first one is not hidden at all";
    EXPECT_FALSE(comesAgainAfter(0.3));
    EXPECT_TRUE(comesAgainAfter(0.3)) << "a second after the first one";
    EXPECT_FALSE(comesAgainAfter(0.5));
    output.catchUp();
    EXPECT_FALSE(input.isHidden) << "a key was typed";
    input.hasHalfLine = false;
    output.write("a prompt has no half line\n");
    loop.runPosted();
    EXPECT_FALSE(input.isHidden);
}

TEST_F(ZNTConsoleOutputTest, WhileTheTerminalTakesNothingTheTypedLineStaysHiddenAndTheOrderIsKept)
{
    output.writeAside("Title: text\n");
    EXPECT_EQ(input.aside, "Title: text\n") << "nothing to wait for";
    sink.isStopped = true;
    output.write("text\n");
    loop.runPosted();
    EXPECT_TRUE(input.isHidden);
    output.writeAside("Title: after\n");
    sink.goOn();
    EXPECT_FALSE(input.isHidden);

    sink.isStopped = true;
    output.write("more\n");
    output.catchUp();
    EXPECT_FALSE(input.isHidden) << "before a key is drawn";
    EXPECT_EQ(sink.output, "text\nTitle: after\nmore\n");

    std::vector<bool> held;
    output.holdGame = [&](bool isToWait) { held.push_back(isToWait); };
    sink.isFullNow = true;
    output.write("too much\n");
    loop.runPosted();
    EXPECT_THAT(held, testing::ElementsAre(true));
    output.catchUp();
    output.catchUp();
    EXPECT_THAT(held, testing::ElementsAre(true, false)) << "all is written";
}

TEST(ZNTConsoleWriter, AFullPipeDoesNotBlockTheWriterAndLosesNothing)
{
    VirtualRunLoop loop;
    int ends[2];
    ASSERT_EQ(::pipe2(ends, O_CLOEXEC), 0);
    ZNTConsoleWriter writer(loop, {ends[1], ends[1]}, /*mostWaiting=*/100'000, [] { FAIL(); });
    int timesRoomCame = 0;
    writer.roomAgain = [&] { ++timesRoomCame; };
    std::string expected;
    for (int line = 0; line < 20000; ++line) {
        const auto text = "line " + std::to_string(line) + "\n";
        writer.write(text, line % 1000 == 0 ? ZNTTextSink::To::Errors : ZNTTextSink::To::Output);
        expected += text;
    }
    EXPECT_FALSE(writer.hasWrittenAll()) << "the pipe is smaller than that";
    EXPECT_TRUE(writer.isFull());
    std::string text(expected.size(), '\0');
    for (std::size_t done = 0; done < text.size();) {
        const auto part = ::read(ends[0], text.data() + done, text.size() - done);
        ASSERT_GT(part, 0);
        done += static_cast<std::size_t>(part);
    }
    EXPECT_TRUE(text == expected);
    writer.waitUntilWritten();
    loop.runPosted();
    EXPECT_EQ(timesRoomCame, 1);
    EXPECT_FALSE(writer.isFull());
    ::close(ends[0]);
    ::close(ends[1]);
}

} // namespace
