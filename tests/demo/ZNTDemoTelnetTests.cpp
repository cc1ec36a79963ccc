#include "ZNTDemoTelnet.h"

#include <gtest/gtest.h>

#include <random>

namespace
{

struct Recorder final : ZNTDemoTelnetListener {
    std::vector<std::string> heard;
    void onLine(std::string_view bytes) override { heard.push_back("line " + std::string(bytes)); }
    void onLineTooLong() override {}
    void onOption(unsigned char verb, unsigned char option) override
    {
        heard.push_back("option " + std::to_string(verb) + " " + std::to_string(option));
    }
    void onSubnegotiation(unsigned char option, std::string_view content) override
    {
        heard.push_back("content " + std::to_string(option) + " " + std::string(content));
    }
};

std::vector<std::string> heardFrom(const std::vector<std::string_view>& slices)
{
    Recorder recorder;
    ZNTDemoTelnetInput input(recorder);
    for (auto slice : slices)
        while (!slice.empty())
            slice.remove_prefix(input.receive(slice));
    return recorder.heard;
}

} // namespace

TEST(DemoTelnet, LinesAndOptionsComeOutTheSameHoweverTheyAreSliced)
{
    using namespace std::string_view_literals;
    // All four line ends, an answer of each kind, the odd refusal with a letter as its option, a
    // subnegotiation with a line end and an escaped 255 in it, commands of two bytes, and a typed 255.
    const auto sample =
        "look\r\nno\xFF\xFD\x56rth\n\xFF\x19Zsay hi\r\0\xFF\xFA\x18\nxterm\xFF\xFF\r\xFF\xF0up\r\r\n"
        "\xFF\xFE\x56\xFF\xF1\xFF\xFF\xFF\xFB\x1F\xFF\xFC\x01q\xFF\xF9\n"sv;
    const std::vector<std::string> expected{"line look",     "option 253 86", "line north",
                                            "option 25 90",  "line say hi",   "content 24 \nxterm\xFF\r",
                                            "line up",       "line ",         "option 254 86",
                                            "option 251 31", "option 252 1",  "line \xFFq"};
    for (std::size_t first = 0; first <= sample.size(); ++first)
        for (std::size_t second = first; second <= sample.size(); ++second)
            ASSERT_EQ(heardFrom({sample.substr(0, first), sample.substr(first, second - first),
                                 sample.substr(second)}),
                      expected)
                << "cut at " << first << " and " << second;
}

TEST(DemoTelnet, ALineOrSubnegotiationOfAnyLengthCostsNoMoreThanTheLongest)
{
    const std::string longest(ZNTDemoTelnetInput::longestLine, 'x');
    EXPECT_EQ(heardFrom({longest, "\n"}), std::vector<std::string>{"line " + longest});
    EXPECT_EQ(heardFrom({longest, "y", longest, longest, "\nlook\n"}), std::vector<std::string>{"line look"});
    const std::string content(ZNTDemoTelnetInput::longestSubnegotiation, 'x');
    EXPECT_EQ(heardFrom({"\xFF\xFA*", content, "\xFF\xF0\xFF\xFA*", content, content, "y\xFF\xF0look\n"}),
              (std::vector<std::string>{"content 42 " + content, "line look"}));
}
