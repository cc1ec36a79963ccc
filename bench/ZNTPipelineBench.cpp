// The receive pipeline over game text, each stage alone and all together, as bytes of the game's text a
// second. Where a stage takes a size, times that grow faster than it show as a falling rate.

#include "UvRunLoop.h"
#include "ZNTBlockDecoder.h"
#include "ZNTColourParser.h"
#include "ZNTDecodeFirstReceiver.h"
#include "ZNTFullColourParser.h"
#include "ZNTGameText.h"
#include "ZNTInflater.h"
#include "ZNTParserUtility.h"
#include "ZNTSessionless.h"
#include "ZNTSoundTagScanner.h"
#include "ZNTStandardReceiver.h"
#include "ZNTTelnetScanner.h"
#include "ZNTText.h"

#include <benchmark/benchmark.h>
#include <cstring>
#include <string>
#include <zlib.h>

namespace
{

constexpr std::size_t wholeText = std::size_t{64} << 20;

const std::string& gameText()
{
    static const std::string text = znt::bench::gameBytes(wholeText, znt::bench::Prompts::WithGoAhead);
    return text;
}

std::string hostileText(std::size_t size)
{
    std::string text;
    while (text.size() < size)
        text += "!!(a\x1b[1;2\xFF!!SOUND(\x1b[";
    return text;
}

void setRate(benchmark::State& state, std::size_t bytes)
{
    state.SetBytesProcessed(static_cast<std::int64_t>(bytes) * state.iterations());
}

void copy(benchmark::State& state)
{
    const auto& text = gameText();
    std::string target(text.size(), '\0');
    for (auto _ : state) {
        std::memcpy(target.data(), text.data(), text.size());
        benchmark::DoNotOptimize(target.data());
    }
    setRate(state, text.size());
}
BENCHMARK(copy)->Unit(benchmark::kMillisecond);

void decode(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(znt::textOfBlock(gameText(), ZNTStringEncoding::Ascii));
    setRate(state, gameText().size());
}
BENCHMARK(decode)->Unit(benchmark::kMillisecond);

void answerTelnet(benchmark::State& state)
{
    ZNTParserUtility parser;
    const auto text = znt::textOfBlock(gameText(), ZNTStringEncoding::Ascii);
    for (auto _ : state)
        benchmark::DoNotOptimize(parser.processServerCommands(text));
    setRate(state, text.size());
}
BENCHMARK(answerTelnet)->Unit(benchmark::kMillisecond);

void stripTelnetAndTags(benchmark::State& state)
{
    const auto text = znt::textOfBlock(gameText(), ZNTStringEncoding::Ascii);
    for (auto _ : state) {
        auto stripped = text;
        znt::telnet::stripCommands(stripped);
        znt::stripSoundTags(stripped);
        benchmark::DoNotOptimize(stripped.data());
    }
    setRate(state, text.size());
}
BENCHMARK(stripTelnetAndTags)->Unit(benchmark::kMillisecond);

void colours(benchmark::State& state)
{
    const ZNTColourParser parser;
    const auto text = znt::textOfBlock(gameText(), ZNTStringEncoding::Ascii);
    for (auto _ : state)
        benchmark::DoNotOptimize(parser.attributedText(text));
    setRate(state, text.size());
}
BENCHMARK(colours)->Unit(benchmark::kMillisecond);

void fullColours(benchmark::State& state)
{
    ZNTFullColourParser parser;
    const auto text = znt::textOfBlock(gameText(), ZNTStringEncoding::Ascii);
    for (auto _ : state)
        benchmark::DoNotOptimize(parser.attributedText(text));
    setRate(state, text.size());
}
BENCHMARK(fullColours)->Unit(benchmark::kMillisecond);

/// A colour of its own for each character, unfinished sequences between: the rate must not fall with the
/// size.
void fullColoursOfHostileText(benchmark::State& state)
{
    ZNTFullColourParser parser;
    std::u16string text;
    for (int colour = 0; text.size() < static_cast<std::size_t>(state.range(0)) << 20; ++colour)
        text += u"\x1b[38;2;" + znt::textFromUtf8(std::to_string(colour % 251)) + u";7;" +
                znt::textFromUtf8(std::to_string(colour % 241)) + u"mx\x1b]\x1b[2J\x1b[;;;;";
    for (auto _ : state)
        benchmark::DoNotOptimize(parser.attributedText(text));
    setRate(state, text.size());
}
BENCHMARK(fullColoursOfHostileText)->Arg(1)->Arg(16)->Arg(64)->Iterations(1)->Unit(benchmark::kMillisecond);

void inflateBlocks(benchmark::State& state)
{
    const auto& text = gameText();
    std::string compressed(compressBound(text.size()), '\0');
    auto length = static_cast<uLongf>(compressed.size());
    compress2(reinterpret_cast<Bytef*>(compressed.data()), &length,
              reinterpret_cast<const Bytef*>(text.data()), text.size(), Z_BEST_SPEED);
    compressed.resize(length);
    for (auto _ : state) {
        ZNTInflater inflater;
        inflater.startStream();
        for (std::size_t at = 0; at < compressed.size(); at += 65536)
            benchmark::DoNotOptimize(inflater.anotherInflate(std::string_view(compressed).substr(at, 65536)));
    }
    setRate(state, text.size());
}
BENCHMARK(inflateBlocks)->Unit(benchmark::kMillisecond);

/// Decoding to attributed text, in blocks of the given size.
void bytesToAttributedText(benchmark::State& state)
{
    ZNTParserUtility parser;
    const std::string_view text = gameText();
    const auto blockSize = static_cast<std::size_t>(state.range(0));
    for (auto _ : state) {
        znt::bench::passThrough(parser, text, blockSize,
                                [](const auto& shown) { benchmark::DoNotOptimize(shown); });
    }
    setRate(state, text.size());
}
BENCHMARK(bytesToAttributedText)
    ->Arg(1024)
    ->Arg(65536)
    ->Arg(1 << 20)
    ->Arg(1 << 26)
    ->Unit(benchmark::kMillisecond);

/// The two ways to read a game, side by side: what a session does with each block up to coloured text.
template <typename Colours>
void readAndColour(benchmark::State& state, ZNTReceiver& receiver, Colours& colours, std::string_view bytes)
{
    const auto blockSize = static_cast<std::size_t>(state.range(0));
    for (auto _ : state) {
        receiver.startStream();
        for (std::size_t at = 0; at < bytes.size(); at += blockSize) {
            auto received = receiver.read(bytes.substr(at, blockSize), ZNTStringEncoding::Ascii);
            receiver.stripCommands(received.text);
            znt::stripSoundTags(received.text);
            benchmark::DoNotOptimize(colours.attributedText(std::move(received.text)));
        }
    }
    setRate(state, bytes.size());
}

void settledWay(benchmark::State& state)
{
    ZNTParserUtility parser;
    ZNTDecodeFirstReceiver receiver(parser);
    readAndColour(state, receiver, parser.colours(), gameText());
}
BENCHMARK(settledWay)->Arg(1024)->Arg(65536)->Arg(1 << 20)->Unit(benchmark::kMillisecond);

void standardWay(benchmark::State& state)
{
    ZNTStandardReceiver receiver({.fullColours = true});
    ZNTFullColourParser colours;
    readAndColour(state, receiver, colours, gameText());
}
BENCHMARK(standardWay)->Arg(1024)->Arg(65536)->Arg(1 << 20)->Unit(benchmark::kMillisecond);

void standardWayOfHostileText(benchmark::State& state)
{
    ZNTStandardReceiver receiver({.fullColours = true});
    ZNTFullColourParser colours;
    readAndColour(state, receiver, colours, hostileText(std::size_t{16} << 20));
}
BENCHMARK(standardWayOfHostileText)
    ->Arg(1024)
    ->Arg(65536)
    ->Arg(1 << 24)
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);

/// One block of growing size: the rate must not fall.
void oneBlock(benchmark::State& state)
{
    ZNTParserUtility parser;
    const auto size = static_cast<std::size_t>(state.range(0)) << 20;
    const auto text = znt::textOfBlock(state.range(1) ? hostileText(size) : znt::bench::gameBytes(size),
                                       ZNTStringEncoding::Ascii);
    for (auto _ : state)
        benchmark::DoNotOptimize(parser.processIncomingStream(text));
    setRate(state, text.size());
}
BENCHMARK(oneBlock)
    ->ArgNames({"MiB", "hostile"})
    ->ArgsProduct({{1, 16, 256}, {0, 1}})
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
