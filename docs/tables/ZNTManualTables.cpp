#include "ZNTManualTables.h"

#include "ZNTClientActions.h"
#include "ZNTConsoleCommands.h"
#include "ZNTDirections.h"
#include "ZNTSettings.h"
#include "ZNTStringEncoding.h"
#include "ZNTText.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <map>
#include <set>
#include <stdexcept>
#include <utility>
#include <vector>

namespace
{

using Kind = ZNTClientAction::Kind;

std::string replaced(std::string text, std::string_view part, std::string_view by)
{
    for (std::size_t at = 0; (at = text.find(part, at)) != text.npos; at += by.size())
        text.replace(at, part.size(), by);
    return text;
}

/// What a menu or a control bears, without the sign before the letter that picks it.
std::string title(std::string_view text) { return replaced(replaced(std::string(text), "&", ""), "...", ""); }

/// One key as people say it: "keypad minus" for "Num+-". A voice leaves a lone sign out.
std::string keyInWords(std::string_view key)
{
    constexpr std::pair<char, std::string_view> signs[] = {
        {'+', "plus"}, {'-', "minus"}, {'=', "equals"}, {',', "comma"}, {'.', "full stop"}};
    auto words = replaced(replaced(std::string(key), "Num+", "keypad "), "Pg", "Page ");
    const auto* sign = std::ranges::find(signs, words.empty() ? ' ' : words.back(),
                                         &std::pair<char, std::string_view>::first);
    return sign == std::end(signs) ? words : words.substr(0, words.size() - 1).append(sign->second);
}

/// "Ctrl+plus or Ctrl+equals" for "Ctrl++ or Ctrl+=".
std::string keysInWords(std::string_view keys)
{
    constexpr std::string_view between = " or ";
    const auto end = keys.find(between);
    if (end == keys.npos)
        return keyInWords(keys);
    return keyInWords(keys.substr(0, end)).append(between) + keysInWords(keys.substr(end + between.size()));
}

std::string code(std::string_view text) { return "`" + std::string(text) + "`"; }

// Settings

/// "On or off; off at first."
std::string valuesAndDefault(const ZNTSettingRow& row)
{
    auto words = znt::valuesInWords(row);
    words.front() = static_cast<char>(std::toupper(static_cast<unsigned char>(words.front())));
    const auto standing = znt::settingText(ZNTSettings(), row);
    return words + "; " + (standing.empty() ? "empty" : code(standing)) + " at first.";
}

std::string settings()
{
    std::string lines;
    for (const auto& row : ZNTSettingsTable) {
        lines += "- " + code(row.name) + ": " + std::string(row.sentence) + " " + valuesAndDefault(row);
        if (!row.follows.empty())
            lines += " " + znt::followsInWords(row);
        if (!row.whenListening.empty())
            lines += " Set up for listening makes it " + code(row.whenListening) + ".";
        lines += " Tab " + std::string(znt::titleOf(row.tab)) + ".\n";
    }
    return lines;
}

std::string gameSettings()
{
    std::string lines;
    for (const auto& row : ZNTSettingsTable)
        if (row.scope == ZNTSettingScope::Game)
            lines += "- " + code(row.name) + "\n";
    return lines;
}

// Keys

std::string directionKeys()
{
    std::string lines;
    for (const auto& way : ZNTDirections)
        lines += "- " + std::string(way.name) + ": " + keyInWords(way.keypadKey) + " or " +
                 std::string(way.otherKey) + ".\n";
    return lines;
}

std::string itemOf(const ZNTClientAction& row)
{
    if (row.kind == Kind::Directions)
        return directionKeys();
    const auto last = std::to_string(row.kind == Kind::Lines ? znt::numberedLines : znt::numberedMacros);
    auto name = title(row.title), keys = keysInWords(row.keys);
    if (row.kind == Kind::Lines || row.kind == Kind::Macros) {
        name = replaced(name, "%1", "1 to " + last);
        keys = replaced(keys, "%1", "1") + " to " + replaced(keys, "%1", last);
    }
    return "- " + name + (keys.empty() ? "" : ": " + keys) + ".\n";
}

/// "Speech, Channels" for "&Speech/&Channels".
std::string menuInWords(std::string_view menu) { return replaced(title(menu), "/", ", "); }

/// Every item of the menus with its keys. A menu inside another has a heading of its own, behind it.
std::string keys()
{
    std::string lines;
    std::vector<std::string_view> menus;
    for (const auto& row : znt::clientActions)
        if (!row.menu.empty() && std::ranges::find(menus, row.menu) == menus.end())
            menus.push_back(row.menu);
    for (const auto menu : menus) {
        lines += (lines.empty() ? "### Menu " : "\n### Menu ") + menuInWords(menu) + "\n\n";
        for (const auto& row : znt::clientActions)
            if (row.menu == menu)
                lines += itemOf(row);
    }
    return lines;
}

// The terminal

std::string commands()
{
    std::map<std::u16string_view, std::string> byWord;
    for (const auto& row : znt::clientActions) {
        if (row.word.empty())
            continue;
        auto typed = u"/" + std::u16string(row.word);
        if (const auto usage = ZNTConsoleCommands::usageOf(row); !usage.empty())
            typed += u" " + usage;
        byWord.emplace(row.word, "- " + code(znt::utf8FromText(typed)) + ": " +
                                     znt::utf8FromText(std::u16string(row.help)) + "\n");
    }
    std::string lines;
    for (const auto& [word, line] : byWord)
        lines += line;
    return lines;
}

std::string encodings()
{
    std::string lines;
    for (const auto& row : ZNTStringEncodings) {
        lines += "- " + code(row.name) + (row.title.empty() ? "" : ": " + znt::utf8FromText(row.title)) + ".";
        if (row.isChinese)
            lines += " Line drawing signs take two columns.";
        lines += "\n";
    }
    return lines;
}

constexpr auto tables = std::to_array<ZNTManualTable>({{"settings", &settings},
                                                       {"settings of a game", &gameSettings},
                                                       {"keys", &keys},
                                                       {"commands", &commands},
                                                       {"encodings", &encodings}});
constexpr std::string_view contents = "contents", begin = "<!-- made: ", close = " -->",
                           end = "<!-- end -->\n";

/// The anchor that readers of Markdown give a heading of plain words.
std::string anchorOf(std::string_view heading)
{
    std::string anchor;
    for (const char each : heading)
        if (std::isalnum(static_cast<unsigned char>(each)) != 0)
            anchor += static_cast<char>(std::tolower(static_cast<unsigned char>(each)));
        else if (each == ' ' || each == '-')
            anchor += '-';
    return anchor;
}

std::string contentsOf(std::string_view page)
{
    constexpr std::string_view mark = "\n## ";
    std::string lines;
    for (std::size_t at = 0; (at = page.find(mark, at)) != page.npos;) {
        at += mark.size();
        const auto heading = page.substr(at, page.find('\n', at) - at);
        lines += "- [" + std::string(heading) + "](#" + anchorOf(heading) + ")\n";
    }
    return lines;
}

std::string made(std::string_view name, std::string_view page)
{
    if (name == contents)
        return contentsOf(page);
    const auto* table = std::ranges::find(tables, name, &ZNTManualTable::name);
    if (table == tables.end())
        throw std::runtime_error("There is no table \"" + std::string(name) + "\" to be made.");
    return table->make();
}

} // namespace

std::string znt::withTablesMade(std::string_view page)
{
    std::string result;
    std::set<std::string_view> met;
    std::size_t kept = 0; // up to where `page` is in `result`
    for (std::size_t at = 0; (at = page.find(begin, at)) != page.npos;) {
        at += begin.size();
        const auto name = page.substr(at, page.find(close, at) - at);
        const auto start = page.find('\n', at), stop = page.find(end, at);
        if (stop == page.npos || page.find(begin, at) < stop)
            throw std::runtime_error("The part \"" + std::string(name) + "\" has no end.");
        result.append(page.substr(kept, start + 1 - kept)).append("\n").append(made(name, page)).append("\n");
        met.insert(name);
        kept = at = stop;
    }
    for (const auto& table : tables)
        if (!met.contains(table.name))
            throw std::runtime_error("The table \"" + std::string(table.name) + "\" has no place.");
    return result.append(page.substr(kept));
}
