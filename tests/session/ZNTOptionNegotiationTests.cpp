#include "ZNTOptionNegotiation.h"
#include "ZNTTelnetMessages.h"

#include <algorithm>
#include <random>

namespace
{

using namespace znt::telnet;

std::string repliesTo(ZNTOptionNegotiation& negotiation, int verb, int option)
{
    std::string replies;
    negotiation.receive(static_cast<unsigned char>(verb), static_cast<unsigned char>(option), replies);
    return replies;
}

} // namespace

TEST(OptionNegotiation, AnswersEachChangeOnceAndEachRefusedOfferAgainUntilItsLimit)
{
    struct Offer {
        int verb, option;
        bool isAccepted;
        std::string yes, no; ///< the answers
    };
    std::vector<Offer> ascending;
    for (int option = 0; option < 256; ++option) {
        const auto code = static_cast<unsigned char>(option);
        const bool isOfServer = option == 1 || option == 3 || option == 25 || option == 42;
        const bool isOfClient = option == 24 || option == 31 || option == 42;
        ascending.push_back({WILL, option, isOfServer, offer(DO, code), offer(DONT, code)});
        ascending.push_back({DO, option, isOfClient, offer(WILL, code), offer(WONT, code)});
    }
    auto descending = ascending, bySide = ascending, shuffled = ascending;
    std::ranges::reverse(descending);
    std::ranges::stable_sort(bySide, {}, &Offer::verb);
    std::ranges::shuffle(shuffled, std::mt19937(7));
    for (const auto& order : {ascending, descending, bySide, shuffled}) {
        ZNTOptionNegotiation negotiation;
        for (int round = 1; round <= 25; ++round)
            for (const auto& [verb, option, isAccepted, yes, no] : order) {
                const bool isSilent = round > (isAccepted ? 1 : 20);
                ASSERT_EQ(repliesTo(negotiation, verb, option), isSilent ? "" : isAccepted ? yes : no);
            }
        for (const bool isAgain : {false, true})
            for (const auto& [verb, option, isAccepted, yes, no] : order) // now WONT and DONT
                ASSERT_EQ(repliesTo(negotiation, verb + 1, option), isAccepted && !isAgain ? no : "");
    }
}

TEST(OptionNegotiation, EndsTheLoopsOfServersThatAnswerEveryAnswer)
{
    const std::string will = "\xFB", wont = "\xFC", doIt = "\xFD", dont = "\xFE";
    // After WILL, WONT, DO and DONT of ours the server confirms it, insists, takes it back, or does both.
    const std::string servers[][4] = {{doIt, dont, will, wont},
                                      {doIt, doIt, will, will},
                                      {dont, doIt, wont, will},
                                      {dont + doIt, dont + doIt, wont + will, wont + will}};
    for (const auto& afterOurs : servers)
        for (const int option : {option::Echo, option::WindowSize, option::Gmcp}) {
            ZNTOptionNegotiation negotiation;
            auto toUs = will + doIt;
            for (std::size_t read = 0; read < toUs.size(); ++read) {
                ASSERT_LT(read, 10'000u);
                const auto replies = repliesTo(negotiation, toUs[read], option);
                for (std::size_t at = 1; at < replies.size(); at += 3)
                    toUs += afterOurs[static_cast<unsigned char>(replies[at]) - WILL];
            }
        }
}
