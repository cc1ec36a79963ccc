#include "ZNTDemoOptions.h"

#include <gtest/gtest.h>

#include <map>
#include <sstream>

namespace
{

using namespace znt::telnet;

const std::map<std::string, unsigned char> verbs{
    {"WILL", WILL}, {"WONT", WONT}, {"DO", DO}, {"DONT", DONT}, {"ODD", Refusal}};

/// Writes what is sent as "DO 24 ", and what was switched as "(DO 24) ".
struct OptionsRecorder final : ZNTDemoOptionsListener {
    std::string events;
    static std::string named(unsigned char verb, unsigned char option)
    {
        for (const auto& [name, value] : verbs)
            if (value == verb)
                return name + " " + std::to_string(option);
        return "?";
    }
    void sendCommand(unsigned char verb, unsigned char option) override
    {
        events += named(verb, option) + " ";
    }
    void onOptionSwitched(const ZNTDemoOption& option, unsigned char verb) override
    {
        events += "(" + named(verb, option.code) + ") ";
    }
};

} // namespace

TEST(DemoOptions, OnlyChangesAreAnsweredAndOddRefusalsLeaveTheOfferOpen)
{
    // "+1" and "-1": the game wants to echo, or to end it; "-86" ends the compression.
    for (const auto& [received, sent] :
         {std::pair("DO 86 DO 86", "(DO 86) "),
          {"DO 86 DONT 86 DONT 86 DO 86", "(DO 86) WONT 86 (DONT 86) WILL 86 (DO 86) "},
          {"DONT 86 DONT 86", ""},
          {"ODD 86 ODD 90 ODD 70 DO 86 ODD 86 DO 86", "(DO 86) (ODD 86) (DO 86) "},
          {"WONT 42 WONT 31 WONT 31", "WILL 25 WILL 42 "},
          {"WILL 24 WILL 31 WILL 24 DO 25", "(WILL 24) WILL 25 WILL 42 (WILL 31) (DO 25) "},
          {"WONT 24 WILL 42 WILL 42 DO 42", "WILL 25 WILL 42 DO 42 (WILL 42) (DO 42) "},
          {"DO 1 WILL 1 DO 3 DO 3", "WONT 1 DONT 1 WONT 3 WONT 3 "},
          {"WONT 24 +1 DO 1 -1 DONT 1 DO 1", "WILL 25 WILL 42 WILL 1 (DO 1) WONT 1 WONT 1 "},
          {"WONT 24 +1 -1 DO 1 DONT 1", "WILL 25 WILL 42 WILL 1 WONT 1 "},
          {"WONT 24 +1 DO 1 -1 +1 DONT 1 DO 1", "WILL 25 WILL 42 WILL 1 (DO 1) WONT 1 WILL 1 (DO 1) "},
          {"WONT 24 DO 86 -86 DONT 86 DO 86", "WILL 25 WILL 42 (DO 86) WONT 86 WILL 86 (DO 86) "},
          {"DO 86 -86 DO 86", "(DO 86) (DO 86) "}}) {
        SCOPED_TRACE(received);
        OptionsRecorder recorder;
        ZNTDemoOptions options(recorder);
        options.offer(ZNTDemoOfferTime::AtOnce);
        EXPECT_EQ(std::exchange(recorder.events, {}), "DO 31 DO 24 WILL 86 WILL 90 ");
        std::istringstream words(received);
        for (std::string word; words >> word;) {
            if (word[0] == '+' || word[0] == '-') {
                options.want(static_cast<unsigned char>(std::stoi(word.substr(1))), word[0] == '+');
                continue;
            }
            int option = 0;
            words >> option;
            options.receive(verbs.at(word), static_cast<unsigned char>(option));
        }
        EXPECT_EQ(recorder.events, sent);
    }
}

TEST(DemoOptions, APeerThatNeverStopsAskingIsRefusedALimitedNumberOfTimes)
{
    OptionsRecorder recorder;
    ZNTDemoOptions options(recorder);
    for (int i = 0; i < 1000; ++i)
        options.receive(DO, option::Gmcp);
    EXPECT_EQ(recorder.events.size(), ZNTDemoOptions::mostRefusals * std::string("WONT 201 ").size());
}
