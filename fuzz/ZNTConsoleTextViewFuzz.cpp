#include "FuzzInput.h"
#include "ZNTBlockDecoder.h"
#include "ZNTColourParser.h"
#include "ZNTNotedOutput.h"
#include "ZNTText.h"

#include <algorithm>
#include <string>

namespace
{

bool isShown(char16_t unit) { return unit >= 0x20 && (unit < 0x7F || unit > 0x9F); }

/// `written` without our own SGR sequences. Any other ESC breaks the promise.
std::string withoutSgr(std::string_view written)
{
    std::string plain;
    for (std::size_t at = 0; at < written.size(); ++at) {
        if (written[at] != '\x1b') {
            plain += written[at];
            continue;
        }
        require(written.substr(at, 3) == "\x1b[0", "a sequence of ours begins with a reset");
        at = written.find_first_not_of("0123456789;", at + 2);
        require(at != written.npos && written[at] == 'm', "a sequence of ours is an SGR sequence");
    }
    return plain;
}

/// Text for a terminal: nothing in it can move the cursor or be taken for an order.
void checkPlain(std::string_view utf8)
{
    const auto text = znt::textFromUtf8(utf8);
    require(znt::utf8FromText(text) == utf8, "the output is well-formed UTF-8");
    require(std::all_of(text.begin(), text.end(),
                        [](char16_t unit) { return isShown(unit) || unit == u'\t' || unit == u'\n'; }),
            "no control character reaches the terminal");
}

/// The part of `text` that a terminal shows, without line ends.
std::u16string shownOf(std::u16string_view text)
{
    std::u16string shown;
    std::copy_if(text.begin(), text.end(), std::back_inserter(shown), isShown);
    return shown;
}

} // namespace

/// A byte that names the encoding, then a game's text with everything that can stand in it.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FuzzInput input(data, size);
    const auto encoding = ZNTStringEncodings[input.byte() % ZNTStringEncodings.size()].encoding;
    FuzzInput cuts(data, size);
    const ZNTColourParser colours;

    ZNTNotedTerminal coloured(ZNTConsoleColour::Always), plain, cut;
    std::u16string all;
    while (!input.empty()) {
        const auto block = input.take(1 + cuts.byte() % 64);
        const auto text = colours.attributedText(znt::textOfBlock(block, encoding));
        coloured.append(text);
        plain.append(text);
        all += text.text;
        for (std::u16string_view rest = text.text; !rest.empty();) {
            const auto length = std::min<std::size_t>(1 + cuts.byte() % 4, rest.size());
            cut << rest.substr(0, length);
            require(cut.input.prompt.find('\n') == std::string::npos, "a prompt is one line");
            checkPlain(cut.input.prompt);
            rest.remove_prefix(length);
        }
    }
    checkPlain(plain.written);
    require(withoutSgr(coloured.written) == plain.written, "colours change nothing of the text");
    require(cut.written == plain.written, "the same is written, whole and cut");
    require(shownOf(znt::textFromUtf8(plain.written)) == shownOf(all),
            "every character but control characters is written");
    return 0;
}
