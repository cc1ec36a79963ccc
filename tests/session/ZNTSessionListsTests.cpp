#include "ZNTChannelHistory.h"
#include "ZNTSessionFixture.h"

using SessionLists = ZNTSessionFixture;
using testing::ElementsAre;
using testing::HasSubstr;

TEST_F(SessionLists, UrgentLinesComeBeforeWhatWaitsOnceAndQuietOnesAreShownAndLoggedAlone)
{
    connect();
    auto settings = session().settings();
    settings.speech = settings.channelHistory = true;
    settings.urgentLines = {"Bob hits you", "(["};
    settings.quietLines = {"sun"};
    session().setSettings(settings);
    ASSERT_EQ(notices.size(), 1U);
    EXPECT_TRUE(notices[0].starts_with(u"The pattern \"([\" cannot be used"));
    speech.staysSpeaking = true;
    receive("A square\r\n" + goAhead);
    EXPECT_THAT(spoken(1), ElementsAre("A square"));
    receive("A dog barks.\r\nThe sun rises.\r\nBob hits you!\r\nAnn says, run\r\n" + goAhead);
    EXPECT_TRUE(znt::contains(shown(), u"The sun rises."));
    EXPECT_THAT(logged(), HasSubstr("The sun rises.\r\nBob hits you!"));
    speech.speaks = false;
    EXPECT_THAT(spoken(2).back(), "Bob hits you!");
    speech.speaks = false;
    EXPECT_THAT(spoken(3).back(), "A dog barks. Ann says, run");
    EXPECT_TRUE(session().channelHistory().nextChannel().ends_with(u"Ann says, run"));
    settings.quietLines = {};
    session().setSettings(settings);
    EXPECT_EQ(notices.size(), 1U) << "the player knows of the pattern already";
}
