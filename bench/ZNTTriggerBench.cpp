// The trigger pass over game text, as megabytes of the game's text a second, beside what it replaces:
// building and matching every trigger's expression afresh for every chunk. Chunks are what a game's text is
// shown by, so their size counts. The rest of the pipeline stands beside it, measured in the same run.

#include "UvRunLoop.h"
#include "ZNTBlockDecoder.h"
#include "ZNTGameText.h"
#include "ZNTParserUtility.h"
#include "ZNTPlatformLog.h"
#include "ZNTSessionless.h"
#include "ZNTTelnetScanner.h"
#include "ZNTText.h"
#include "ZNTTriggerList.h"
#include "ZNTTriggerPattern.h"

#include <array>
#include <benchmark/benchmark.h>
#include <chrono>
#include <random>

namespace
{

constexpr std::size_t wholeText = std::size_t{64} << 20;

enum Matching : std::int64_t { None, Few, Many };

const std::u16string& gameText()
{
    static const std::u16string text = znt::bench::plainGameText(wholeText);
    return text;
}

struct NoLog final : ZNTPlatformLog {
    void log(std::string_view) override {}
};

struct CountedActions final : ZNTTriggerActions {
    std::size_t commands = 0;
    void sendCommand(std::u16string_view command) override
    {
        ++commands;
        benchmark::DoNotOptimize(command.data());
    }
    void playTriggerSound(std::u16string_view) override {}
};

/// What players write: most begin or end in the same words, half hold a wildcard, some are short. In none of
/// the made-up games that these are for does the text of the benchmark occur, but for the words it shares.
class Checks
{
public:
    std::u16string next()
    {
        switch (random() % 8) {
        case 0:
            return u"The " + foe() + u" %1 " + one(victims) + u" for";
        case 1:
            return u"%1 tells you '" + word() + u" *'";
        case 2:
            return u"You are " + word() + u".";
        case 3:
            return u"A " + foe() + u" is here, *" + word();
        case 4:
            return u"\\[" + word() + u"\\]";
        case 5:
            return foe() + u" arrives from the %1.";
        case 6:
            return u"\\b" + word() + u"\\b (falls|drops) (\\d+) " + word();
        default:
            return u"You " + word() + u" the " + foe() + u"!";
        }
    }
    /// Text of the benchmark itself.
    std::u16string nextThatMatches()
    {
        constexpr std::array<std::u16string_view, 8> checks{u"The grey wolf %1 Alda for",
                                                            u"A %1 is here, watching you.",
                                                            u"selling two potions, cheap!",
                                                            u"<%1hp",
                                                            u"The %1 kicks *for (\\d+) points\\.",
                                                            u"Exits: *",
                                                            u"* Bron: has anyone seen",
                                                            u"Smugglers' Cove"};
        return std::u16string(checks[random() % checks.size()]);
    }

private:
    std::u16string word()
    {
        constexpr std::u16string_view consonants = u"bcdfghklmnprstvw", vowels = u"aeiou";
        std::u16string made;
        for (auto syllables = 2 + random() % 3; syllables > 0; --syllables) {
            made += consonants[random() % consonants.size()];
            made += vowels[random() % vowels.size()];
        }
        return made + consonants[random() % consonants.size()];
    }
    std::u16string foe() { return word() + (random() % 2 == 0 ? u"" : u" guard"); }
    template <typename Choices>
    std::u16string one(const Choices& choices)
    {
        return std::u16string(choices[random() % choices.size()]);
    }
    static constexpr std::array<std::u16string_view, 3> victims{u"you", u"Alda", u"your horse"};

    std::mt19937 random{5};
};

/// `count` triggers, of which none, about one in a hundred (at least one), or half match the text.
std::vector<ZNTTrigger> triggersFor(std::int64_t count, std::int64_t matching)
{
    Checks checks;
    std::vector<ZNTTrigger> triggers;
    for (std::int64_t index = 0; index < count; ++index) {
        const bool matches = (matching == Few && index % 100 == 0) || (matching == Many && index % 2 == 0);
        ZNTTrigger trigger;
        trigger.check = matches ? checks.nextThatMatches() : checks.next();
        trigger.action = trigger.check.find_first_of(u"%*") != std::u16string::npos ? u"say %1" : u"look";
        triggers.push_back(std::move(trigger));
    }
    return triggers;
}

template <typename Use>
void forEachChunk(std::u16string_view text, std::size_t chunkSize, Use use)
{
    for (std::size_t at = 0; at < text.size(); at += chunkSize)
        use(text.substr(at, chunkSize));
}

bool wholePass(ZNTTriggerList& list, std::u16string_view text, ZNTTriggerActions& actions)
{
    const auto pass = list.startPass(text, actions);
    while (!pass->goOn())
        continue;
    return pass->outcome().isGagged;
}

/// range: triggers, how many match, characters a chunk
void passOver(benchmark::State& state)
{
    NoLog log;
    const auto loop = UvRunLoop::open().value();
    ZNTTriggerList list(log, *loop);
    list.setTriggers(triggersFor(state.range(0), state.range(1)));
    // Where many act in every chunk, a part of the text tells the rate.
    const auto size = state.range(1) != None && state.range(0) >= 1000 ? wholeText / 32 : wholeText;
    const auto text = std::u16string_view(gameText()).substr(0, size);
    CountedActions actions;
    for (auto _ : state)
        forEachChunk(text, static_cast<std::size_t>(state.range(2)),
                     [&](auto chunk) { benchmark::DoNotOptimize(wholePass(list, chunk, actions)); });
    state.SetBytesProcessed(static_cast<std::int64_t>(text.size()) * state.iterations());
    state.counters["commands/MiB"] = static_cast<double>(actions.commands) /
                                     static_cast<double>(state.iterations()) * 1048576.0 /
                                     static_cast<double>(text.size());
}
BENCHMARK(passOver)
    ->ArgNames({"triggers", "match", "chunk"})
    ->Args({0, None, 2048})
    ->ArgsProduct({{10, 100, 1000, 10'000}, {None, Few, Many}, {2048, 1 << 20}})
    ->Unit(benchmark::kMillisecond);

void buildAndMatch(benchmark::State& state)
{
    const auto triggers = triggersFor(state.range(0), state.range(1));
    const auto count = static_cast<std::size_t>(state.range(0));
    const auto text =
        std::u16string_view(gameText()).substr(0, std::max<std::size_t>(2048, (4U << 20) / count));
    std::size_t commands = 0;
    for (auto _ : state) {
        forEachChunk(text, static_cast<std::size_t>(state.range(2)), [&](auto chunk) {
            for (const auto& trigger : triggers) {
                ZNTUserExpression expression(ZNTTriggerPattern::expressionForCheck(trigger.check));
                std::vector<ZNTTriggerMatch> matches;
                ZNTUserExpression::Search search{chunk, /*allowance=*/60};
                benchmark::DoNotOptimize(
                    expression.collectMatches(search, chunk.size() + 1, matches, [] { return true; }));
                commands += matches.size();
            }
        });
    }
    benchmark::DoNotOptimize(commands);
    state.SetBytesProcessed(static_cast<std::int64_t>(text.size()) * state.iterations());
}
BENCHMARK(buildAndMatch)
    ->ArgNames({"triggers", "match", "chunk"})
    ->ArgsProduct({{10, 100, 1000, 10'000}, {None, Few, Many}, {2048}})
    ->Unit(benchmark::kMillisecond);

/// From bytes to attributed text in blocks of the given size: what the pass is to be small beside.
void restOfThePipeline(benchmark::State& state)
{
    static const std::string bytes = znt::bench::gameBytes(wholeText, znt::bench::Prompts::WithGoAhead);
    ZNTParserUtility parser;
    const std::string_view text = bytes;
    const auto blockSize = static_cast<std::size_t>(state.range(0));
    for (auto _ : state) {
        znt::bench::passThrough(parser, text, blockSize,
                                [](const auto& shown) { benchmark::DoNotOptimize(shown); });
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(text.size()) * state.iterations());
}
BENCHMARK(restOfThePipeline)->ArgName("chunk")->Arg(2048)->Arg(1 << 20)->Unit(benchmark::kMillisecond);

/// From the arrival of a line to the command that it triggers.
void answer(benchmark::State& state)
{
    struct FirstCommand final : ZNTTriggerActions {
        std::chrono::steady_clock::time_point sent;
        void sendCommand(std::u16string_view) override { sent = std::chrono::steady_clock::now(); }
        void playTriggerSound(std::u16string_view) override {}
    };
    NoLog log;
    const auto loop = UvRunLoop::open().value();
    ZNTTriggerList list(log, *loop);
    auto triggers = triggersFor(state.range(0), None);
    ZNTTrigger kick;
    kick.check = u"A %1 kicks you hard!";
    kick.action = u"kick %1";
    triggers.push_back(kick);
    list.setTriggers(std::move(triggers));
    FirstCommand actions;
    for (auto _ : state) {
        const auto start = std::chrono::steady_clock::now();
        wholePass(list, u"A goblin kicks you hard!\r\n", actions);
        state.SetIterationTime(std::chrono::duration<double>(actions.sent - start).count());
    }
}
BENCHMARK(answer)->ArgName("triggers")->Arg(0)->Arg(1000)->Arg(10'000)->UseManualTime();

/// What a player waits for when the list changes: everything compiled, then nothing but the filter.
void setTriggers(benchmark::State& state)
{
    NoLog log;
    const auto loop = UvRunLoop::open().value();
    const auto triggers = triggersFor(state.range(0), None);
    for (auto _ : state) {
        ZNTTriggerList list(log, *loop);
        list.setTriggers(triggers);
    }
}
BENCHMARK(setTriggers)->ArgName("triggers")->Arg(1000)->Arg(10'000)->Unit(benchmark::kMillisecond);

void setTriggersAgain(benchmark::State& state)
{
    NoLog log;
    const auto loop = UvRunLoop::open().value();
    const auto triggers = triggersFor(state.range(0), None);
    ZNTTriggerList list(log, *loop);
    list.setTriggers(triggers);
    for (auto _ : state)
        list.setTriggers(triggers);
}
BENCHMARK(setTriggersAgain)->ArgName("triggers")->Arg(1000)->Arg(10'000)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
