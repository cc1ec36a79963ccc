#include "ZNTRecordsText.h"

#include "ZNTRecordFields.h"
#include "ZNTRecordValue.h"
#include "ZNTText.h"

#include <algorithm>
#include <cstdint>
#include <memory>
#include <type_traits>
#include <utility>

using namespace znt::exchange;

namespace
{

constexpr std::string_view firstWords = "Zantor export ";
constexpr std::string_view thisVersion = "1";
constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF"; // some editors put it before UTF-8
constexpr std::string_view explanation =
    "# Triggers, macros and games. You may edit this file with any text editor.\n"
    "# Each entry starts with a line in brackets. Each of its fields has a line: NAME = VALUE.\n"
    "# A value that starts with a quotation mark ends with one. In it, \\n is a line end and \\\\ a "
    "backslash.\n"
    "# A macro belongs to the group above it. The last line is [end].\n";

constexpr std::string_view triggerKind = "trigger", groupKind = "group", macroKind = "macro",
                           gameKind = "game", endKind = "end";

// Writing

struct ValueInFile {
    std::string operator()(const std::u16string& text) const { return znt::utf8FromText(valueOfText(text)); }
    std::string operator()(bool isSet) const { return isSet ? "yes" : "no"; }
    std::string operator()(std::int64_t port) const
    {
        return std::to_string(port >= 0 && port <= highestPort ? port : 0);
    }
};

template <typename Record, std::size_t Count>
void append(std::string& text, std::string_view kind, const Record& record,
            const std::array<Field<Record>, Count>& fields)
{
    text += "\n[" + std::string(kind) + "]\n";
    const auto appendField = [&](std::string_view name, const auto& value) {
        const auto written = ValueInFile()(value);
        text += std::string(name) + (written.empty() ? " =" : " = ") + written + "\n";
    };
    for (const auto& field : fields)
        std::visit(
            [&](auto member) {
                const auto& value = record.*member;
                if constexpr (!std::is_same_v<decltype(value), const std::optional<std::u16string>&>)
                    appendField(field.name, value);
                else if (value)
                    appendField(field.name, *value);
            },
            field.member);
}

// Reading

std::string inQuotes(std::string_view text)
{
    constexpr std::size_t most = 40; // of a name that is wrong; it may be a whole line of a foreign file
    return '"' + std::string(text.substr(0, most)) + (text.size() > most ? "..." : "") + '"';
}

Complaint take(std::u16string& field, const std::u16string& value, std::string_view)
{
    field = value;
    return {};
}

Complaint take(std::optional<std::u16string>& field, const std::u16string& value, std::string_view)
{
    field = value;
    return {};
}

Complaint take(bool& field, const std::u16string& value, std::string_view name)
{
    field = value == u"yes";
    return field || value == u"no" ? Complaint() : inQuotes(name) + " is yes or no.";
}

Complaint take(std::int64_t& field, const std::u16string& value, std::string_view name)
{
    const bool isNumber =
        !value.empty() && value.size() <= 5 &&
        std::ranges::all_of(value, [](char16_t unit) { return unit >= u'0' && unit <= u'9'; });
    field = isNumber ? znt::longValue(value) : highestPort + 1;
    return field <= highestPort ? Complaint() : inQuotes(name) + " is a number from 0 to 65535.";
}

/// The entry whose fields are being read.
class Entry
{
public:
    virtual ~Entry() = default;
    virtual Complaint setField(std::string_view name, const std::u16string& value) = 0;
    [[nodiscard]] virtual Complaint missingField() const = 0;
};

template <typename Record, std::size_t Count>
class EntryOf final : public Entry
{
public:
    EntryOf(std::string_view kind, Record& record, const std::array<Field<Record>, Count>& fields)
        : kind(kind),
          record(record),
          fields(fields)
    {
    }

    Complaint setField(std::string_view name, const std::u16string& value) override
    {
        const auto* known = std::ranges::find(fields, name, &Field<Record>::name);
        if (known == fields.end())
            return "A " + kind + " has no field " + inQuotes(name) + ". It has " + names() + ".";
        if (std::exchange(hasField[static_cast<std::size_t>(known - fields.begin())], true))
            return inQuotes(name) + " stands twice in one " + kind + ".";
        return std::visit([&](auto member) { return take(record.*member, value, name); }, known->member);
    }

    [[nodiscard]] Complaint missingField() const override
    {
        for (std::size_t at = 0; at < Count; ++at)
            if (fields[at].isNeeded && !hasField[at])
                return "The " + kind + " that starts here has no " + inQuotes(fields[at].name) + ".";
        return {};
    }

private:
    [[nodiscard]] std::string names() const
    {
        std::string all;
        for (const auto& field : fields)
            all += (all.empty() ? "" : ", ") + std::string(field.name);
        return all;
    }

    std::string kind;
    Record& record;
    const std::array<Field<Record>, Count>& fields;
    std::array<bool, Count> hasField{};
};

class Reader
{
public:
    ZNTResult<ZNTRecords> read(std::string_view text)
    {
        if (text.size() > mostBytes)
            return errorAt(1, "The file is longer than 16 MiB.");
        if (text.starts_with(byteOrderMark))
            text.remove_prefix(byteOrderMark.size());
        while (!text.empty()) {
            const auto end = std::min(text.find('\n'), text.size());
            auto line = text.substr(0, end);
            if (line.ends_with('\r'))
                line.remove_suffix(1);
            text.remove_prefix(std::min(end + 1, text.size()));
            ++number;
            if (const auto complaint = readLine(line))
                return errorAt(complainedLine ? complainedLine : number, *complaint);
        }
        if (number == 0)
            return errorAt(1, "The file is empty.");
        if (!hasEnded)
            return errorAt(number, "The file is cut off here; its last line is to be [end].");
        return std::move(records);
    }

private:
    static ZNTError errorAt(std::size_t line, const std::string& sentence)
    {
        return {"ZNTExchange", static_cast<long>(line), "Line " + std::to_string(line) + ": " + sentence};
    }

    Complaint readLine(std::string_view line)
    {
        if (number == 1)
            return readFirstLine(line);
        const auto text = znt::textFromUtf8(line);
        if (znt::utf8FromText(text) != line)
            return "This is no text in UTF-8.";
        const auto words = znt::trimmedOfSpacesAndTabs(text);
        if (words.empty() || words.front() == u'#')
            return {};
        if (hasEnded)
            return "Nothing may follow [end].";
        if (words.front() == u'[')
            return beginEntry(znt::utf8FromText(words));
        return readField(words);
    }

    static Complaint readFirstLine(std::string_view line)
    {
        if (!line.starts_with(firstWords))
            return "This is no exported file; its first line is to be \"Zantor export 1\".";
        if (line.substr(firstWords.size()) != thisVersion)
            return "The file was exported by another version of Zantor.";
        return {};
    }

    Complaint beginEntry(const std::string& words)
    {
        if (auto complaint = endEntry())
            return complaint;
        entryLine = number;
        if (++entries > mostEntries + 1) // [end] counts
            return "The file has more than 20,000 entries.";
        if (words == bracketed(triggerKind))
            open(triggerKind, records.triggers, triggerFields);
        else if (words == bracketed(groupKind))
            open(groupKind, records.groups, groupFields);
        else if (words == bracketed(macroKind)) {
            if (records.groups.empty())
                return "A macro stands below its group, and no [group] stands above this one.";
            open(macroKind, records.groups.back().macrosList, macroFields);
        } else if (words == bracketed(gameKind))
            open(gameKind, records.games, gameFields);
        else if (words == bracketed(endKind))
            hasEnded = true;
        else
            return inQuotes(words) + " is none of [trigger], [group], [macro], [game] and [end].";
        return {};
    }

    Complaint readField(std::u16string_view words)
    {
        const auto equals = words.find(u'=');
        if (equals == std::u16string_view::npos)
            return "This is neither an entry's start in brackets nor a line NAME = VALUE.";
        if (!entry)
            return "A field stands before the first entry.";
        std::u16string value;
        if (auto complaint = readTextOfValue(znt::trimmedOfSpacesAndTabs(words.substr(equals + 1)), value))
            return complaint;
        return entry->setField(znt::utf8FromText(znt::trimmedOfSpacesAndTabs(words.substr(0, equals))),
                               value);
    }

    /// Checks the entry that ends here.
    Complaint endEntry()
    {
        if (!entry)
            return {};
        const auto missing = entry->missingField();
        entry.reset();
        if (missing) {
            complainedLine = entryLine;
            return missing;
        }
        const bool isDefaultGame =
            records.games.size() > checkedGames && records.games.back().defaultConnection;
        checkedGames = records.games.size();
        if (isDefaultGame && defaultLine != 0) {
            complainedLine = entryLine;
            return "This is a second default game; the first one starts at line " +
                   std::to_string(defaultLine) + ".";
        }
        if (isDefaultGame)
            defaultLine = entryLine;
        return {};
    }

    template <typename Record, std::size_t Count>
    void open(std::string_view kind, std::vector<Record>& list,
              const std::array<Field<Record>, Count>& fields)
    {
        entry = std::make_unique<EntryOf<Record, Count>>(kind, list.emplace_back(), fields);
    }

    static std::string bracketed(std::string_view kind) { return "[" + std::string(kind) + "]"; }

    ZNTRecords records;
    std::unique_ptr<Entry> entry;
    std::size_t number = 0;         ///< of the present line; the first is 1
    std::size_t entryLine = 0;      ///< where the present entry starts
    std::size_t complainedLine = 0; ///< if it is not the present one
    std::size_t entries = 0;
    std::size_t checkedGames = 0;
    std::size_t defaultLine = 0; ///< where the default game starts
    bool hasEnded = false;
};

} // namespace

namespace znt::exchange
{

bool isExported(std::string_view text)
{
    return text.starts_with(firstWords) ||
           (text.starts_with(byteOrderMark) && text.substr(byteOrderMark.size()).starts_with(firstWords));
}

std::string textOfRecords(const ZNTRecords& records)
{
    std::string text = std::string(firstWords) + std::string(thisVersion) + "\n" + std::string(explanation);
    for (const auto& trigger : records.triggers)
        append(text, triggerKind, trigger, triggerFields);
    for (const auto& group : records.groups) {
        append(text, groupKind, group, groupFields);
        for (const auto& macro : group.macrosList)
            append(text, macroKind, macro, macroFields);
    }
    bool hasDefault = false;
    for (auto game : records.games) {
        if (game.defaultConnection)
            game.defaultConnection = !std::exchange(hasDefault, true);
        append(text, gameKind, game, gameFields);
    }
    return text + "\n[end]\n";
}

ZNTResult<ZNTRecords> recordsInText(std::string_view text) { return Reader().read(text); }

} // namespace znt::exchange
