#pragma once

#include "ZNTAttributedText.h"
#include "ZNTConsoleOutput.h"
#include "ZNTLineEnds.h"
#include "ZNTScreenElements.h"

#include <optional>
#include <string>
#include <string_view>
#include <utility>

enum class ZNTConsoleColour { Never, Always };

/// How many colours a terminal has.
enum class ZNTColourDepth { Sixteen, Numbered /**< 256 */, Exact /**< 24 bits */ };

namespace znt
{

/// As the terminal says in the variables COLORTERM and TERM of the environment; empty if not set.
ZNTColourDepth colourDepth(std::string_view colorterm, std::string_view term);

} // namespace znt

/// The output view of the terminal client: text as UTF-8 with "\n" for each line break. Nothing that a server
/// sent reaches the terminal as a control character; colours are SGR sequences of our own (ECMA-48), and only
/// those that differ from the terminal's standing colours. A colour that the terminal lacks is shown as the
/// nearest one that it has.
class ZNTConsoleTextView final : public ZNTTextView
{
public:
    /// `output` outlives this.
    ZNTConsoleTextView(ZNTConsoleColour colour, ZNTConsoleOutput& output,
                       ZNTColourDepth depth = ZNTColourDepth::Sixteen)
        : colour(colour),
          depth(depth),
          output(output)
    {
    }

    void append(const ZNTAttributedText& text) override;
    /// The terminal shows this line of the player's already, with its line end. If it is appended next, it is
    /// not written again. None: forget it.
    void setLineOnScreen(std::optional<std::u16string> line) { lineOnScreen = std::move(line); }
    void scrollToEnd() override {}
    void clear() override {}
    void setEditable(bool) override {}

private:
    [[nodiscard]] bool isOnScreen(std::u16string_view text);
    void appendCharacters(std::u16string_view characters);
    void appendCharacter(char16_t unit);
    void appendSgr(std::string_view parameters);
    void flushIfLarge();
    void flush();

    ZNTConsoleColour colour;
    ZNTColourDepth depth;
    ZNTConsoleOutput& output;
    ZNTLineEnds lineEnds;
    std::optional<std::u16string> lineOnScreen;
    std::string pending;
    std::u16string lastLine;    ///< what no line break has ended yet: a prompt, as a rule
    char16_t leadSurrogate = 0; ///< the first half of a character whose second half is still to come
    std::string sgrInForce = "0";
};
