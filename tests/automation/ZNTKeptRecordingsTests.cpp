#include "ZNTKeptRecordings.h"
#include "ZNTKeptRecordingsView.h"
#include "ZNTPlainElements.h"
#include "ZNTRecordedLines.h"
#include "ZNTText.h"

#include <filesystem>

namespace
{

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using Times = ZNTReplay::Times;

constexpr const char* file = "Library/Zantor/recordings.plist";
const ZNTKeptRecording hunt{u"hunt", 0.5, {u"kill rat", u"", u"!2n"}};

struct ZNTReplayTest : testing::Test {
    VirtualRunLoop loop;
    ZNTRecordedLines sent;
    ZNTReplay replay{loop, sent};
};

TEST_F(ZNTReplayTest, CommandsGoOutAtTheirMomentsOnceOrAgainAndAgain)
{
    int changes = 0;
    replay.runningChanged = [&] { ++changes; };
    replay.start(hunt, Times::Once);
    EXPECT_THAT(sent.lines, ElementsAre(u"kill rat"));
    loop.advance(0.75);
    EXPECT_EQ(replay.name(), u"hunt");
    loop.advance(60);
    EXPECT_THAT(sent.lines, ElementsAre(u"kill rat", u"", u"!2n"));
    EXPECT_FALSE(replay.isRunning() || sent.isAnyMeantLiterally);
    EXPECT_EQ(changes, 2);

    replay.start({u"rest", 10, {u"sit"}}, Times::AgainAndAgain);
    loop.advance(30);
    EXPECT_EQ(sent.lines.size(), 3u + 4u);
    replay.start(hunt, Times::AgainAndAgain); // in its place
    loop.advance(1.5);
    EXPECT_EQ(sent.lines.back(), u"kill rat");
    EXPECT_EQ(sent.lines.size(), 7u + 4u);
    replay.stop();
    EXPECT_EQ(replay.name(), u"");
    EXPECT_EQ(loop.pendingTimers(), 0u);
}

TEST_F(ZNTReplayTest, WhatHasNoRoomWaitsAndACommandMayEndOrReplaceItsRecording)
{
    sent.isRoom = false;
    replay.start(hunt, Times::Once);
    loop.advance(5);
    EXPECT_THAT(sent.lines, IsEmpty());
    sent.isRoom = true;
    sent.onLine = [this](auto line) {
        if (line == u"!2n")
            replay.start({u"rest", 1, {u"stop me"}}, Times::AgainAndAgain);
        if (line == u"stop me")
            replay.stop();
    };
    loop.advance(5);
    EXPECT_THAT(sent.lines, ElementsAre(u"kill rat", u"", u"!2n", u"stop me"));
    EXPECT_FALSE(replay.isRunning());
}

class ZNTKeptRecordingsTest : public testing::Test
{
protected:
    /// As another start of the program reads them.
    std::vector<ZNTKeptRecording> stored()
    {
        return ZNTKeptRecordings(machine.platform.places, machine.log).all();
    }
    static std::string errorOf(const ZNTResult<void>& result)
    {
        return result ? "" : result.error().description;
    }

    ZNTTestPlatform machine;
    ZNTKeptRecordings kept{machine.platform.places, machine.log};
};

TEST_F(ZNTKeptRecordingsTest, WhatIsKeptIsReadAgainAsItWas)
{
    const std::vector<ZNTKeptRecording> recordings{
        hunt,
        {u"小路 <&>", 0.1, {u"  blanks  ", u" ", u"\ttab", u"]]> & \"quoted\" <tag>", u"问候 \U0001F600"}},
        {u"long", 3600, {std::u16string(ZNTKeptRecording::longestCommand, u'x')}}};
    EXPECT_THAT(stored(), IsEmpty());
    EXPECT_FALSE(machine.home.has("Library")) << "nothing was kept yet";
    for (const auto& recording : recordings)
        EXPECT_EQ(errorOf(kept.keep(recording)), "");
    EXPECT_EQ(stored(), recordings);
    EXPECT_EQ(std::filesystem::status(machine.home.path(file)).permissions(), std::filesystem::perms(0600));
    EXPECT_THAT(machine.log.lines, IsEmpty());
}

TEST_F(ZNTKeptRecordingsTest, WhatIsOutsideTheLimitsIsRefusedInASentence)
{
    const std::pair<ZNTKeptRecording, const char*> cases[] = {
        {{u"", 1, {u"n"}}, "needs a name"},
        {{u" hunt", 1, {u"n"}}, "without blanks at its ends"},
        {{std::u16string(101, u'x'), 1, {u"n"}}, "at most 100 characters"},
        {{u"a\nb", 1, {u"n"}}, "one line"},
        {{u"a", 0.09, {u"n"}}, "from 0.1 to 3600"},
        {{u"a", 3601, {u"n"}}, "from 0.1 to 3600"},
        {{u"a", std::numeric_limits<double>::quiet_NaN(), {u"n"}}, "from 0.1 to 3600"},
        {{u"a", 1, {}}, "at least one command"},
        {{u"a", 1, {5'001, u"n"}}, "at most 5000 commands, not 5001"},
        {{u"a", 1, {u"n", std::u16string(1'001, u'x')}}, "Command 2 is longer than 1000"},
        {{u"a", 1, {u"\x1B[1m"}}, "Command 1 holds a control character"},
        {{u"a", 1, {std::u16string(1, u'\xD800')}}, "Command 1 holds a control character"},
        {hunt, "There is a recording hunt already"}};
    EXPECT_TRUE(kept.keep(hunt) && kept.keep({u"rest", 1, {u"sit"}}));
    const auto before = machine.home.read(file);
    for (const auto& [recording, sentence] : cases) {
        EXPECT_THAT(errorOf(kept.keep(recording)), HasSubstr(sentence));
        EXPECT_THAT(errorOf(kept.change(u"rest", recording)), HasSubstr(sentence));
    }
    EXPECT_EQ(errorOf(kept.remove(u"gone")), "There is no recording gone.");
    EXPECT_EQ(machine.home.read(file), before);
    for (const auto* seconds : {u"x", u"0", u"-1", u"1e2", u"inf", u"2 s", u"1.2.3"})
        EXPECT_FALSE(znt::secondsTyped(seconds)) << znt::utf8FromText(seconds);
    EXPECT_EQ(kept.keep(u" two words ", u" 0,25", {u"n"}).value(),
              u"Kept two words: 1 command, 0.25 seconds between them.");
}

TEST_F(ZNTKeptRecordingsTest, WhatIsUnknownStaysAndAnotherWindowsChangesCount)
{
    machine.home.write(file, R"(<plist version="1.0"><dict><key>later</key><integer>7</integer>
        <key>recordings</key><array><string>odd</string><dict><key>name</key><string>x</string></dict>
        <dict><key>name</key><string>hunt</string><key>seconds</key><string>2</string><key>colour</key><true/>
        <key>commands</key><array><string>n</string></array></dict></array></dict></plist>)");
    ZNTKeptRecordings other(machine.platform.places, machine.log);
    EXPECT_EQ(other.all(), (std::vector<ZNTKeptRecording>{{u"hunt", 2, {u"n"}}}));
    EXPECT_TRUE(kept.keep({u"rest", 1, {u"sit"}}));
    EXPECT_TRUE(other.change(u"hunt", {u"chase", 3, {u"s"}}));
    EXPECT_TRUE(other.remove(u"rest"));
    EXPECT_EQ(kept.all(), (std::vector<ZNTKeptRecording>{{u"chase", 3, {u"s"}}}));
    EXPECT_EQ(errorOf(kept.change(u"rest", hunt)), "There is no recording rest.");
    for (const auto* part : {"later", "odd", "<string>x</string>", "colour"})
        EXPECT_THAT(machine.home.read(file), HasSubstr(part));
}

TEST_F(ZNTKeptRecordingsTest, ADamagedFileIsPutAsideAndAFailedWriteIsReported)
{
    const std::string damaged[] = {"", "<plist><dict><key>recordings", "<plist><array/></plist>",
                                   "<plist><dict><key>recordings</key><true/></dict></plist>"};
    for (std::size_t at = 0; at < std::size(damaged); ++at) {
        SCOPED_TRACE(damaged[at]);
        machine.home.write(file, damaged[at]);
        EXPECT_THAT(stored(), IsEmpty());
        EXPECT_THAT(machine.log.lines.back(), HasSubstr("put aside as"));
        EXPECT_EQ(machine.home.read(file + (".broken-" + std::to_string(at + 1))), damaged[at]);
        EXPECT_TRUE(kept.keep(hunt));
    }
    std::filesystem::remove_all(machine.home.path("Library"));
    machine.home.write("Library", "no folder");
    EXPECT_THAT(errorOf(kept.keep(hunt)), HasSubstr("could not be written"));
}

TEST_F(ZNTKeptRecordingsTest, TheWindowStoresEachEditAndSaysWhatItCannotDo)
{
    ZNTPlainTableView recordings, commands;
    std::u16string said;
    bool isConnected = false;
    ZNTKeptRecordingsView window({recordings, commands}, kept, machine.alert,
                                 {.run = [&](const auto&, auto) { return isConnected; },
                                  .stop = [] {},
                                  .say = [&](auto sentence) { said = sentence; }});
    EXPECT_TRUE(kept.keep(hunt));
    window.reload();
    const std::pair<const char16_t*, std::function<void()>> refused[] = {
        {u"No recording is selected.", [&] { window.run(Times::Once); }},
        {u"No recording is selected.", [&] { window.addCommand(); }},
        {u"Not connected, so nothing was run.", [&] { recordings.selected = 0, window.run(Times::Once); }},
        {u"No command is selected.", [&] { window.deleteCommand(); }},
        {u"The seconds between commands are a number from 0.1 to 3600.",
         [&] { window.setRecordingValue(u"0", ZNTKeptRecordingsView::secondsColumn, 0); }},
        {u"Command 1 holds a control character, which cannot be kept.",
         [&] { window.setCommand(u"\x1B", 0); }}};
    for (const auto& [sentence, act] : refused) {
        act();
        EXPECT_EQ(said, sentence);
        EXPECT_EQ(stored(), std::vector{hunt});
    }
    window.setRecordingValue(u" chase ", ZNTKeptRecordingsView::nameColumn, 0);
    window.setRecordingValue(u"2", ZNTKeptRecordingsView::secondsColumn, 0);
    commands.selected = 1;
    window.deleteCommand();
    EXPECT_EQ(commands.timesEditingAborted, 2) << "the time before no command was selected";
    window.addCommand();
    window.setCommand(u"east", 2);
    EXPECT_EQ(stored(), (std::vector<ZNTKeptRecording>{{u"chase", 2, {u"kill rat", u"!2n", u"east"}}}));
    EXPECT_EQ(window.command(2), u"east");
    for (const bool answer : {false, true}) {
        machine.alert.answer = answer;
        window.removeRecording();
        EXPECT_EQ(stored().empty(), answer);
    }
    EXPECT_EQ(window.numberOfRecordings() + window.numberOfCommands(), 0);
    EXPECT_EQ(std::pair(recordings.timesReloaded, commands.timesReloaded), std::pair(8, 8));
}

} // namespace
