#include "ZNTChunkInHand.h"

#include "ZNTTriggerList.h"

#include <utility>

ZNTChunkInHand::ZNTChunkInHand(RunLoop& runLoop, ZNTTriggerList& triggers, ZNTTriggerActions& actions,
                               Owner& owner)
    : runLoop(runLoop),
      triggers(triggers),
      actions(actions),
      owner(owner)
{
}

ZNTChunkInHand::~ZNTChunkInHand() = default;

std::u16string_view ZNTChunkInHand::text() const
{
    return chunk ? std::u16string_view(chunk->text.text) : std::u16string_view();
}

void ZNTChunkInHand::start(ZNTAttributedText released, bool isFlood)
{
    chunk = std::make_unique<Chunk>(Chunk{std::move(released), isFlood, nullptr});
    chunk->pass = triggers.startPass(chunk->text.text, actions);
    goOn();
}

void ZNTChunkInHand::goOn()
{
    nextPart.reset();
    isWaitingForRoom = false;
    answersOfTurn = 0;
    endOfTurn = runLoop.now() + secondsForAnswers;
    isBusy = true;
    owner.answersBegin();
    const bool isAnswered = chunk->pass->goOn();
    owner.answersEnd(); // the answers leave before anything is drawn
    if (isAnswered)
        finish();
    else
        goOnNextTurn();
    isBusy = false;
    owner.chunkMoved();
    if (isAnswered)
        carryOutWhatWaits();
}

void ZNTChunkInHand::goOnNextTurn()
{
    isWaitingForRoom = !owner.hasRoomForAnswers();
    if (!isWaitingForRoom)
        nextPart = runLoop.startTimer(0, RunLoopRepeat::Once, [this] { goOn(); });
}

void ZNTChunkInHand::roomWasMade()
{
    if (isWaitingForRoom && owner.hasRoomForAnswers())
        goOnNextTurn();
}

bool ZNTChunkInHand::hasTimeForMore() const
{
    return answersOfTurn < mostAnswersInATurn && runLoop.now() < endOfTurn;
}

void ZNTChunkInHand::giveUpAnswers()
{
    if (!chunk)
        return;
    chunk->pass->stopAnswering();
    if (isWaitingForRoom)
        goOnNextTurn();
}

/// The chunk stays in hand while it is shown, so that what the view's owner sends meanwhile waits its turn.
void ZNTChunkInHand::finish()
{
    if (!chunk->text.empty())
        owner.showChunk(chunk->text, chunk->pass->outcome());
    auto text = std::move(chunk->text);
    const bool isFlood = chunk->isFlood;
    chunk.reset();
    owner.chunkEnded(std::move(text), isFlood);
}

void ZNTChunkInHand::finishNow()
{
    while (chunk && !isBusy) {
        giveUpAnswers();
        goOn();
    }
}

/// A task may bring the next chunk into hand; what is left then waits for that one.
void ZNTChunkInHand::carryOutWhatWaits()
{
    if (waiting.empty() || std::exchange(isCarryingOut, true))
        return;
    while (!chunk && !waiting.empty()) {
        const auto task = std::move(waiting.front());
        waiting.pop_front();
        task();
    }
    isCarryingOut = false;
    owner.waitingEnded();
}
