#include "ZNTOptionNegotiation.h"
#include "ZNTTelnetMessages.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>

namespace
{

using namespace znt::telnet;
using Side = ZNTOptionSide;

struct Offer {
    unsigned char verb, option;
};

const std::string acceptedFromServer{1, 3, 25, 42, 86, 90}, acceptedFromClient{24, 31, 42};

bool isOneToAccept(Offer offer)
{
    const auto& accepted = offer.verb == WILL ? acceptedFromServer : acceptedFromClient;
    return accepted.find(static_cast<char>(offer.option)) != std::string::npos;
}

/// The answer that agrees with what was received, or does not.
std::string answerTo(Offer offer, bool agrees)
{
    if (offer.verb == WILL || offer.verb == WONT)
        return znt::telnet::offer(agrees ? DO : DONT, offer.option);
    return znt::telnet::offer(agrees ? WILL : WONT, offer.option);
}

ZNTOptionNegotiation negotiationThatAcceptsAll()
{
    ZNTOptionNegotiation negotiation;
    negotiation.setAccepted(ZNTOptionSwitch::Compression, true);
    negotiation.setAccepted(ZNTOptionSwitch::Sounds, true);
    return negotiation;
}

std::string repliesTo(ZNTOptionNegotiation& negotiation, Offer offer)
{
    std::string replies;
    negotiation.receive(offer.verb, offer.option, replies);
    return replies;
}

} // namespace

TEST(OptionNegotiation, AnswersEachChangeOnceAndEachRefusedOfferAgainUntilItsLimit)
{
    std::vector<Offer> ascending;
    for (const auto verb : {WILL, DO})
        for (int option = 0; option < 256; ++option)
            ascending.push_back({verb, static_cast<unsigned char>(option)});
    auto descending = ascending, byOption = ascending, shuffled = ascending;
    std::ranges::reverse(descending);
    std::ranges::stable_sort(byOption, {}, &Offer::option);
    std::ranges::shuffle(shuffled, std::mt19937(7));
    for (const auto& order : {ascending, descending, byOption, shuffled}) {
        auto negotiation = negotiationThatAcceptsAll();
        for (int round = 1; round <= 25; ++round)
            for (const auto offer : order) {
                const bool isSilent = isOneToAccept(offer) ? round > 1 : round > 20;
                ASSERT_EQ(repliesTo(negotiation, offer),
                          isSilent ? "" : answerTo(offer, isOneToAccept(offer)))
                    << "round " << round << ", option " << int{offer.option};
            }
        for (const bool isAgain : {false, true})
            for (auto offer : order) {
                const bool isChange = isOneToAccept(offer) && !isAgain;
                ++offer.verb; // WILL to WONT, DO to DONT
                ASSERT_EQ(repliesTo(negotiation, offer), isChange ? answerTo(offer, false) : "");
            }
    }
}

TEST(OptionNegotiation, EndsTheLoopsOfServersThatAnswerEveryAnswer)
{
    struct Row {
        const char* server;
        unsigned char firstOption;
        /// What the server says after DO, DONT, WILL and WONT of ours.
        std::string afterDo, afterDont, afterWill, afterWont;
    };
    const char will = static_cast<char>(WILL), wont = static_cast<char>(WONT), doIt = static_cast<char>(DO),
               dont = static_cast<char>(DONT);
    const Row rows[] = {
        {"confirms what is agreed", option::SuppressGoAhead, {will}, {wont}, {doIt}, {dont}},
        {"offers again after a refusal", option::Gmcp, {will}, {will}, {doIt}, {doIt}},
        {"takes back what is accepted", option::Echo, {wont}, {will}, {dont}, {doIt}},
        {"takes back and offers", option::WindowSize, {wont, will}, {wont, will}, {dont, doIt}, {dont, doIt}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.server);
        auto negotiation = negotiationThatAcceptsAll();
        std::string toUs{will, doIt};
        std::size_t sent = 0;
        for (; !toUs.empty() && sent < 100'000; ++sent) {
            const auto verb = static_cast<unsigned char>(toUs.front());
            toUs.erase(0, 1);
            const auto replies = repliesTo(negotiation, {verb, row.firstOption});
            for (std::size_t at = 1; at < replies.size(); at += 3) {
                const auto said = static_cast<unsigned char>(replies[at]);
                toUs += said == DO     ? row.afterDo
                        : said == DONT ? row.afterDont
                        : said == WILL ? row.afterWill
                                       : row.afterWont;
            }
        }
        EXPECT_LT(sent, 10'000u);
    }
}

TEST(OptionNegotiation, FollowsASwitchAlsoWithServersThatActWithoutAnAnswer)
{
    // The player switches on (+) and off (-), the server sends WILL (W) or WONT (w), or begins (b) or ends
    // (e) what is asked for without a word. Behind each the DO (D) or DONT (d) that it leads to.
    for (const std::string script : {
             "Wd+DW",        // refused while switched off, then asked for
             "+D-dWw",       // taken back before the answers come
             "+Dw+DW-dw+D",  // refused by the server, and asked for again
             "+Db-de+Db-d",  // a server that never answers
             "+DW-d+wD",     // wished for again before the answer to the DONT
             "+DW-d+eDwb-d", // likewise; the end of the stream is the answer, a late WONT changes nothing
             "+DW-d+-w+D",   // the last wish counts
             "+DWwdWD",      // a server that takes it back and offers it again
         }) {
        ZNTOptionNegotiation negotiation;
        std::string played;
        for (const char step : script) {
            std::string replies;
            if (step == '+' || step == '-') {
                negotiation.setAccepted(ZNTOptionSwitch::Compression, step == '+');
                negotiation.request(Side::Server, option::CompressionV2, step == '+', replies);
            } else if (step == 'W' || step == 'w') {
                negotiation.receive(step == 'W' ? WILL : WONT, option::CompressionV2, replies);
            } else if (step == 'b' || step == 'e') {
                negotiation.noteDone(Side::Server, option::CompressionV2, step == 'b', replies);
            } else {
                continue;
            }
            played += step;
            if (!replies.empty())
                played += replies == offer(DO, option::CompressionV2) ? 'D' : 'd';
        }
        EXPECT_EQ(played, script);
    }
}
