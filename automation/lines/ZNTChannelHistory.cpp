#include "ZNTChannelHistory.h"

#include "ZNTLine.h"
#include "ZNTText.h"

#include <algorithm>
#include <utility>

namespace
{

/// For patterns without the name of a channel.
constexpr std::u16string_view unnamedChannel = u"lines";

/// Letters of other scripts stand above ASCII.
bool canBeInName(char16_t unit)
{
    return unit >= 0x80 || unit == u' ' || unit == u'-' || unit == u'_' || (unit >= u'0' && unit <= u'9') ||
           (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z');
}

bool areSameNames(std::u16string_view one, std::u16string_view other)
{
    return std::ranges::equal(one, other, {}, znt::asciiLowered<char16_t>, znt::asciiLowered<char16_t>);
}

/// "NAME: PATTERN" in its two parts.
std::pair<std::u16string_view, std::u16string_view> partsOf(std::u16string_view entry)
{
    const auto colon = entry.find(u':');
    if (colon == entry.npos || colon == 0 || !std::ranges::all_of(entry.substr(0, colon), canBeInName))
        return {unnamedChannel, entry};
    return {znt::trimmedOfWhitespace(entry.substr(0, colon)),
            znt::trimmedOfWhitespace(entry.substr(colon + 1))};
}

bool isControl(char16_t unit) { return unit < 0x20 || (unit >= 0x7F && unit < 0xA0); }

/// Some front ends write it to a terminal.
std::u16string withoutControls(std::u16string_view line)
{
    std::u16string text;
    for (const auto unit : line) {
        if (unit == u'\t')
            text += u' ';
        else if (!isControl(unit))
            text += unit;
    }
    return std::u16string(znt::trimmedOfWhitespace(text));
}

std::u16string counted(std::size_t count, std::u16string_view what)
{
    return znt::decimalText(static_cast<std::int64_t>(count)) + u" " + std::u16string(what) +
           (count == 1 ? u"" : u"s");
}

} // namespace

std::u16string znt::timeAgo(std::chrono::system_clock::duration age)
{
    struct Unit {
        std::chrono::seconds length, upTo;
        std::u16string_view name;
    };
    using namespace std::chrono_literals;
    static constexpr Unit units[] = {
        {1s, 60s, u"second"}, {60s, 3'600s, u"minute"}, {3'600s, 86'400s, u"hour"}, {86'400s, 0s, u"day"}};
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(age);
    if (seconds < 10s) // also if the clock was set back
        return u"just now";
    const auto* unit =
        std::ranges::find_if(units, [&](const Unit& one) { return seconds < one.upTo || one.upTo == 0s; });
    return counted(static_cast<std::size_t>(seconds / unit->length), unit->name) + u" ago";
}

std::size_t ZNTChannelHistory::channelNamed(std::u16string_view name) const
{
    const auto found =
        std::ranges::find_if(channels, [&](const Channel& one) { return areSameNames(one.name, name); });
    return static_cast<std::size_t>(found - channels.begin());
}

bool ZNTChannelHistory::has(std::u16string_view channel) const
{
    return channelNamed(channel) < channels.size();
}

std::vector<std::u16string>
ZNTChannelHistory::setChannels(const std::optional<std::vector<std::string>>& wanted)
{
    if (wanted == list)
        return {};
    list = wanted;
    const auto before = std::exchange(channels, {});
    channelOfPattern.clear();
    present = place = 0;
    std::vector<std::u16string> texts;
    for (const auto& utf8 : wanted.value_or(std::vector<std::string>())) {
        const auto entry = znt::textFromUtf8(utf8);
        const auto [name, pattern] = partsOf(entry);
        if (pattern.empty())
            continue;
        const auto channel = channelNamed(name);
        if (channel == channels.size()) {
            const auto known = std::ranges::find(before, name, &Channel::name);
            channels.push_back(known == before.end() ? Channel{std::u16string(name), {}} : *known);
        }
        channelOfPattern.push_back(channel);
        texts.emplace_back(pattern);
    }
    return patterns.setPatterns(texts);
}

void ZNTChannelHistory::addText(std::u16string_view plainText)
{
    if (channels.empty() || !patterns.begin(plainText))
        return;
    while (!plainText.empty()) {
        const auto line = ZNTLine::takenFrom(plainText);
        ++linesSeen;
        std::vector<std::size_t> kept;
        for (const auto pattern : patterns.matchesIn(line.text)) {
            const auto channel = channelOfPattern[pattern];
            if (std::ranges::find(kept, channel) != kept.end())
                continue;
            kept.push_back(channel);
            keep(channels[channel], line.text);
        }
    }
}

void ZNTChannelHistory::keep(Channel& channel, std::u16string_view line)
{
    auto text = withoutControls(line.substr(0, longestLine));
    if (text.empty())
        return;
    channel.lines.push_back({channel.name, std::move(text), clock.timeOfDay(), linesSeen});
    if (channel.lines.size() > mostLines)
        channel.lines.pop_front();
    if (place > 0 && &channel == &channels[present])
        place = std::min(place + 1, channel.lines.size());
}

std::vector<std::u16string> ZNTChannelHistory::channelNames() const
{
    std::vector<std::u16string> names;
    for (const auto& channel : channels)
        names.push_back(channel.name);
    return names;
}

std::vector<ZNTChannelLine> ZNTChannelHistory::lines(std::u16string_view wanted) const
{
    std::vector<ZNTChannelLine> all;
    for (const auto& channel : channels)
        if (wanted.empty() || areSameNames(wanted, channel.name))
            all.insert(all.end(), channel.lines.begin(), channel.lines.end());
    std::ranges::stable_sort(all, {}, &ZNTChannelLine::number);
    const auto twice = std::ranges::unique(all, {}, &ZNTChannelLine::number);
    all.erase(twice.begin(), twice.end());
    return all;
}

std::u16string ZNTChannelHistory::newest()
{
    place = 1;
    return lineAtPlace();
}

std::u16string ZNTChannelHistory::older()
{
    ++place;
    return lineAtPlace();
}

std::u16string ZNTChannelHistory::newer()
{
    place = place > 1 ? place - 1 : 1;
    return lineAtPlace();
}

std::u16string ZNTChannelHistory::nextChannel()
{
    if (channels.empty())
        return nothingInWords({});
    present = (present + 1) % channels.size();
    const auto& [name, kept] = channels[present];
    if (kept.empty()) {
        place = 0;
        return nothingInWords(name);
    }
    return name + u", " + counted(kept.size(), u"line") + u". " + newest();
}

std::u16string ZNTChannelHistory::lineAtPlace()
{
    if (channels.empty())
        return nothingInWords({});
    const auto& [name, kept] = channels[present];
    place = std::min(place, kept.size());
    return place == 0 ? nothingInWords(name) : inWords(kept[kept.size() - place]);
}

std::u16string ZNTChannelHistory::inWords(const ZNTChannelLine& line) const
{
    return znt::timeAgo(clock.timeOfDay() - line.time) + u": " + line.text;
}

std::u16string ZNTChannelHistory::nothingInWords(std::u16string_view channel) const
{
    if (!list)
        return u"The channel history is off. " + howToSwitchOn;
    if (channels.empty())
        return u"There are no channels. " + whereChannelsAre;
    return channel.empty() ? u"No channel has a line yet."
                           : u"The channel " + std::u16string(channel) + u" has no line yet.";
}
