#include "ZNTPlainInput.h"

#include "VirtualRunLoop.h"
#include "ZNTTemporaryFolder.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <unistd.h>

namespace
{

using Lines = std::vector<std::string>;

struct Reading {
    /// Of a file with that content, or else of a pipe.
    explicit Reading(const std::string& content = {})
    {
        folder.write("script", content);
        if (!content.empty())
            ends[0] = ::open(folder.path("script").c_str(), O_RDONLY);
        else
            EXPECT_EQ(::pipe2(ends, O_NONBLOCK), 0);
        input.emplace(loop, ends[0]);
        EXPECT_TRUE(input->start({.line = [this](std::string line) { lines.push_back(std::move(line)); },
                                  .end = [this] { hasEnded = true; }}));
    }
    ~Reading() { ::close(ends[0]); }
    void write(std::string_view bytes)
    {
        EXPECT_EQ(::write(ends[1], bytes.data(), bytes.size()), std::ssize(bytes));
        loop.turn(3);
    }
    void finish()
    {
        ::close(ends[1]);
        EXPECT_TRUE(loop.runUntil([this] { return hasEnded; }));
    }

    VirtualRunLoop loop;
    ZNTTemporaryFolder folder;
    int ends[2] = {-1, -1};
    std::optional<ZNTPlainInput> input;
    Lines lines;
    bool hasEnded = false;
};

TEST(ZNTPlainInput, APipesLinesComeWholeHoweverTheyAreCut)
{
    Reading pipe;
    pipe.write("lo");
    pipe.write("ok\r");
    pipe.write("\n\nsay a\rb\nlast\r");
    EXPECT_EQ(pipe.lines, (Lines{"look", "", "say a\rb"}));
    pipe.finish();
    EXPECT_EQ(pipe.lines.back(), "last") << "the last line needs no end";
}

TEST(ZNTPlainInput, AVeryLongLineComesInPiecesWithoutLoss)
{
    // Whatever the offset at which the pieces are cut, characters of three bytes stay whole.
    for (std::string line : {"", "a", "ab"}) {
        SCOPED_TRACE(line);
        while (line.size() < ZNTPlainInput::longestLine * 5 / 2)
            line += "\xE4\xBD\xA0";
        Reading file(line + "\r\nnext\n");
        file.finish();
        ASSERT_EQ(file.lines.size(), 4u);
        EXPECT_TRUE(file.lines[0] + file.lines[1] + file.lines[2] == line);
        EXPECT_EQ(file.lines[3], "next");
        for (const auto& piece : file.lines)
            EXPECT_NE(static_cast<unsigned char>(piece.front()) & 0xC0, 0x80) << "cut inside a character";
    }
}

TEST(ZNTPlainInput, WhilePausedNothingIsReadAndNothingIsLost)
{
    Reading pipe, file("look\nnorth\n");
    for (Reading* reading : {&pipe, &file}) {
        reading->input->setPaused(true);
        if (reading == &pipe)
            pipe.write("look\nnorth\n");
        reading->loop.advance(1);
        EXPECT_TRUE(reading->lines.empty());
        reading->input->setPaused(false);
        reading->finish();
        EXPECT_EQ(reading->lines, (Lines{"look", "north"}));
    }
}

} // namespace
