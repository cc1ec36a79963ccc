// How late a voice says the lines of a game, by the settings of speech. The voice and the game are simulated,
// time is virtual, and the output is one table of Markdown. Usage: zantor_speech_delays [WORDS_A_MINUTE]

#include "VirtualRunLoop.h"
#include "ZNTScreenReader.h"
#include "ZNTSpeechHandOver.h"
#include "ZNTSpeechSynth.h"
#include "ZNTText.h"
#include "ZNTTimedSpeech.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace
{

struct Scene {
    const char* name;
    int chunks, linesOfAChunk;
    double interval;          ///< seconds between two chunks
    bool isFirstText = false; ///< it comes before the player's first line
};
constexpr Scene scenes[] = {
    {"fight, 4 lines every 2 s for 60 s", 30, 4, 2}, {"burst of 500 lines", 1, 500, 0},
    {"flood of 1,000 lines in 1 s", 100, 10, 0.01},  {"description of 12 lines", 1, 12, 0},
    {"welcome of 12 lines", 1, 12, 0, true},         {"talk, a line every 4 s for 60 s", 15, 1, 4}};

struct Manner {
    const char* name;
    bool followsVoice, catchesUp;
    ZNTSpeechQueue::Finished finished = ZNTSpeechQueue::Finished::None;
};
constexpr Manner manners[] = {{"default", false, false},
                              {"follow-voice", true, false},
                              {"follow-voice, catch-up", true, true},
                              {"set up for listening", true, true, ZNTSpeechQueue::Finished::First}};

/// Counted by the lines that are found in what was said. Delays are seconds from a line's arrival to its
/// begin.
struct Delays {
    int said = 0, announced = 0, notices = 0;
    double first = 0, last = 0, most = 0, end = 0;
};

std::u16string lineNumbered(int number)
{
    return u"(" + znt::decimalText(number) + u") A large goblin guard slashes at you with a rusty sword.";
}

Delays measure(const Scene& scene, const Manner& manner, double wordsPerMinute)
{
    VirtualRunLoop loop;
    ZNTTimedSpeech engine(loop);
    engine.wordsPerMinute = wordsPerMinute;
    ZNTNoScreenReader reader;
    ZNTSpeechSynth synth(loop, engine, reader);
    synth.setFollowsVoice(manner.followsVoice);
    synth.setCatchesUp(manner.catchesUp);
    synth.setFinishedTexts(manner.finished);
    synth.speechOn();
    synth.firstTextBegins();
    loop.advance(10.2); // between two polls
    if (!scene.isFirstText)
        synth.firstTextEnds();

    const double start = loop.now();
    for (int chunk = 0; chunk < scene.chunks; ++chunk) {
        std::u16string text;
        for (int line = 0; line < scene.linesOfAChunk; ++line)
            text += lineNumbered(chunk * scene.linesOfAChunk + line) + u"\r\n";
        ZNTSpeechHandOver(synth).speakOnNewThread(text); // its end waits for its thread
        loop.advance(scene.interval);
    }
    loop.advance(20'000);

    Delays delays;
    for (const auto& one : engine.said) {
        if (one.text.ends_with("skipped.")) {
            delays.announced += std::atoi(one.text.c_str());
            ++delays.notices;
        }
        // An utterance may hold several lines. Each begins after the words before it.
        for (auto at = one.text.find('('); at != std::string::npos; at = one.text.find('(', at + 1)) {
            const auto words = znt::wordCount(znt::textFromUtf8(one.text.substr(0, at)));
            const double begin = one.begin + static_cast<double>(words) / wordsPerMinute * 60;
            const int chunk = std::atoi(one.text.c_str() + at + 1) / scene.linesOfAChunk;
            const double delay = begin - start - chunk * scene.interval;
            delays.first = delays.said++ == 0 ? delay : delays.first;
            delays.last = delay;
            delays.most = std::max(delays.most, delay);
        }
        delays.end = one.end - start;
    }
    return delays;
}

} // namespace

int main(int count, char** arguments)
{
    const double wordsPerMinute = count > 1 ? std::atof(arguments[1]) : 200;
    if (wordsPerMinute < 1)
        return 2;
    std::printf(
        "| scene | settings | lines | said | skipped (notices) | delay of the first | of the last | most "
        "| silent after |\n|---|---|---|---|---|---|---|---|---|\n");
    for (const auto& scene : scenes)
        for (const auto& manner : manners) {
            const auto delays = measure(scene, manner, wordsPerMinute);
            std::printf("| %s | %s | %d | %d | %d (%d) | %.2f s | %.1f s | %.1f s | %.0f s |\n", scene.name,
                        manner.name, scene.chunks * scene.linesOfAChunk, delays.said, delays.announced,
                        delays.notices, delays.first, delays.last, delays.most, delays.end);
        }
}
