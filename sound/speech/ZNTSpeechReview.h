#pragma once

#include "ZNTLineCursor.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <string_view>

class ZNTSpeechSynth;

/// Speaks the last lines again, one by one, newest first; parts of a line; and lines with certain words.
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

    /// Whether there is nothing to go through: no line has come, and the last command is not read either.
    [[nodiscard]] bool isEmpty();

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
    void startOver() { goTo(0); }

    /// Speaks a word or a letter of the line spoken last, at first of the newest one.
    void speakPart(ZNTLineCursor::Unit unit, ZNTLineCursor::Way way);

    /// Speaks the newest line with `text` in it, without regard to case, and goes on from there. Before the
    /// line it says which of the lines with the text this is: "2 of 3", 1 being the oldest. If there is none,
    /// says so and stays. Empty text finds nothing.
    void find(std::u16string_view text);
    /// The same for lines before or after the one spoken last, with the text that was looked for last.
    void findOlder();
    void findNewer();
    [[nodiscard]] const std::u16string& searchedText() const { return wanted; }

    /// To be called for each command of the player's.
    void noteCommand(std::u16string_view command);
    /// Speaks the last command. The next line is then the first that came after it, the previous one the last
    /// that came before.
    void goToLastCommand();

private:
    /// UTF-16 units of chunks that wait to be split into lines: more than a thousand lines of game text.
    static constexpr std::size_t mostUnsplit = mostLines * 256;

    void splitWhatCameIn();
    void keepLinesOf(std::u16string_view chunk);
    void goTo(std::size_t newPlace);
    void speakLineAtPlace();
    [[nodiscard]] const std::u16string& lineAt(std::size_t number) const;
    void findFrom(std::size_t number, int step);
    [[nodiscard]] bool isFoundIn(const std::u16string& line) const;
    /// Which of the lines with the text the one at the place is: "2 of 3".
    [[nodiscard]] std::u16string placeAmongFound() const;

    ZNTSpeechSynth& synth;
    std::deque<std::u16string> unsplit;
    std::size_t unsplitUnits = 0;
    std::deque<std::u16string> kept;
    std::uint64_t linesEver = 0;
    /// How far from the end the line is that was spoken last, 1 being the newest; 0 before the first.
    std::size_t place = 0;
    /// The place is between the line there and the next one, where the last command was given.
    bool isAtCommand = false;
    ZNTLineCursor cursor;   ///< in the line spoken last, or in the command
    bool hasCursor = false; ///< has that line
    std::u16string wanted;  ///< looked for last
    std::u16string foldedWanted;
    std::u16string lastCommand;
    std::uint64_t linesAtCommand = 0; ///< `linesEver` when it was given
};
