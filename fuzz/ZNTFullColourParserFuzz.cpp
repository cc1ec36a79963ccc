#include "FuzzInput.h"
#include "FuzzRequire.h"
#include "ZNTFullColourParser.h"

#include <string>
#include <vector>

namespace
{

/// What a view is given: the text, and for each unit its attributes.
struct Shown {
    std::u16string text;
    std::vector<ZNTAttributeSet> attributes;

    void add(const ZNTAttributedText& piece)
    {
        require(piece.text.empty() == piece.runs.empty() && (piece.empty() || piece.runs[0].offset == 0),
                "all of the text has attributes");
        for (std::size_t run = 0; run < piece.runs.size(); ++run) {
            const auto from = piece.runs[run].offset;
            const auto to = run + 1 < piece.runs.size() ? piece.runs[run + 1].offset : piece.text.size();
            require(from < to && to <= piece.text.size(), "runs are in order, and none is empty");
            const auto& set = piece.sets.at(piece.runs[run].set);
            require(std::holds_alternative<ZNTColour>(set.foreground) &&
                        std::holds_alternative<ZNTColour>(set.background) &&
                        std::holds_alternative<ZNTFont>(set.font) &&
                        !std::holds_alternative<ZNTColour>(set.underline) &&
                        !std::holds_alternative<ZNTFont>(set.underline),
                    "every attribute is of its kind");
            attributes.insert(attributes.end(), to - from, set);
        }
        text += piece.text;
    }
};

} // namespace

/// A game's text, one unit a byte.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::u16string text(data, data + size);
    ZNTFullColourParser parser;
    Shown whole, cut;
    whole.add(parser.attributedText(text));

    parser.reset();
    FuzzInput cuts(data, size);
    for (std::u16string_view rest = text; !rest.empty();) {
        const auto piece = rest.substr(0, 1 + cuts.byte() % 16);
        rest.remove_prefix(piece.size());
        cut.add(parser.attributedText(std::u16string(piece)));
    }
    require(whole.text == cut.text && whole.attributes == cut.attributes,
            "text means the same, whole and cut");
    require(whole.text.find(u'\x1b') == whole.text.npos, "no sequence begins in the text");
    require(whole.text.size() <= text.size(), "the text does not grow");
    return 0;
}
