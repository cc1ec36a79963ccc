#pragma once

#include "RunLoop.h"
#include "ZNTAttributedText.h"

#include <cstddef>
#include <deque>
#include <functional>
#include <memory>

class ZNTTriggerActions;
class ZNTTriggerList;
class ZNTTriggerPass;
struct ZNTTriggerOutcome;

/// A released chunk, from its trigger pass until it is shown. Its triggers may have more to answer than one
/// turn of the loop has room for. Then the chunk stays in hand: the answers leave part by part, lines that
/// the player types leave between the parts, and everything else that comes waits for the end of the chunk.
class ZNTChunkInHand
{
public:
    /// What one turn of the loop has room for: answers, and seconds. What the player types meanwhile leaves
    /// before the answers of the next turn.
    static constexpr int mostAnswersInATurn = 2'000;
    static constexpr double secondsForAnswers = 0.05;

    /// The session. It may call back into the chunk at any time; a new chunk then waits for this one.
    class Owner
    {
    public:
        virtual ~Owner() = default;
        /// Triggers answer between these two calls. They end before the chunk is shown.
        virtual void answersBegin() = 0;
        virtual void answersEnd() = 0;
        /// Whether the server has taken enough of the answers so far.
        [[nodiscard]] virtual bool hasRoomForAnswers() const = 0;
        /// All triggers have answered.
        virtual void showChunk(const ZNTAttributedText& chunk, const ZNTTriggerOutcome& outcome) = 0;
        /// The chunk was shown and is out of hand. Its memory may be used again.
        virtual void chunkEnded(ZNTAttributedText&& chunk, bool isFlood) = 0;
        /// A chunk came into hand, a part of it was answered, or it is out of hand.
        virtual void chunkMoved() = 0;
        /// What had waited for the chunk was carried out.
        virtual void waitingEnded() = 0;
    };

    /// The caller owns what it passes; all of it outlives this object.
    ZNTChunkInHand(RunLoop& runLoop, ZNTTriggerList& triggers, ZNTTriggerActions& actions, Owner& owner);
    ~ZNTChunkInHand();
    ZNTChunkInHand(const ZNTChunkInHand&) = delete;
    ZNTChunkInHand& operator=(const ZNTChunkInHand&) = delete;

    [[nodiscard]] bool isInHand() const { return chunk != nullptr; }
    /// The text of the chunk; empty if none is in hand.
    [[nodiscard]] std::u16string_view text() const;

    /// Answers as much of `released` as one turn has room for. None may be in hand. `isFlood`: it was
    /// released because of its length.
    void start(ZNTAttributedText released, bool isFlood);
    /// Carries `task` out after the chunk and what waits already.
    void wait(std::function<void()> task) { waiting.push_back(std::move(task)); }
    /// The server has taken something of what was sent.
    void roomWasMade();
    /// What is left to answer is not answered. An answer reaches the game that its chunk came from, or
    /// nobody.
    void giveUpAnswers();
    /// Shows the chunk at once, without the answers that are left. Does nothing from inside the chunk's own
    /// calls.
    void finishNow();

    /// For the actions: one more answer is given in this turn.
    void countAnswer() { ++answersOfTurn; }
    [[nodiscard]] bool hasTimeForMore() const;

private:
    struct Chunk {
        ZNTAttributedText text;
        bool isFlood;
        std::unique_ptr<ZNTTriggerPass> pass;
    };

    void goOn();
    void goOnNextTurn();
    void finish();
    void carryOutWhatWaits();

    RunLoop& runLoop;
    ZNTTriggerList& triggers; ///< a pass gives its memory back to it
    ZNTTriggerActions& actions;
    Owner& owner;

    std::unique_ptr<Chunk> chunk;
    bool isBusy = false;           ///< its triggers are answering, or it is being shown
    bool isWaitingForRoom = false; ///< until the server has taken more of the answers
    int answersOfTurn = 0;
    double endOfTurn = 0; ///< of the part of a turn that is for answers; by the run loop's clock
    std::unique_ptr<RunLoopTimer> nextPart;
    /// What came, from elsewhere than the network, while a chunk was in hand.
    std::deque<std::function<void()>> waiting;
    bool isCarryingOut = false;
};
