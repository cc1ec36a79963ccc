#pragma once

#include "ZNTCommandInterpreter.h"
#include "ZNTHeldBackText.h"
#include "ZNTInflater.h"
#include "ZNTLineSender.h"
#include "ZNTLogger.h"
#include "ZNTMSPProcessor.h"
#include "ZNTParserUtility.h"
#include "ZNTPendingWrites.h"
#include "ZNTPlatform.h"
#include "ZNTRecorder.h"
#include "ZNTSessionChange.h"
#include "ZNTSessionScreen.h"
#include "ZNTSettings.h"
#include "ZNTSpeechHandOver.h"
#include "ZNTSpeechReview.h"
#include "ZNTSpeechSynth.h"
#include "ZNTSpeedWalking.h"
#include "ZNTStream.h"
#include "ZNTStringEncoding.h"
#include "ZNTTriggerList.h"

#include <chrono>
#include <cstddef>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

class ZNTDatabaseHelper;
class ZNTCommandRecorderDataSource;
class ZNTMacroSource;
class ZNTSoundFactory;

/// What a session uses that its front end makes. All of it outlives the session.
struct ZNTSessionServices {
    ZNTDatabaseHelper& database;
    ZNTMacroSource& macros;
    ZNTSoundFactory& sounds;
    ZNTSpeechEngine& speechEngine;
    ZNTScreenReader& screenReader;
    /// Makes the connection to a game.
    ZNTStreamFactory streams;
    /// Opens the recorder's sheet on the given list; the front end makes the sheet on first use.
    std::function<void(ZNTCommandRecorderDataSource& commands)> showZNTCommandRecorderView;
    /// Called on the run loop's thread after a change of what the queries below answer. Optional.
    std::function<void(ZNTSessionChange what)> sessionChanged;
    /// Called after received text was put into the output view. Optional.
    std::function<void()> textShown = {};
    /// Called, while connected, after each half second without a byte. Optional.
    std::function<void()> silencePassed = {};
    /// What the player has set; later changes come through `setSettings`.
    ZNTSettings settings = {};
};

/// Keys of the command line that mean something to the session.
enum class ZNTCommandLineKey { InsertNewline, MoveUp, MoveDown, Other };

enum class ZNTSessionState { Idle, Connecting, Connected };

/// How a connection came to its end.
enum class ZNTSessionEnding { None, ByPlayer, ByServer, Broken };

/// The spine of the client, one for each main window: it owns the connection to one game, turns each received
/// block into coloured text in the output view, and sends every line that the player, a macro, a trigger, a
/// speed walk or a direction button produces. Belongs to the run loop's thread.
///
/// A block on its way in: inflate, decode, answer telnet, hold back until IAC GA, IAC WONT or half a second
/// of silence, join, colour, triggers, speech, output view, log. No step of it copies or scans more than a
/// constant number of times what came in.
class ZNTServerConnectController final : public ZNTStreamDelegate,
                                         public ZNTLineSender,
                                         private ZNTTelnetListener,
                                         private ZNTCommandActions,
                                         private ZNTTriggerActions
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

    // Local output
    /// Shows `text`, whose SGR sequences alone colour it, speaks it while speech is on, and logs its plain
    /// text. The view does not scroll.
    void insertText(std::u16string_view text, ZNTColour unusedColour);
    /// Shows a line in bold cyan, as typed lines are. It stands in the log twice, the second time raw.
    void insertTextInWindow(std::u16string_view text);
    /// The same for a message of the client's own, which may interrupt speech.
    void insertTextIntoTheWindow(std::u16string_view text) override;
    void clearScreen();

    // Receiving
    /// The receive pipeline for one decoded block; a missing text is one that no decoding could make. While
    /// triggers still answer the chunk before, on several turns of the loop, it waits for the last of them.
    void processMessage(std::optional<std::u16string_view> text);
    /// For a screen that takes its time: while it is full, nothing further is taken from the network.
    void setScreenFull(bool isFull);
    /// Flushes what is held back, as half a second of silence does.
    void timeUp();
    /// For a front end that quits: shows at once all that came in. Of a chunk whose triggers have much to
    /// answer the rest is not answered.
    void showAllThatCame();

    // Settings of the running session
    /// `title` as the encoding buttons bear it; any other title changes nothing.
    void changeEncoding(std::u16string_view title);
    /// For text that arrives later.
    void changeFont(const ZNTFont& font);
    /// Whether sound tags of the game are carried out.
    [[nodiscard]] bool playsSoundTags() const { return _zntParserUtility._isMspOnOff(); }
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
    [[nodiscard]] bool isTriggerResting(std::int64_t oid) const { return triggers.isResting(oid); }

    /// Ends all that plays, with the repetitions that are left, and what is still being fetched.
    void stopAllSounds();

    // Speech. A state is 1 for on.
    /// Turns speech on, and its interruption, as `awakeFromNib` does where a screen reader runs; for a front
    /// end that finds only afterwards that one was running.
    void speakForScreenReader();
    /// The key, heard before the menu item changes its state: stops speech that is on, else turns it on.
    void shortcutKeySpeechOnAndOff();
    /// The menu item, whose state has changed already: speech follows it.
    void textToSpeechOnAndOff();
    /// Speaks again, while speech is on, what came since the last line that was not empty.
    void replayLastText();
    /// Silences what is being said and what waits; while speech is on, what comes next is spoken again.
    void stopSpeaking();
    void setSpeechOnOffBindingState(int state);
    void setSpeechInterruptOnOffBindingState(int state);
    [[nodiscard]] int speechOnOffBindingState() const { return speechOnOffBindingState_; }
    [[nodiscard]] int speechInterruptOnOffBindingState() const { return speechInterruptOnOffBindingState_; }
    /// False while nothing can be found that speaks.
    [[nodiscard]] bool isSpeechAvailable() const { return services.speechEngine.isAvailable(); }
    [[nodiscard]] ZNTSpeechSynth& zntSpeechSynth() { return zntSpeechSynth_; }
    [[nodiscard]] ZNTSpeechReview& speechReview() { return speechReview_; }

    // Recorder
    void startOrPauseRecording();
    void doneRecording();
    [[nodiscard]] const ZNTRecorder& recorder() const { return _zntRecorder; }

    // Queries
    [[nodiscard]] ZNTSessionState state() const;
    [[nodiscard]] ZNTSessionEnding lastEnding() const { return lastEnding_; }
    [[nodiscard]] std::chrono::system_clock::time_point connectedSince() const { return connectedSince_; }
    [[nodiscard]] bool isConnected() const { return isConnected_; }
    [[nodiscard]] bool readTimeout() const { return readTimeout_; }
    [[nodiscard]] bool endOfNegotiations() const { return endOfNegotiations_; }
    [[nodiscard]] bool isGoAhead() const { return isGoAhead_; }
    [[nodiscard]] bool _mccp() const { return _mccp_; }
    [[nodiscard]] bool isWalking() const;
    /// Whether something that came in is not shown yet.
    [[nodiscard]] bool hasTextHeldBack() const { return chunkInHand || !mudServerTextSentBuffer.empty(); }
    [[nodiscard]] ZNTStringEncoding cfStringEncoding() const { return cfStringEncoding_; }
    /// The folder that the sounds of triggers are played from; ends with a slash.
    [[nodiscard]] const std::string& rootPath() const { return rootPath_; }
    [[nodiscard]] const std::u16string& lastCommand() const { return lastCommand_; }

    static constexpr std::u16string_view _emptyString{};
    /// The telnet commands in received text, as an ICU expression with dots that match line ends too.
    /// `znt::telnet::forEachCommand` finds what it finds, in linear time.
    static constexpr std::u16string_view _specialMudProtocolsRegex = u"\\xFF(..?)";
    /// UTF-16 units that may be held back; past it they are shown as after a silence, so that a server that
    /// never pauses cannot fill the memory.
    static constexpr std::size_t mostHeldBack = std::size_t{8} << 20;
    /// UTF-16 units kept for `replayLastText`, the newest; hours more could not be listened to.
    static constexpr std::size_t mostReplayed = std::size_t{1} << 20;
    /// Bytes of telnet replies that may wait for the server to take them before nothing further is read.
    static constexpr std::size_t mostReplyBytes = std::size_t{64} << 10;
    /// Bytes that may wait likewise before triggers answer no further for the time being.
    static constexpr std::size_t mostAnswerBytes = std::size_t{64} << 10;
    /// Bytes of any kind that may wait likewise before nothing further is read: chunk after chunk can cause
    /// answers.
    static constexpr std::size_t mostBytesOnTheirWay = std::size_t{1} << 20;
    /// What triggers may do in one turn of the loop: answers, and seconds. What the player types meanwhile
    /// leaves before the next turn's.
    static constexpr int mostAnswersInATurn = 2'000;
    static constexpr double secondsForAnswers = 0.05;

private:
    // The socket's delegate
    void onSocketDidConnectToHost(ZNTStream& socket, const std::string& host, std::uint16_t port) override;
    void onSocketDidReadData(ZNTStream& socket, std::string_view data, std::int64_t tag) override;
    double onSocketShouldTimeoutReadWithTag(ZNTStream& socket, std::int64_t tag, double elapsed,
                                            std::size_t bytesDone) override;
    void onSocketDidWriteDataWithTag(ZNTStream& socket, std::int64_t tag) override;
    void onSocketWillDisconnectWithError(ZNTStream& socket, const ZNTError* error) override;
    void onSocketDidDisconnect(ZNTStream& socket) override;
    // Of no interest to a session.
    void onSocketDidReadPartialDataOfLength(ZNTStream&, std::size_t, std::int64_t) override {}
    void onSocketDidAcceptNewSocket(ZNTStream&, ZNTStream&) override {}
    void onSocketDidSecure(ZNTStream&) override {}

    // What the parser tells
    void setIsGoAhead(bool isGoAhead) override { isGoAhead_ = isGoAhead; }
    void setEndOfNegotiations(bool isEnd) override { endOfNegotiations_ = isEnd; }
    void set_mccp(bool isCompressed) override;
    void writeData(std::string_view data, double timeout, long tag) override;

    // What a prefixed line sets going
    void speedwalk(const std::shared_ptr<const ZNTSpeedWalking::Route>& route) override;
    void stopSpeedwalk() override;
    std::vector<std::u16string> getAllMacroNames() override;
    std::optional<std::u16string> getMacroByName(std::u16string_view name) override;

    // What a trigger does
    void sendCommand(std::u16string_view command) override;
    void playTriggerSound(std::u16string_view fileName) override;
    bool hasTimeForMore() override;

    void readNextBlock();
    void holdReadingWhileBusy();
    void processBlock(std::string_view data);
    void takeWhatWasHeldUp(ZNTStream& socket);
    void showFarewellInAWhile();
    [[nodiscard]] bool isToBeInflated(std::string_view block) const;
    std::string inflated(std::string_view block);
    void refuseCompression();
    void goOnWithChunk();
    void goOnWithChunkNextTurn();
    [[nodiscard]] bool hasRoomForAnswers() const;
    void giveUpAnswers();
    void forgetWrites();
    void finishChunk();
    void processWhatWaits();
    void show(const ZNTAttributedText& result, bool isGagged);
    void speakOrStop(const std::u16string& plainText);
    void interruptSpeech(double pause);
    bool mayPause();
    void allowPauseNextTurn();
    void sendGatheredLines();
    void forgetReplay() { _replayLastTextFromMUD.clear(); }
    void showMudNotResponding();
    /// The command line and the ten direction buttons: what needs a connection.
    void enableAlmostAllWidgets();
    void disableAlmostAllWidgets();
    void setAlmostAllWidgetsEnabled(bool enabled);
    void fillFromDefaultMud();
    void putIntoForce(const ZNTSettings& before);
    void changed(ZNTSessionChange what);

    /// A released chunk, from its trigger pass until it is shown.
    struct Chunk {
        ZNTAttributedText result;
        bool isFlood; ///< it was released because of its length
        std::unique_ptr<ZNTTriggerPass> pass;
    };
    class AutomaticLines;
    /// Where speed walks send their steps.
    class LinesOfWalks final : public ZNTLineSender
    {
    public:
        explicit LinesOfWalks(ZNTServerConnectController& session) : session(session) {}
        void sendMessageToServer(std::u16string_view line, bool ignoreSpecials) override;
        [[nodiscard]] bool hasRoom() const override { return session.hasRoomForAnswers(); }

    private:
        ZNTServerConnectController& session;
    };

    ZNTPlatform platform;
    ZNTSessionScreen screen;
    ZNTSessionServices services;
    ZNTSettings settings_;

    bool isConnected_ = false;
    bool readTimeout_ = false;
    bool endOfNegotiations_ = false;
    bool isGoAhead_ = false;
    bool isScreenFull = false;
    bool _mccp_ = false;
    bool _isMspOnOff_ = false; ///< shared by the switches for sound and compression
    int speechOnOffBindingState_ = 0;
    int speechInterruptOnOffBindingState_ = 0;
    ZNTStringEncoding cfStringEncoding_ = ZNTStringEncoding::Ascii;
    std::string rootPath_;
    std::u16string lastCommand_;
    ZNTPendingWrites pendingWrites;
    bool isAutomatic = false;         ///< the line at hand comes from a trigger or a walk
    bool hasPausedForTheGame = false; ///< such a line has interrupted speech in this turn of the loop
    std::u16string _replayLastTextFromMUD;
    ZNTHeldBackText mudServerTextSentBuffer;
    ZNTSessionEnding lastEnding_ = ZNTSessionEnding::None;
    std::chrono::system_clock::time_point connectedSince_{};

    ZNTSpeechSynth zntSpeechSynth_;
    ZNTSpeechHandOver speechHandOver;
    ZNTSpeechReview speechReview_;
    ZNTRecorder _zntRecorder;
    LinesOfWalks linesOfWalks{*this};
    ZNTSpeedWalking _zntSpeedwalking;
    ZNTMSPProcessor _soundProcessor;
    ZNTParserUtility _zntParserUtility;
    ZNTCommandInterpreter commandInterpreter;
    ZNTTriggerList triggers;
    ZNTInflater mccp2;
    ZNTLogger _zntLogger;
    /// After `triggers`, to which a pass gives its memory back.
    std::optional<Chunk> chunkInHand;
    bool isBusyWithChunk = false;  ///< its triggers are answering, or it is being shown
    bool areLinesGathered = false; ///< its triggers are answering
    bool isWaitingForRoom = false; ///< until the server has taken more of the answers
    int answersOfTurn = 0;
    double endOfTurn = 0; ///< of the part of a turn that is for answers; by the run loop's clock
    std::string gatheredLines;
    std::unique_ptr<RunLoopTimer> nextPart;
    /// What came, from elsewhere than the network, while a chunk was in hand.
    std::deque<std::function<void()>> waitingForChunk;
    bool isProcessingWhatWaits = false;
    std::unique_ptr<RunLoopTimer> farewellTimer;
    std::unique_ptr<ZNTStream> mudServer; ///< made anew at each connect
    std::shared_ptr<char> life = std::make_shared<char>();
};
