#pragma once

#include "ZNTAttributedText.h"
#include "ZNTEscapeSequence.h"
#include "ZNTGraphicRendition.h"

#include <optional>
#include <string>

/// Turns a game's text with escape sequences into attributed text, as a terminal would show it: every SGR
/// code that games use becomes attributes (ZNTGraphicRendition), and every other sequence is taken out
/// (EscapeSequence says what is one). A cleared screen begins a fresh line.
///
/// What holds at the end of a piece goes on in the next: the attributes, and a sequence that is not finished.
/// So text means the same wherever it is cut. Linear in the text, with at most `longestSequence` units more
/// a piece. It belongs to one thread.
class ZNTFullColourParser
{
public:
    /// The font and size of text that no sequence changes. None means Menlo at 12.
    void setFont(std::optional<ZNTFont> font) { standing = std::move(font).value_or(usualFont); }

    /// For a new connection: plain text at the beginning of a line.
    void reset();

    [[nodiscard]] ZNTAttributedText attributedText(std::u16string text);

private:
    [[nodiscard]] bool beginsFreshLine(const znt::EscapeSequence& sequence);

    inline static const ZNTFont usualFont{u"Menlo", 12};

    ZNTFont standing = usualFont;
    ZNTGraphicRendition rendition;
    std::u16string unfinished;  ///< a sequence, from its ESC; shorter than the longest one
    char16_t lastShown = u'\n'; ///< the last unit of the text so far
    bool isAtHome = false;      ///< the game put the cursor to the first cell, and no text came since
};
