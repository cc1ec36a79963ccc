#pragma once

#include "ZNTDatabaseHelper.h"
#include "ZNTMacroGroupDropDownController.h"
#include "ZNTMemoryStream.h"
#include "ZNTMudMacroTableViewController.h"
#include "ZNTPlainElements.h"
#include "ZNTRecordedSounds.h"
#include "ZNTRecordedSpeech.h"
#include "ZNTRecorder.h"
#include "ZNTServerConnectController.h"
#include "ZNTSpeechSynth.h"
#include "ZNTTestPlatform.h"
#include "ZNTText.h"

#include <filesystem>

inline std::string telnet(std::initializer_list<unsigned char> bytes) { return {bytes.begin(), bytes.end()}; }

inline const std::string goAhead = telnet({255, 249});

/// A whole session on a machine of its own, and a game in memory at the far end. Time is virtual.
class ZNTSessionFixture : public testing::Test
{
protected:
    ZNTSessionFixture()
    {
        screen.textToServer = &commandLine;
        screen.textFromServer = &view;
        screen.ipAddress = &host;
        screen.port = &port;
        screen.mudName = &mudName;
        screen.connectionButton = &button;
        screen.myProgressIndicator = &spinner;
        screen.macroTable = &macroTable;
        screen._voiceOver = &voiceOver;
        for (std::size_t at = 0; at < directions.size(); ++at)
            screen.directionButtons[at] = &directions[at];
    }

    /// The session, made when it is first asked for, so that a test can fill the store before.
    ZNTServerConnectController& session()
    {
        if (!controller) {
            controller = std::make_unique<ZNTServerConnectController>(
                machine.platform, screen,
                ZNTSessionServices{
                    .database = database,
                    .macros = macros,
                    .sounds = sounds,
                    .speechEngine = speech,
                    .screenReader = reader,
                    .streams = server.streams(),
                    .showZNTCommandRecorderView = [](auto&) {},
                    .sessionChanged = [this](ZNTSessionChange) { whenSessionChanges(); },
                    .textShown = {},
                    .silencePassed = [this] { ++silences; },
                    .notice =
                        [this](const ZNTSessionNotice& notice) { notices.emplace_back(notice.sentence); }});
            controller->awakeFromNib();
        }
        return *controller;
    }

    void connect()
    {
        host.setText(znt::textFromUtf8(server.host()));
        port.setText(znt::decimalText(server.port()));
        session().connectToServer();
        settle();
        ASSERT_TRUE(session().isConnected());
    }

    void receive(std::string bytes)
    {
        server.send(std::move(bytes));
        settle();
    }
    /// Turns the loop within one moment, until both ends have nothing more to say.
    void settle() { machine.loop.advance(0); }
    const std::string& received()
    {
        settle();
        return server.received();
    }
    void silence() { machine.loop.advance(0.5); }
    void type(std::u16string_view line)
    {
        commandLine.setText(line);
        session().controlTextViewDoCommandBySelector(ZNTCommandLineKey::InsertNewline);
    }
    void addTrigger(std::u16string check, std::u16string action, bool gag = false)
    {
        ZNTTrigger trigger;
        trigger.name = check;
        trigger.check = std::move(check);
        trigger.action = std::move(action);
        trigger.active = true;
        trigger.gag = gag;
        database.insertTrigger(trigger);
    }

    [[nodiscard]] std::u16string shown() const { return view.text(); }
    /// Without the zero bytes that an inflated block ends with.
    [[nodiscard]] std::u16string shownWithoutNuls() const
    {
        auto text = shown();
        std::erase(text, u'\0');
        return text;
    }
    /// What was spoken once `count` texts were: each is handed over on a thread of its own.
    std::vector<std::string> spoken(std::size_t count)
    {
        EXPECT_TRUE(machine.loop.runUntil([this, count] {
            machine.loop.advance(0.5);
            return speech.said.size() >= count;
        }));
        return speech.said;
    }
    /// The transcript of this run.
    [[nodiscard]] std::string logged() const
    {
        std::string text;
        for (const auto& file : std::filesystem::directory_iterator(machine.home.path("Library/Zantor/logs")))
            text += machine.home.read("Library/Zantor/logs/" + file.path().filename().string());
        return text;
    }

    ZNTTestPlatform machine;
    ZNTMemoryGame server{machine.loop};
    ZNTPlainTextField commandLine, host, port, mudName;
    ZNTPlainTextView view;
    ZNTPlainButton button;
    std::array<ZNTPlainButton, ZNTDirections.size()> directions;
    ZNTPlainSpinner spinner;
    ZNTPlainTableView macroTable;
    ZNTPlainTextArea voiceOver;
    ZNTPlainComboBox macroGroupBox;
    ZNTSessionScreen screen;
    ZNTRecordedSounds sounds;
    ZNTRecordedSpeech speech;
    ZNTRecordedReader reader;
    int silences = 0;
    std::vector<std::u16string> notices;
    std::function<void()> whenSessionChanges = [] {};
    ZNTDatabaseHelper database{machine.platform.places, machine.log};
    ZNTMacroGroupDropDownController groups{machine.platform, database, macroGroupBox};
    ZNTMudMacroTableViewController macros{machine.platform, database, groups, macroTable};
    std::unique_ptr<ZNTServerConnectController> controller;
};
