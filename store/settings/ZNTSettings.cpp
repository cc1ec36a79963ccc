#include "ZNTSettings.h"

#include <algorithm>
#include <charconv>
#include <concepts>
#include <optional>
#include <type_traits>
#include <utility>

namespace
{

ZNTError complaint(std::string sentence) { return {"ZNTSettings", 0, std::move(sentence)}; }

/// What was said for a value, as a complaint repeats it: not pages of it.
std::string quoted(std::string_view text)
{
    constexpr std::size_t longest = 80;
    auto end = std::min(text.size(), longest);
    while (end < text.size() && end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80)
        --end; // a character stays whole
    return "\"" + std::string(text.substr(0, end)) + (end < text.size() ? "...\"" : "\"");
}

ZNTError complaintAbout(std::string_view name, const std::string& values, std::string_view text)
{
    return complaint("The setting " + std::string(name) + " is " + values + ", not " + quoted(text) + ".");
}

std::optional<int> wholeNumber(std::string_view text)
{
    int number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() ? std::optional(number) : std::nullopt;
}

template <typename Enum>
concept Choice = (znt::settingChoices<Enum>.size() > 0);

// Functions for each type that a setting may have.

std::string textOf(bool isOn) { return isOn ? "on" : "off"; }
std::string textOf(int number) { return std::to_string(number); }
std::string textOf(ZNTStringEncoding encoding) { return std::string(znt::rowOf(encoding).name); }
std::string textOf(const ZNTTextList& list) { return znt::joinedTexts(list); }
template <Choice Enum>
std::string textOf(Enum choice)
{
    return std::string(znt::settingChoices<Enum>[static_cast<std::size_t>(choice)].name);
}

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
template <Choice Enum>
void readText(std::string_view text, const ZNTSettingRow&, std::optional<Enum>& value)
{
    const auto& choices = znt::settingChoices<Enum>;
    const auto found = std::ranges::find_if(choices, [&](const auto& choice) {
        return text == choice.name || (text == choice.formerName && !text.empty());
    });
    if (found != choices.end())
        value = static_cast<Enum>(found - choices.begin());
}

std::string choices(const ZNTSettingRow&, bool) { return "on or off"; }
std::string choices(const ZNTSettingRow& row, int)
{
    return "a number from " + std::to_string(row.least) + " to " + std::to_string(row.most);
}
std::string choices(const ZNTSettingRow&, ZNTStringEncoding) { return znt::encodingNames(", ", " or "); }
template <Choice Enum>
std::string choices(const ZNTSettingRow&, Enum)
{
    std::string names;
    for (const auto& choice : znt::settingChoices<Enum>) {
        if (!names.empty())
            names += &choice == &znt::settingChoices<Enum>.back() ? " or " : ", ";
        names += choice.name;
    }
    return names;
}
std::string choices(const ZNTSettingRow&, const ZNTTextList&)
{
    return "up to " + std::to_string(znt::mostTextsOfList) +
           " texts with \";\" between them, each of up to " + std::to_string(znt::longestTextOfList) +
           " bytes";
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
    // In words, since the window shows no names of settings. Only switches follow one.
    std::string followed(row.follows);
    std::ranges::replace(followed, '-', ' ');
    return followed.empty() ? "" : "Until you choose, it is on if " + followed + " is on.";
}

std::string settingText(const ZNTSettings& settings, const ZNTSettingRow& row)
{
    return std::visit([&](auto field) { return textOf(settings.*field); }, row.field);
}

std::string valuesInWords(const ZNTSettingRow& row)
{
    return std::visit([&](auto field) { return choices(row, ZNTSettings().*field); }, row.field);
}

std::span<const ZNTSettingChoice> choicesOf(const ZNTSettingRow& row)
{
    return std::visit(
        [](auto field) -> std::span<const ZNTSettingChoice> {
            return settingChoices<std::remove_cvref_t<decltype(std::declval<ZNTSettings>().*field)>>;
        },
        row.field);
}

ZNTSettingValues valuesMeantBy(std::string_view name, std::string_view text)
{
    if (name != listening)
        return {{std::string(name), std::string(text)}};
    ZNTSettingValues values;
    for (const auto& row : ZNTSettingsTable)
        if (!row.whenListening.empty())
            values.emplace(row.name, text == "on" ? std::string(row.whenListening) : settingText({}, row));
    return values;
}

bool isSetUpForListening(const ZNTSettings& settings)
{
    return std::ranges::all_of(ZNTSettingsTable, [&](const auto& row) {
        return row.whenListening.empty() || settingText(settings, row) == row.whenListening;
    });
}

ZNTResult<void> changeSetting(ZNTSettings& settings, std::string_view name, std::string_view text)
{
    if (name == listening) {
        if (text != "on" && text != "off")
            return complaintAbout(name, "on or off", text);
        for (const auto& [each, value] : valuesMeantBy(name, text))
            static_cast<void>(changeSetting(settings, each, value)); // the table's own values are good
        return {};
    }
    const auto* row = settingNamed(name);
    if (!row)
        return complaint("There is no setting " + std::string(name) + "; there are " + allNames() + ".");
    return std::visit(
        [&](auto field) -> ZNTResult<void> {
            std::optional<std::remove_reference_t<decltype(settings.*field)>> value;
            readText(text, *row, value);
            if (!value)
                return complaintAbout(name, valuesInWords(*row), text);
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
    for (auto& [each, value] : valuesMeantBy(name, text))
        values.insert_or_assign(each, value);
    return {};
}

std::string complaintAboutAssignment(const std::string& assignment)
{
    ZNTSettingValues values;
    const auto added = addAssignment(values, assignment);
    return added ? "" : added.error().description;
}

} // namespace znt
