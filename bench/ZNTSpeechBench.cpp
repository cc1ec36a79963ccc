// What speech costs the receive pipeline for each chunk: the hand-over on a thread of its own and the keeping
// of lines for review; and what it costs later to cut and clean what is spoken.

#include "UvRunLoop.h"
#include "ZNTScreenReader.h"
#include "ZNTSpeechEngine.h"
#include "ZNTSpeechHandOver.h"
#include "ZNTSpeechReview.h"
#include "ZNTSpeechSynth.h"

#include <benchmark/benchmark.h>
#include <memory>

namespace
{

struct Speech {
    std::unique_ptr<UvRunLoop> runLoop = UvRunLoop::open().value();
    ZNTSilentSpeech engine;
    ZNTNoScreenReader reader;
    ZNTSpeechSynth synth{*runLoop, engine, reader};

    Speech() { synth.speechOn(); }
};

/// Lines of 78 characters and CR LF, up to `units`.
std::u16string gameText(std::size_t units)
{
    std::u16string text;
    while (text.size() < units)
        text += u"A large goblin guard slashes at you with a rusty sword, and misses you by far.\r\n";
    text.resize(units);
    return text;
}

void countUnits(benchmark::State& state)
{
    state.SetBytesProcessed(state.iterations() * state.range(0));
    state.SetItemsProcessed(state.iterations());
}

void handOverAChunk(benchmark::State& state)
{
    Speech speech;
    ZNTSpeechHandOver handOver(speech.synth);
    const auto text = gameText(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state)
        handOver.speakOnNewThread(text);
    countUnits(state);
}
BENCHMARK(handOverAChunk)->Arg(80)->Arg(65'536)->UseRealTime();

void keepAChunkForReview(benchmark::State& state)
{
    Speech speech;
    ZNTSpeechReview review(speech.synth);
    const auto text = gameText(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state)
        review.addReceivedText(text);
    countUnits(state);
}
BENCHMARK(keepAChunkForReview)->Arg(80)->Arg(65'536)->Arg(1 << 20);

void cutAndCleanALongLine(benchmark::State& state)
{
    const auto text = gameText(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state)
        for (std::u16string_view rest = text; !rest.empty();) {
            const auto utterance = rest.substr(0, znt::utteranceLength(rest));
            benchmark::DoNotOptimize(znt::speakableText(utterance));
            rest.remove_prefix(utterance.size());
        }
    countUnits(state);
}
BENCHMARK(cutAndCleanALongLine)->Arg(80)->Arg(65'536);

} // namespace

BENCHMARK_MAIN();
