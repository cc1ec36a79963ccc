#include "ZNTColourParser.h"

#include "ZNTEscapeSequence.h"
#include "ZNTSgrScanner.h"
#include "ZNTText.h"
#include "ZNTTextCutter.h"
#include "ZNTTextScan.h"

#include <array>
#include <cstdint>
#include <unordered_map>

namespace
{

constexpr double standingSize = 12;

/// The attributes in force while the sequences of one text are walked: for each attribute the code that set
/// it last, 0 for the default. A text has few different sets, however many sequences it has, so each is made
/// once and named by its number.
class AttributeWalk
{
public:
    AttributeWalk(const ZNTColourParser& parser, ZNTAttributedText& result) : parser(parser), result(result)
    {
        applyFrom(0);
    }

    void reset() { codes = {}; }

    void store(int code)
    {
        if (const auto name = ZNTColourParser::attributeNameForCode(code))
            codes[static_cast<std::size_t>(*name)] = static_cast<std::uint8_t>(code);
    }

    /// From `offset` to the end of the text the current attributes hold, whatever held there before.
    void applyFrom(std::size_t offset)
    {
        const auto set = currentSet();
        auto& runs = result.runs;
        const auto start = static_cast<std::uint32_t>(offset);
        while (!runs.empty() && runs.back().offset >= start)
            runs.pop_back();
        if (runs.empty() || runs.back().set != set)
            runs.push_back({start, set});
    }

private:
    std::uint32_t currentSet()
    {
        const std::uint32_t key = std::uint32_t{codes[0]} | std::uint32_t{codes[1]} << 8 |
                                  std::uint32_t{codes[2]} << 16 | std::uint32_t{codes[3]} << 24;
        if (key == lastKey && !result.sets.empty())
            return lastSet;
        lastKey = key;
        const auto [known, isNew] =
            setsByCodes.try_emplace(key, static_cast<std::uint32_t>(result.sets.size()));
        if (isNew)
            result.sets.push_back(makeSet());
        return lastSet = known->second;
    }

    [[nodiscard]] ZNTAttributeSet makeSet() const
    {
        ZNTAttributeSet set;
        parser.setupDefaults(set, ZNTColourParser::Overwrite::Yes);
        for (std::size_t name = 0; name < codes.size(); ++name)
            if (codes[name] != 0)
                set.at(static_cast<ZNTAttributeName>(name)) = parser.attributeForCode(codes[name]);
        return set;
    }

    const ZNTColourParser& parser;
    ZNTAttributedText& result;
    std::array<std::uint8_t, 4> codes{}; // by ZNTAttributeName
    std::unordered_map<std::uint32_t, std::uint32_t> setsByCodes;
    std::uint32_t lastKey = 0;
    std::uint32_t lastSet = 0;
};

/// Carries out sequences one after the other. `shift` counts the characters taken out so far, with two for
/// each sequence's introducer. A group's code holds from the group's own place minus `shift`.
class SequenceWalk
{
public:
    explicit SequenceWalk(AttributeWalk& attributes) : attributes(attributes) {}

    void carryOut(std::u16string_view text, const znt::SgrMatch& match)
    {
        if (match.firstGroupLength != 0) {
            // A reset in the first group takes effect together with the second group.
            if (storeOrReset(text.substr(match.firstGroup, match.firstGroupLength)))
                attributes.applyFrom(shifted(match.firstGroup));
            shift += match.firstGroupLength;
        }
        storeOrReset(text.substr(match.secondGroup, match.secondGroupLength));
        attributes.applyFrom(shifted(match.secondGroup));
        shift += match.secondGroupLength + 2;
    }

private:
    /// False for the code 0, which resets.
    bool storeOrReset(std::u16string_view group)
    {
        const int code = znt::integerValue(group);
        if (code == 0)
            attributes.reset();
        else
            attributes.store(code);
        return code != 0;
    }

    [[nodiscard]] std::size_t shifted(std::size_t groupStart) const
    {
        return groupStart > shift ? groupStart - shift : 0;
    }

    AttributeWalk& attributes;
    std::size_t shift = 2;
};

} // namespace

ZNTAttributedText ZNTColourParser::attributedText(std::u16string text) const
{
    ZNTAttributedText result;
    znt::normaliseSequences(text);
    if (text.empty())
        return result;

    // One pass stores the attributes and closes the gaps that the sequences leave.
    AttributeWalk attributes(*this, result);
    SequenceWalk sequences(attributes);
    ZNTTextCutter cutter(text);
    for (std::size_t at = 0; (at = znt::findUnit(text, znt::escape, at)) != std::u16string::npos;) {
        const auto match = znt::sgrMatchAt(text, at);
        if (!match) {
            ++at;
            continue;
        }
        sequences.carryOut(text, *match);
        cutter.cut(at, match->end());
        at = match->end();
    }
    cutter.finish();
    if (text.empty())
        return {};
    while (!result.runs.empty() && result.runs.back().offset >= text.size())
        result.runs.pop_back(); // a sequence at the very end colours nothing
    result.text = std::move(text);
    return result;
}

ZNTAttributeValue ZNTColourParser::attributeForCode(int code) const
{
    using namespace znt::colours;
    // The codes 31 to 36 and 41 to 46.
    static constexpr std::array coloursByDigit{red, green, yellow, blue, magenta, cyan};
    const int tens = code / 10, digit = code % 10;
    if ((tens == 3 || tens == 4) && digit >= 1 && digit <= static_cast<int>(coloursByDigit.size()))
        return coloursByDigit.at(static_cast<std::size_t>(digit - 1));

    const double size = aNewFont ? aNewFont->size : standingSize;
    switch (code) {
    case 0:
        return clear;
    case 1:
        return ZNTFont{u"Menlo-Bold", size};
    case 2:
    case 3:
    case 4:
    case 5:
    case 6:
    case 7:
    case 8:
        return 1;
    case 10:
        return ZNTFont{u"Menlo", size};
    case 40:
    case 48:
    case 49:
        return black;
    default:
        return white; // foreground black too: it could not be read on a black view
    }
}

std::optional<ZNTAttributeName> ZNTColourParser::attributeNameForCode(int code)
{
    switch (code) {
    case 1:
    case 3:
    case 5:
    case 6:
    case 7:
    case 8:
    case 10:
        return ZNTAttributeName::Font;
    case 4:
        return ZNTAttributeName::Underline;
    default:
        break;
    }
    if (code == 9 || (code >= 11 && code <= 29))
        return std::nullopt;
    if (code >= 30 && code <= 39)
        return ZNTAttributeName::Foreground;
    return ZNTAttributeName::Background;
}

void ZNTColourParser::setupDefaults(ZNTAttributeSet& set, Overwrite overwrite) const
{
    const auto write = [&](ZNTAttributeValue& entry, ZNTAttributeValue value) {
        if (overwrite == Overwrite::Yes || std::holds_alternative<std::monostate>(entry))
            entry = std::move(value);
    };
    write(set.foreground, znt::colours::white);
    write(set.background, znt::colours::black);
    write(set.font, defaultFont());
}

ZNTFont ZNTColourParser::defaultFont() const
{
    return aNewFont ? *aNewFont : ZNTFont{u"Menlo", standingSize};
}
