#pragma once

#include "ZNTChunkInHand.h"
#include "ZNTConnectionEnd.h"
#include "ZNTHeldBackText.h"
#include "ZNTLineSender.h"
#include "ZNTPlatform.h"
#include "ZNTReplay.h"
#include "ZNTSessionChange.h"
#include "ZNTSessionNotice.h"
#include "ZNTSessionScreen.h"
#include "ZNTSettings.h"
#include "ZNTStream.h"
#include "ZNTStringEncoding.h"
#include "ZNTViewSizeReport.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

class ZNTChannelHistory;
class ZNTCommandInterpreter;
class ZNTCommandRecorderDataSource;
class ZNTDatabaseHelper;
class ZNTDecodeFirstReceiver;
class ZNTFullColourParser;
class ZNTLogger;
class ZNTMSPProcessor;
class ZNTMacroSource;
class ZNTOutgoing;
class ZNTParserUtility;
class ZNTReceiver;
class ZNTRecorder;
class ZNTScreenReader;
class ZNTSessionSpeech;
class ZNTSoundFactory;
class ZNTSpeechEngine;
class ZNTSpeechReview;
class ZNTSpeechSynth;
class ZNTSpeedWalking;
class ZNTStandardReceiver;
class ZNTTriggerList;
struct ZNTReceived;

/// What a session uses that its front end makes. All of it outlives the session.
struct ZNTSessionServices {
    ZNTDatabaseHelper& database;
    ZNTMacroSource& macros;
    ZNTSoundFactory& sounds;
    ZNTSpeechEngine& speechEngine;
    ZNTScreenReader& screenReader;
    /// Makes the connection of each connect.
    ZNTStreamFactory streams;
    /// Opens the recorder's sheet on the given list; the front end makes the sheet on first use.
    std::function<void(ZNTCommandRecorderDataSource& commands)> showZNTCommandRecorderView;
    /// Called on the run loop's thread after a change of what the queries below answer. Optional.
    std::function<void(ZNTSessionChange what)> sessionChanged;
    /// Called with received text after it was put into the output view. Optional.
    std::function<void(std::u16string_view text)> textShown = {};
    /// Called, while connected, after each half second without a byte, if reading is not held. Optional.
    std::function<void()> silencePassed = {};
    std::function<void(const ZNTSessionNotice& notice)> notice = {}; ///< optional
    /// What the player has set; later changes come through `setSettings`.
    ZNTSettings settings = {};
};

/// Keys of the command line that mean something to the session.
enum class ZNTCommandLineKey { InsertNewline, MoveUp, MoveDown, Other };

enum class ZNTSessionState { Idle, Connecting, Connected };

/// The spine of the client, one for each main window: it owns the connection to one game and joins what works
/// on it. Belongs to the run loop's thread.
///
/// A block on its way in (`onSocketDidReadData` to `showChunk`): the receiver turns it into text and replies;
/// the text is held back until IAC GA, IAC WONT or half a second of silence; sound tags, colours, triggers;
/// then speech, output view and log. Every step is linear in its input.
///
/// Every line on its way out goes through `sendMessageToServer`, whether it comes from the player, a macro, a
/// trigger, a speed walk or a direction button.
class ZNTServerConnectController final : public ZNTStreamDelegate,
                                         public ZNTLineSender,
                                         private ZNTChunkInHand::Owner
{
public:
    ZNTServerConnectController(const ZNTPlatform& platform, const ZNTSessionScreen& screen,
                               ZNTSessionServices services);
    ~ZNTServerConnectController() override;

    /// To be called once, when the screen elements are ready: disables what needs a connection, fills host,
    /// port and name from the address book's default entry, and turns speech on if the screen reader runs.
    void awakeFromNib();

    // Connecting
    /// The Connect/Disconnect button: connects when idle with a host and a positive port, else disconnects.
    void connectToServer();
    /// Gives an attempt to connect up, without an alert; the session is idle again when this returns. Does
    /// nothing unless it is connecting.
    void stopConnecting();

    // Sending
    /// The one way out for a line (no line end). With `ignoreSpecials` false a line that starts with one of
    /// "~", "!", "#" and "@" is carried out instead. Echoes the line, also when there is no connection.
    void sendMessageToServer(std::u16string_view line, bool ignoreSpecials) override;
    /// Return on the command line.
    void sendTextToServer();
    /// A line as if typed, past the command line.
    void sendTextToServerNoWidget(std::u16string_view line);
    void resendLastCommand();
    /// Hands the lines and replies that are queued to the network before this returns, as far as it takes
    /// them; else they leave on the next turns of the run loop.
    void writeQueuedLines();
    /// A key of the command line. True when it is dealt with and the field must not act on it.
    bool controlTextViewDoCommandBySelector(ZNTCommandLineKey key);
    /// Double click on the macro table: sends the selected macro's text as it stands.
    void invokeMacro();

    /// A direction button or key: sends its word.
    void sendToServer(ZNTDirection direction);
    // Kept as part of the interface: one operation for each of the ten.
    void sendNorthToServer();
    void sendSouthToServer();
    void sendEastToServer();
    void sendWestToServer();
    void sendNorthEastToServer();
    void sendNorthWestToServer();
    void sendSouthEastToServer();
    void sendSouthWestToServer();
    void sendUpToServer();
    void sendDownToServer();

    /// Ends every speed walk; a typed "!stop" ends the one that was started last.
    void stopAllWalks();
    /// Sends the commands of a kept recording as the steps of walks are sent: they are not recorded. It ends
    /// with the connection. False, and nothing happens, if there is none.
    bool runRecording(ZNTKeptRecording recording, ZNTReplay::Times times);
    /// The name of the recording that runs; empty while none does.
    [[nodiscard]] std::u16string_view runningRecording() const { return replay->name(); }
    /// Ends what goes on by itself: every walk, and the recording that runs.
    void stopAllThatRuns();

    // Local output
    /// Shows `text`, speaks it while speech is on, and logs its plain text. Its SGR sequences colour it; the
    /// colour that is passed does nothing. The view does not scroll.
    void insertText(std::u16string_view text, ZNTColour unusedColour);
    /// Shows a line in bold cyan, as typed lines are. It stands in the log twice, the second time raw.
    void insertTextInWindow(std::u16string_view text);
    /// The same for a message of the client's own, which may interrupt speech.
    void insertTextIntoTheWindow(std::u16string_view text);
    void clearScreen();

    // Receiving
    /// The receive pipeline for one decoded block; a missing text is one that no decoding could make. While
    /// triggers still answer the chunk before, on several turns of the loop, it waits for the last of them.
    void processMessage(std::optional<std::u16string_view> text);
    /// For a screen that takes its time: while it is full, nothing further is taken from the network.
    void setScreenFull(bool isFull);
    /// The output view shows so many characters in a line and so many lines. Games that ask are answered.
    void setViewSize(int columns, int rows) { viewSize.setSize({columns, rows}); }
    /// Shows what is held back. A silence of the game calls it.
    void timeUp();
    /// For a front end that quits: shows at once all that came in. Of a chunk whose triggers have much to
    /// answer the rest is not answered.
    void showAllThatCame();

    // Settings of the running session
    /// `title` as the encoding buttons bear it; any other title changes nothing.
    void changeEncoding(std::u16string_view title);
    /// The same for any encoding, also one that no button bears.
    void changeEncoding(ZNTStringEncoding encoding);
    /// For text that arrives later.
    void changeFont(const ZNTFont& font);
    /// Whether sound tags of the game are carried out.
    [[nodiscard]] bool playsSoundTags() const;
    /// Asks the server for compression and takes the very next block as compressed, or refuses it and takes
    /// what comes as plain.
    void set_isMccpOnOff(bool on);
    /// Asks the server for sounds, or refuses them.
    void set_isMspOnOff(bool on);
    /// Both answer for the switch that was set last: the two share one flag.
    [[nodiscard]] bool _isMccpOnOff() const { return _isMspOnOff_; }
    [[nodiscard]] bool _isMspOnOff() const { return _isMspOnOff_; }
    /// Answers a later offer of compression with yes (or no), without asking for it now: what a player wants
    /// who decides before there is a connection.
    void acceptCompressionOffers(bool accept);
    /// Puts what differs from the settings before into force.
    void setSettings(const ZNTSettings& wanted);
    /// What was handed in, with what the player has switched on the session since. Speech that was turned on
    /// for a screen reader is no choice of the player's and is not in it.
    [[nodiscard]] const ZNTSettings& settings() const { return settings_; }
    /// Edited triggers are in force from the next block on.
    void reloadTriggers();
    /// Whether the trigger with that key rests, because its pattern was too slow for several chunks.
    [[nodiscard]] bool isTriggerResting(std::int64_t oid) const;

    /// Ends all that plays, with the repetitions that are left, and what is still being fetched.
    void stopAllSounds();

    // Speech. A state is 1 for on.
    /// Turns speech on, and its interruption, as `awakeFromNib` does where a screen reader runs; for a front
    /// end that finds only afterwards that one was running.
    void speakForScreenReader();
    /// A front end calls it when a screen reader has come or gone, at any time; `services.screenReader` knows
    /// already which. With the setting `speech-follows-reader` the first calls `speakForScreenReader`, unless
    /// speech is on or the player has switched it in this run. A reader that goes changes nothing: a player
    /// who listens would be left with nothing at all.
    void screenReaderChanged();
    /// Kept as part of the interface: a key that comes before the menu item changes its state. It stops
    /// speech that is on, else turns it on.
    void shortcutKeySpeechOnAndOff();
    /// The menu item, whose state has changed already: speech follows it.
    void textToSpeechOnAndOff();
    /// Speaks again, while speech is on, what came since the last line that was not empty.
    void replayLastText();
    /// Whether text came since the last command.
    [[nodiscard]] bool hasTextToReplay() const;
    /// Says the game's last prompt, cutting off what is being said. While speech is off it speaks as
    /// `replayLastText` does.
    void sayPrompt();
    /// Empty if the game has not sent one yet.
    [[nodiscard]] const std::u16string& lastPrompt() const;
    /// Silences what is being said and what waits; while speech is on, what comes next is spoken again.
    void stopSpeaking();
    void setSpeechOnOffBindingState(int state);
    void setSpeechInterruptOnOffBindingState(int state);
    [[nodiscard]] int speechOnOffBindingState() const;
    [[nodiscard]] int speechInterruptOnOffBindingState() const;
    /// False while nothing can be found that speaks.
    [[nodiscard]] bool isSpeechAvailable() const;
    [[nodiscard]] ZNTSpeechSynth& zntSpeechSynth();
    [[nodiscard]] ZNTSpeechReview& speechReview();
    [[nodiscard]] ZNTChannelHistory& channelHistory() { return *channelHistory_; }

    // Recorder
    void startOrPauseRecording();
    void doneRecording();
    [[nodiscard]] const ZNTRecorder& recorder() const { return *_zntRecorder; }

    // Queries
    [[nodiscard]] ZNTSessionState state() const;
    [[nodiscard]] ZNTSessionEnding lastEnding() const { return lastEnding_; }
    /// Why and when; None once a new attempt has begun.
    [[nodiscard]] const ZNTConnectionEnd& lastEnd() const { return lastEnd_; }
    [[nodiscard]] std::chrono::system_clock::time_point connectedSince() const { return connectedSince_; }
    [[nodiscard]] bool isConnected() const { return isConnected_; }
    // Kept as part of the interface: what the parser has noted. Nothing of the client asks for it.
    [[nodiscard]] bool readTimeout() const { return readTimeout_; }
    [[nodiscard]] bool endOfNegotiations() const { return endOfNegotiations_; }
    [[nodiscard]] bool isGoAhead() const { return isGoAhead_; }
    /// Whether the next block is taken as compressed.
    [[nodiscard]] bool _mccp() const;
    /// Whether the game echoes what is typed, as games do for a password. Then a line is sent as it stands
    /// and is not shown, spoken, logged, recorded or sent again; the command line shows no letters.
    [[nodiscard]] bool isTypingHidden() const;
    [[nodiscard]] bool isWalking() const;
    /// Whether something that came in is not shown yet.
    [[nodiscard]] bool hasTextHeldBack() const
    {
        return chunk.isInHand() || !mudServerTextSentBuffer.empty();
    }
    [[nodiscard]] ZNTStringEncoding cfStringEncoding() const { return cfStringEncoding_; }
    /// Kept as part of the interface: the folder that the sounds of triggers are played from, with a slash at
    /// its end.
    [[nodiscard]] const std::string& rootPath() const { return rootPath_; }
    [[nodiscard]] const std::u16string& lastCommand() const { return lastCommand_; }

    static constexpr std::u16string_view _emptyString{};
    /// The telnet commands in received text, as an ICU expression with dots that match line ends too.
    /// `znt::telnet::commandAt` finds what it finds, in linear time.
    static constexpr std::u16string_view _specialMudProtocolsRegex = u"\\xFF(..?)";

private:
    class Answers;
    class Commands;
    class Walks;

    // The connection's delegate
    void onSocketDidConnectToHost(ZNTStream& stream, const std::string& host, std::uint16_t port) override;
    void onSocketDidReadData(ZNTStream& stream, std::string_view data, std::int64_t tag) override;
    double onSocketShouldTimeoutReadWithTag(ZNTStream& stream, std::int64_t tag, double elapsed,
                                            std::size_t bytesDone) override;
    void onSocketDidWriteDataWithTag(ZNTStream& stream, std::int64_t tag) override;
    void onSocketWillDisconnectWithError(ZNTStream& stream, const ZNTError* error) override;
    void onSocketDidDisconnect(ZNTStream& stream) override;

    // The chunk's owner
    void answersBegin() override;
    void answersEnd() override;
    [[nodiscard]] bool hasRoomForAnswers() const override;
    void showChunk(const ZNTAttributedText& chunk, const ZNTTriggerOutcome& outcome) override;
    void chunkEnded(ZNTAttributedText&& chunk, bool isFlood) override;
    void chunkMoved() override;
    void waitingEnded() override;

    // On the way in
    void readNextBlock();
    void holdReadingWhileBusy();
    void receive(const ZNTReceived& received);
    void noteAgreements(const ZNTReceived& received);
    void noteCompression();
    void endAgreements();
    void reportViewSize(ZNTViewSizeReport::Size size);
    void endUnreadable(std::u16string_view sentence);
    void noteEnd(ZNTSessionEnding ending, ZNTEndReason reason);
    void takeWhatWasHeldUp(ZNTStream& stream);
    ZNTReceiver& chooseReceiver();
    ZNTReceiver& switched();
    void keepBlanksAsReceiverDoes();
    void noteChoices();
    /// Carries out the sound tag of a text, takes out what is not to be shown, and gives the rest.
    std::u16string processed(std::u16string text);
    ZNTAttributedText coloured(std::u16string gameText);
    void showFarewellInAWhile();
    /// Hands telnet replies and lines to the connection. Without one they are dropped.
    void writeData(std::string_view data, double timeout, long tag);

    // The screen
    enum class Aloud { Yes, No }; ///< whether a text of the client's own is spoken while speech is on
    enum class OwnLine { Message, Sent };
    void showOwnText(std::u16string_view text, Aloud aloud, OwnLine kind = OwnLine::Message);
    void showOwnLine(std::u16string_view line, Aloud aloud, OwnLine kind);
    void showMudNotResponding();
    void hideProgress();
    /// The command line and the direction buttons: what needs a connection.
    void enableAlmostAllWidgets();
    void disableAlmostAllWidgets();
    void setAlmostAllWidgetsEnabled(bool enabled);
    void fillFromDefaultMud();
    void putIntoForce(const ZNTSettings& before);
    void putPatternsIntoForce(const ZNTSettings& wanted);
    void changed(ZNTSessionChange what);
    void note(const ZNTSessionNotice& notice);

    ZNTPlatform platform;
    ZNTSessionScreen screen;
    ZNTSessionServices services;
    ZNTSettings settings_;

    bool isConnected_ = false;
    bool readTimeout_ = false;
    bool endOfNegotiations_ = false;
    bool isGoAhead_ = false;
    bool isScreenFull = false;
    bool wasInflating = false;    ///< when `changed` last said so
    bool wasTypingHidden = false; ///< likewise
    bool isHintGiven = false;     ///< in this connection
    bool hasPlayerSwitchedSpeech = false;
    double nextTick = 0;       ///< seconds until the pending read's next tick
    double silenceSoFar = 0;   ///< seconds of the ticks since the last block or silence
    bool _isMspOnOff_ = false; ///< shared by the switches for sound and compression
    ZNTStringEncoding cfStringEncoding_ = ZNTStringEncoding::Ascii;
    std::string rootPath_;
    std::u16string lastCommand_;
    ZNTSessionEnding lastEnding_ = ZNTSessionEnding::None;
    ZNTConnectionEnd lastEnd_;
    std::chrono::system_clock::time_point connectedSince_{};

    // Each of these uses those above it only.
    std::unique_ptr<ZNTLogger> _zntLogger;
    std::unique_ptr<ZNTOutgoing> outgoing;
    std::unique_ptr<ZNTSessionSpeech> speech;
    std::unique_ptr<ZNTChannelHistory> channelHistory_;
    std::unique_ptr<ZNTRecorder> _zntRecorder;
    std::unique_ptr<Walks> walks;
    std::unique_ptr<ZNTSpeedWalking> _zntSpeedwalking;
    std::unique_ptr<ZNTReplay> replay;
    std::unique_ptr<ZNTMSPProcessor> _soundProcessor;
    std::unique_ptr<Commands> commands;
    std::unique_ptr<ZNTCommandInterpreter> commandInterpreter;
    std::unique_ptr<ZNTParserUtility> _zntParserUtility;
    std::unique_ptr<ZNTFullColourParser> fullColours;
    std::unique_ptr<ZNTDecodeFirstReceiver>
        settledReceiver; ///< keeps what is switched while there is no connection
    std::unique_ptr<ZNTStandardReceiver> standardReceiver; ///< made anew at each connect that wants it
    ZNTReceiver* receiver;                                 ///< of the connection that stands, or stood last
    ZNTHeldBackText mudServerTextSentBuffer;               ///< received, not yet shown
    std::unique_ptr<ZNTTriggerList> triggers;
    std::unique_ptr<Answers> answers;
    ZNTChunkInHand chunk;
    ZNTViewSizeReport viewSize;
    std::unique_ptr<RunLoopTimer> farewellTimer;
    std::unique_ptr<ZNTStream> mudServer; ///< made anew at each connect
};
