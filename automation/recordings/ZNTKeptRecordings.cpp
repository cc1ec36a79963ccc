#include "ZNTKeptRecordings.h"

#include "ZNTPrivateFiles.h"
#include "ZNTPropertyList.h"
#include "ZNTText.h"

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <plist/plist.h>
#include <utility>

namespace
{

constexpr const char *recordingsKey = "recordings", *nameKey = "name", *secondsKey = "seconds",
                     *commandsKey = "commands";

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

} // namespace

/// What stands in the file at this moment.
class ZNTKeptRecordings::File
{
public:
    File(const std::string& path, ZNTPlatformLog& log) : path(path), root(znt::emptyDictionary())
    {
        std::error_code ignored;
        if (!std::filesystem::exists(path, ignored))
            return;
        auto read = znt::dictionaryIn(path);
        auto* const list = read ? plist_dict_get_item(read.get(), recordingsKey) : nullptr;
        if (read && (!list || isOfType(list, PLIST_ARRAY))) {
            root = std::move(read);
            return;
        }
        const auto aside = znt::putDamagedFileAside(path);
        isBlocked = !aside;
        log.log(aside ? "The kept recordings were damaged; they were put aside as " + aside.value() + "."
                      : "The kept recordings are damaged, and could not be put aside: " +
                            aside.error().description);
    }

    /// An entry that is no recording of ours has no name.
    [[nodiscard]] std::vector<std::optional<ZNTKeptRecording>> entries() const
    {
        std::vector<std::optional<ZNTKeptRecording>> found;
        auto* const list = plist_dict_get_item(root.get(), recordingsKey);
        for (std::uint32_t at = 0; list && at < plist_array_get_size(list); ++at)
            found.push_back(recordingIn(plist_array_get_item(list, at)));
        return found;
    }
    [[nodiscard]] std::optional<std::uint32_t> placeOf(std::u16string_view name) const
    {
        const auto all = entries();
        const auto found =
            std::ranges::find_if(all, [&](const auto& entry) { return entry && entry->name == name; });
        return found == all.end() ? std::nullopt
                                  : std::optional(static_cast<std::uint32_t>(found - all.begin()));
    }
    [[nodiscard]] plist_t list() const
    {
        if (auto* const known = plist_dict_get_item(root.get(), recordingsKey))
            return known;
        auto* const made = plist_new_array();
        plist_dict_set_item(root.get(), recordingsKey, made);
        return made;
    }
    [[nodiscard]] ZNTResult<void> store() const
    {
        if (isBlocked)
            return complaint(u"The file of the kept recordings is damaged; nothing is written to it.", u"",
                             u"");
        static_cast<void>(
            znt::makePrivateFolder(std::filesystem::path(path).parent_path())); // the write fails then
        if (const auto written = znt::replacePrivateFile(path, znt::xmlOf(root)); !written)
            return complaint(u"The recordings could not be written: ",
                             znt::textFromUtf8(written.error().description), u"");
        return {};
    }

private:
    std::string path;
    znt::PropertyList root;
    bool isBlocked = false; ///< a damaged file stands there that could not be put aside
};

ZNTKeptRecordings::ZNTKeptRecordings(const ZNTFilePlaces& places, ZNTPlatformLog& log)
    : path(places.home + "/Library/Zantor/recordings.plist"),
      log(log)
{
}

std::vector<ZNTKeptRecording> ZNTKeptRecordings::all()
{
    std::vector<ZNTKeptRecording> recordings;
    for (auto& entry : File(path, log).entries())
        if (entry)
            recordings.push_back(std::move(*entry));
    return recordings;
}

ZNTResult<void> ZNTKeptRecordings::keep(const ZNTKeptRecording& recording)
{
    if (auto checked = znt::checkRecording(recording); !checked)
        return checked;
    const File file(path, log);
    if (file.placeOf(recording.name))
        return complaint(u"There is a recording ", recording.name, u" already; choose another name.");
    if (plist_array_get_size(file.list()) >= mostRecordings)
        return complaint(u"So many recordings are kept already; remove one first.", u"", u"");
    auto* const made = plist_new_dict();
    write(made, recording);
    plist_array_append_item(file.list(), made);
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
    const File file(path, log);
    const auto place = file.placeOf(name);
    if (!place)
        return noRecording(name);
    if (changed.name != name && file.placeOf(changed.name))
        return complaint(u"There is a recording ", changed.name, u" already; choose another name.");
    write(plist_array_get_item(file.list(), *place), changed);
    return file.store();
}

ZNTResult<void> ZNTKeptRecordings::remove(std::u16string_view name)
{
    const File file(path, log);
    const auto place = file.placeOf(name);
    if (!place)
        return noRecording(name);
    plist_array_remove_item(file.list(), *place);
    return file.store();
}
