#include "ZNTKeptRecordings.h"

#include "ZNTPlayerList.h"
#include "ZNTText.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <plist/plist.h>
#include <utility>

namespace
{

constexpr ZNTPlayerList::Kind recordingsFile{
    .file = "recordings.plist", .key = "recordings", .things = "kept recordings"};
constexpr const char *nameKey = "name", *secondsKey = "seconds", *commandsKey = "commands";

ZNTError complaint(std::u16string_view before, std::u16string_view name, std::u16string_view after)
{
    std::u16string sentence(before);
    sentence.append(name).append(after);
    return {.domain = "recordings", .code = 0, .description = znt::utf8FromText(sentence)};
}

ZNTError noRecording(std::u16string_view name) { return complaint(u"There is no recording ", name, u"."); }

bool isOfType(plist_t node, plist_type type) { return node && plist_get_node_type(node) == type; }

std::optional<std::u16string> textIn(plist_t node)
{
    if (!isOfType(node, PLIST_STRING))
        return std::nullopt;
    std::uint64_t length = 0;
    const char* text = plist_get_string_ptr(node, &length);
    return text ? znt::textFromUtf8(std::string_view(text, length)) : std::u16string();
}

plist_t textNode(std::u16string_view text) { return plist_new_string(znt::utf8FromText(text).c_str()); }

/// None if an entry is no text.
std::optional<std::vector<std::u16string>> textsOfArray(plist_t array)
{
    if (!isOfType(array, PLIST_ARRAY))
        return std::nullopt;
    std::vector<std::u16string> texts;
    for (std::uint32_t at = 0; at < plist_array_get_size(array); ++at) {
        auto text = textIn(plist_array_get_item(array, at));
        if (!text)
            return std::nullopt;
        texts.push_back(std::move(*text));
    }
    return texts;
}

/// None if the node is no recording within the limits.
std::optional<ZNTKeptRecording> recordingIn(plist_t node)
{
    if (!isOfType(node, PLIST_DICT))
        return std::nullopt;
    const auto name = textIn(plist_dict_get_item(node, nameKey));
    const auto seconds = textIn(plist_dict_get_item(node, secondsKey));
    auto commands = textsOfArray(plist_dict_get_item(node, commandsKey));
    const auto read = seconds ? znt::secondsTyped(*seconds) : ZNTResult<double>(ZNTError{});
    if (!name || !read || !commands)
        return std::nullopt;
    ZNTKeptRecording recording{.name = *name, .seconds = read.value(), .commands = std::move(*commands)};
    return znt::checkRecording(recording) ? std::optional(std::move(recording)) : std::nullopt;
}

/// What else the dictionary holds stays there.
void write(plist_t dictionary, const ZNTKeptRecording& recording)
{
    plist_dict_set_item(dictionary, nameKey, textNode(recording.name));
    plist_dict_set_item(dictionary, secondsKey, textNode(znt::secondsText(recording.seconds)));
    auto* commands = plist_new_array();
    for (const auto& command : recording.commands)
        plist_array_append_item(commands, textNode(command));
    plist_dict_set_item(dictionary, commandsKey, commands);
}

/// An entry that is no recording of ours has no name.
std::vector<std::optional<ZNTKeptRecording>> entriesOf(const ZNTPlayerList& file)
{
    std::vector<std::optional<ZNTKeptRecording>> found;
    for (std::uint32_t at = 0; at < plist_array_get_size(file.entries()); ++at)
        found.push_back(recordingIn(plist_array_get_item(file.entries(), at)));
    return found;
}

std::optional<std::uint32_t> placeOf(std::u16string_view name, const ZNTPlayerList& file)
{
    const auto all = entriesOf(file);
    const auto found =
        std::ranges::find_if(all, [&](const auto& entry) { return entry && entry->name == name; });
    return found == all.end() ? std::nullopt : std::optional(static_cast<std::uint32_t>(found - all.begin()));
}

} // namespace

ZNTKeptRecordings::ZNTKeptRecordings(const ZNTFilePlaces& places, ZNTPlatformLog& log)
    : places(places),
      log(log)
{
}

std::vector<ZNTKeptRecording> ZNTKeptRecordings::all()
{
    std::vector<ZNTKeptRecording> recordings;
    for (auto& entry : entriesOf(ZNTPlayerList(recordingsFile, places, log)))
        if (entry)
            recordings.push_back(std::move(*entry));
    return recordings;
}

ZNTResult<void> ZNTKeptRecordings::keep(const ZNTKeptRecording& recording)
{
    if (auto checked = znt::checkRecording(recording); !checked)
        return checked;
    const ZNTPlayerList file(recordingsFile, places, log);
    if (placeOf(recording.name, file))
        return complaint(u"There is a recording ", recording.name, u" already; choose another name.");
    if (plist_array_get_size(file.entries()) >= mostRecordings)
        return complaint(u"So many recordings are kept already; remove one first.", u"", u"");
    auto* const made = plist_new_dict();
    write(made, recording);
    plist_array_append_item(file.entries(), made);
    return file.store();
}

ZNTResult<std::u16string> ZNTKeptRecordings::keep(std::u16string_view name, std::u16string_view seconds,
                                                  std::vector<std::u16string> commands)
{
    const auto typed = znt::secondsTyped(seconds);
    if (!typed)
        return typed.error();
    const ZNTKeptRecording recording{.name = std::u16string(znt::trimmedOfWhitespace(name)),
                                     .seconds = typed.value(),
                                     .commands = std::move(commands)};
    if (const auto kept = keep(recording); !kept)
        return kept.error();
    return u"Kept " + znt::recordingInWords(recording) + u".";
}

ZNTResult<void> ZNTKeptRecordings::change(std::u16string_view name, const ZNTKeptRecording& changed)
{
    if (auto checked = znt::checkRecording(changed); !checked)
        return checked;
    const ZNTPlayerList file(recordingsFile, places, log);
    const auto place = placeOf(name, file);
    if (!place)
        return noRecording(name);
    if (changed.name != name && placeOf(changed.name, file))
        return complaint(u"There is a recording ", changed.name, u" already; choose another name.");
    write(plist_array_get_item(file.entries(), *place), changed);
    return file.store();
}

ZNTResult<void> ZNTKeptRecordings::remove(std::u16string_view name)
{
    const ZNTPlayerList file(recordingsFile, places, log);
    const auto place = placeOf(name, file);
    if (!place)
        return noRecording(name);
    plist_array_remove_item(file.entries(), *place);
    return file.store();
}
