#include "ZNTDeflated.h"
#include "ZNTSessionFixture.h"

#include <algorithm>

namespace
{

const std::string plain =
    "\x1b[31mA\x1b[1;44mred,bold\x1b[0m\r\n\xFF\xFB\x03!!SOUND(w/bell.wav)\n\xFF\xFB\x18,bells"
    "\x1b[32m,green";
const std::string startOfCompression = "\xFF\xFA\x56\xFF\xF0\n";

/// A connection whose game sends the same in blocks that are cut at any byte. Some seams do change something,
/// and this stream has none of those:
/// - An offer is answered only if it is whole in its block. So replies are compared where no offer is cut.
/// - Spaces and tabs at the ends of a block that is held back are trimmed. The stream has none.
/// - Text is shown at once at IAC GA and IAC WONT, and what follows is coloured by itself. The stream has
///   neither, and all of it is shown at one silence.
/// - What follows the start of compression in its block is taken as plain. That start is a block of its own.
/// - An inflated block ends with zero bytes, which would part a sequence or a tag. So the compressed part is
///   text alone, and zero bytes are left out of what is compared.
class Seams : public ZNTSessionFixture
{
protected:
    struct Outcome {
        std::u16string text;
        std::vector<ZNTAttributeSet> attributes; ///< of each character
        std::string replies;
        std::size_t soundsPlayed;
        bool operator==(const Outcome&) const = default;
    };

    void receiveCutAt(const std::string& bytes, std::size_t cut)
    {
        receive(bytes.substr(0, cut));
        receive(bytes.substr(cut));
    }
    /// Neither cut is made if it is 0.
    Outcome outcomeOfCuts(std::size_t plainCut, std::size_t compressedCut)
    {
        view.clear();
        sounds.made.clear();
        connect();
        receiveCutAt(plain, plainCut);
        receive(startOfCompression);
        receiveCutAt(deflated(",packed,but\r\nstill,green", Z_SYNC_FLUSH), compressedCut);
        silence();
        Outcome outcome{{}, {}, server.received(), sounds.made.size()};
        for (const auto& piece : view.pieces)
            for (std::size_t at = 0; at < piece.text.size(); ++at)
                if (piece.text[at] != 0) {
                    outcome.text += piece.text[at];
                    outcome.attributes.push_back(*piece.attributesAt(at));
                }
        session().connectToServer(); // ends the connection
        return outcome;
    }
};

} // namespace

TEST_F(Seams, ChangeNeitherTextNorColoursNorRepliesNorSounds)
{
    session().acceptCompressionOffers(true);
    session().set_isMspOnOff(true);
    // A tag without a blank takes its closing parenthesis for a part of the name.
    machine.home.write("Music/Zantor/sounds/w/bell.wav)", "a sound");
    const auto whole = outcomeOfCuts(0, 0);
    EXPECT_EQ(whole.text, u"Ared,bold\r\n\n,bells,green,packed,but\r\nstill,green");
    EXPECT_EQ(whole.replies, "\xFF\x19\x03\xFF\xFC\x18");
    EXPECT_EQ(whole.soundsPlayed, 1u);
    for (std::size_t cut = 1; cut < plain.size(); ++cut) {
        SCOPED_TRACE(cut);
        auto outcome = outcomeOfCuts(cut, 0);
        const auto before = plain.substr(cut < 2 ? 0 : cut - 2, std::min<std::size_t>(cut, 2));
        if (before.find('\xFF') != before.npos)
            outcome.replies = whole.replies;
        EXPECT_TRUE(outcome == whole);
    }
    for (std::size_t cut = 1; cut < deflated(",packed,but\r\nstill,green", Z_SYNC_FLUSH).size(); ++cut) {
        SCOPED_TRACE(cut);
        EXPECT_TRUE(outcomeOfCuts(0, cut) == whole);
    }
}

TEST_F(Seams, CostNoLineAndNoCommandIfFinishedLinesAreShownAtOnce)
{
    ZNTSettings settings;
    settings.wholeLines = settings.compression = settings.sounds = true;
    session().setSettings(settings);
    machine.home.write("Music/Zantor/sounds/w/bell.wav", "a sound");
    // Options and letters of the game may have the values of line ends.
    const std::string lines = " One \r\n  two \xFF\xFB\x0A\r\n\xFF\xFB\x18!!SOUND(w/bell.wav V=5)\r\n"
                              "HP> \xFF\xF9\nthree\xFF\r\n\xFF\xFB\x03\xFF\xF1\n\rend ";
    for (const auto& bytes : {lines, deflated(lines, Z_SYNC_FLUSH)})
        for (std::size_t cut = 0; cut < bytes.size(); ++cut) {
            SCOPED_TRACE(cut);
            sounds.made.clear();
            connect();
            receive(bytes == lines ? "" : startOfCompression);
            view.clear();
            const auto before = server.received().size();
            receiveCutAt(bytes, cut);
            silence();
            EXPECT_EQ(shown(), u" One \r\n  two \r\n\r\nHP> \nthree\r\n\n\rend ");
            EXPECT_EQ(server.received().substr(before), "\xFF\xFC\x18\xFF\x19\x03");
            EXPECT_EQ(sounds.made.size(), 1u);
            session().connectToServer(); // ends the connection
        }
}
