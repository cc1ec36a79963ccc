#include "ZNTSettings.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <type_traits>

namespace
{

ZNTError complaint(std::string sentence) { return {"ZNTSettings", 0, std::move(sentence)}; }

std::optional<int> wholeNumber(std::string_view text)
{
    int number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() ? std::optional(number) : std::nullopt;
}

// One pair of functions for each type that a setting may have.

std::string textOf(bool isOn) { return isOn ? "on" : "off"; }
std::string textOf(int number) { return std::to_string(number); }
std::string textOf(ZNTStringEncoding encoding) { return std::string(znt::rowOf(encoding).name); }
std::string textOf(const ZNTTextList& list) { return znt::joinedTexts(list); }

void readText(std::string_view text, const ZNTSettingRow&, std::optional<bool>& value)
{
    if (text == "on" || text == "off")
        value = text == "on";
}
void readText(std::string_view text, const ZNTSettingRow& row, std::optional<int>& value)
{
    const auto number = wholeNumber(text);
    if (number && *number >= row.least && *number <= row.most)
        value = number;
}
void readText(std::string_view text, const ZNTSettingRow&, std::optional<ZNTStringEncoding>& value)
{
    value = znt::encodingNamed(text);
}
void readText(std::string_view text, const ZNTSettingRow&, std::optional<ZNTTextList>& value)
{
    value = znt::textsIn(text);
}

std::string choices(const ZNTSettingRow&, bool) { return "on or off"; }
std::string choices(const ZNTSettingRow& row, int)
{
    return "a number from " + std::to_string(row.least) + " to " + std::to_string(row.most);
}
std::string choices(const ZNTSettingRow&, ZNTStringEncoding) { return znt::encodingNames(", ", " or "); }
std::string choices(const ZNTSettingRow&, const ZNTTextList&)
{
    return "up to " + std::to_string(znt::mostTextsOfList) +
           " texts with \";\" between them, each of up to " + std::to_string(znt::longestTextOfList) +
           " bytes";
}

/// What was said for a value, as a complaint repeats it: not pages of it.
std::string quoted(std::string_view text)
{
    constexpr std::size_t longest = 80;
    auto end = std::min(text.size(), longest);
    while (end < text.size() && end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80)
        --end; // a character stays whole
    return "\"" + std::string(text.substr(0, end)) + (end < text.size() ? "...\"" : "\"");
}

std::string allNames()
{
    std::string names;
    for (const auto& row : ZNTSettingsTable) {
        if (!names.empty())
            names += &row == &ZNTSettingsTable.back() ? " and " : ", ";
        names += row.name;
    }
    return names;
}

} // namespace

namespace znt
{

const ZNTSettingRow* settingNamed(std::string_view name)
{
    const auto* found = std::ranges::find(ZNTSettingsTable, name, &ZNTSettingRow::name);
    return found == ZNTSettingsTable.end() ? nullptr : found;
}

std::string followsInWords(const ZNTSettingRow& row)
{
    return row.follows.empty() ? "" : "Until it is set it is as " + std::string(row.follows) + ".";
}

std::string settingText(const ZNTSettings& settings, const ZNTSettingRow& row)
{
    return std::visit([&](auto field) { return textOf(settings.*field); }, row.field);
}

ZNTResult<void> changeSetting(ZNTSettings& settings, std::string_view name, std::string_view text)
{
    const auto* row = settingNamed(name);
    if (!row)
        return complaint("There is no setting " + std::string(name) + "; there are " + allNames() + ".");
    return std::visit(
        [&](auto field) -> ZNTResult<void> {
            std::optional<std::remove_reference_t<decltype(settings.*field)>> value;
            readText(text, *row, value);
            if (!value)
                return complaint("The setting " + std::string(name) + " is " +
                                 choices(*row, settings.*field) + ", not " + quoted(text) + ".");
            settings.*field = *value;
            return {};
        },
        row->field);
}

ZNTResult<void> addAssignment(ZNTSettingValues& values, std::string_view assignment)
{
    const auto sign = assignment.find('=');
    if (sign == assignment.npos)
        return complaint("Say NAME=VALUE, as in speech=on.");
    const auto name = assignment.substr(0, sign), text = assignment.substr(sign + 1);
    ZNTSettings tried;
    if (auto changed = changeSetting(tried, name, text); !changed)
        return changed;
    values.insert_or_assign(std::string(name), std::string(text));
    return {};
}

std::string complaintAboutAssignment(const std::string& assignment)
{
    ZNTSettingValues values;
    const auto added = addAssignment(values, assignment);
    return added ? "" : added.error().description;
}

} // namespace znt
