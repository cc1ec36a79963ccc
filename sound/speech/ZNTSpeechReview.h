#pragma once

#include <cstddef>
#include <deque>
#include <string>
#include <string_view>

class ZNTSpeechSynth;

/// Speaks the last lines again, one by one, newest first.
///
/// It keeps the last received lines that are not empty. A line of the review cuts off what is being said. It
/// is spoken also while speech is off, because the player asked for it.
class ZNTSpeechReview
{
public:
    static constexpr std::size_t mostLines = 1'000;
    /// UTF-16 units that are kept of one line.
    static constexpr std::size_t longestLine = 10'000;

    /// The caller owns `synth`, which outlives this.
    explicit ZNTSpeechReview(ZNTSpeechSynth& synth) : synth(synth) {}

    /// Takes a received chunk's plain text; every chunk ends a line. The place stays on the line spoken last,
    /// however much text comes. It only copies the text; lines are split when the player asks for one.
    void addReceivedText(std::u16string_view plainText);

    /// Speaks the line before the one spoken last, at first the newest; at the oldest, that one again.
    void previousLine();
    /// Speaks the line after the one spoken last; at the newest, that one again.
    void nextLine();
    /// Speaks one line, 1 being the newest, and goes on from there. Past the oldest it is the oldest.
    void lineFromEnd(std::size_t number);
    /// Speaks as many of the last lines, newest first, one after the other.
    void lastLines(std::size_t count);

    /// Goes back to the start: `previousLine` then speaks the newest line. Called when the player sends a
    /// command.
    void startOver() { place = 0; }

private:
    /// UTF-16 units of chunks that wait to be split into lines: more than a thousand lines of game text.
    static constexpr std::size_t mostUnsplit = mostLines * 256;

    void splitWhatCameIn();
    void keepLinesOf(std::u16string_view chunk);
    void speakLineAtPlace();

    ZNTSpeechSynth& synth;
    std::deque<std::u16string> unsplit;
    std::size_t unsplitUnits = 0;
    std::deque<std::u16string> kept;
    /// How far from the end the line is that was spoken last, 1 being the newest; 0 before the first.
    std::size_t place = 0;
};
