#include "ZNTPlainInput.h"

#include "VirtualRunLoop.h"
#include "ZNTTemporaryFolder.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <unistd.h>

namespace
{

using Lines = std::vector<std::string>;

class ZNTPlainInputTest : public testing::Test
{
protected:
    ~ZNTPlainInputTest() override { closeAll(); }
    void closeAll()
    {
        for (int& end : ends)
            if (end >= 0)
                ::close(std::exchange(end, -1));
    }
    void openPipe() { ASSERT_EQ(::pipe2(ends, O_NONBLOCK), 0); }
    void openScript(const std::string& content)
    {
        folder.write("script", content);
        closeAll();
        lines.clear();
        timesEnded = 0;
        ASSERT_GE(ends[0] = ::open(folder.path("script").c_str(), O_RDONLY), 0);
    }
    void start()
    {
        input.emplace(loop, ends[0]);
        EXPECT_TRUE(input->start({.line = [this](std::string line) { lines.push_back(std::move(line)); },
                                  .end = [this] { ++timesEnded; }}));
        EXPECT_TRUE(lines.empty() && timesEnded == 0) << "nothing comes from inside start";
    }
    void write(std::string_view bytes)
    {
        ASSERT_EQ(::write(ends[1], bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
        loop.turn(3);
    }
    void finish()
    {
        if (ends[1] >= 0)
            ::close(std::exchange(ends[1], -1));
        for (int turn = 0; turn < 1000 && timesEnded == 0; ++turn)
            loop.advance(0.01);
        loop.advance(1);
        EXPECT_EQ(timesEnded, 1);
    }

    VirtualRunLoop loop;
    ZNTTemporaryFolder folder;
    int ends[2] = {-1, -1};
    std::optional<ZNTPlainInput> input;
    Lines lines;
    int timesEnded = 0;
};

TEST_F(ZNTPlainInputTest, APipesLinesComeWholeHoweverTheyAreCut)
{
    openPipe();
    start();
    write("lo");
    write("ok\r");
    write("\n\nsay a\rb\nlast\r");
    EXPECT_EQ(lines, (Lines{"look", "", "say a\rb"}));
    finish();
    EXPECT_EQ(lines.back(), "last") << "the last line needs no end";
}

TEST_F(ZNTPlainInputTest, AVeryLongLineComesInPiecesWithoutLoss)
{
    // Whatever the offset at which the pieces are cut, characters of three bytes stay whole.
    for (const std::string_view start_ : {"", "a", "ab"}) {
        SCOPED_TRACE(start_);
        std::string line(start_);
        while (line.size() < ZNTPlainInput::longestLine * 5 / 2)
            line += "\xE4\xBD\xA0";
        openScript(line + "\r\nnext\n");
        start();
        finish();
        ASSERT_EQ(lines.size(), 4u);
        EXPECT_TRUE(lines[0] + lines[1] + lines[2] == line);
        EXPECT_EQ(lines[3], "next");
        for (const auto& piece : lines)
            EXPECT_NE(static_cast<unsigned char>(piece.front()) & 0xC0, 0x80) << "cut inside a character";
    }
}

TEST_F(ZNTPlainInputTest, WhilePausedNothingIsReadAndNothingIsLost)
{
    openPipe();
    start();
    input->setPaused(true);
    write("one\n");
    EXPECT_TRUE(lines.empty());
    input->setPaused(false);
    write("two\n");
    EXPECT_EQ(lines, (Lines{"one", "two"}));
    finish();

    openScript("look\nnorth\n");
    start();
    input->setPaused(true);
    loop.advance(1);
    EXPECT_TRUE(lines.empty());
    input->setPaused(false);
    finish();
    EXPECT_EQ(lines, (Lines{"look", "north"}));
}

} // namespace
