#include "ZNTSettingsFile.h"

#include "ZNTPrivateFiles.h"
#include "ZNTPropertyList.h"
#include "ZNTSettings.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <plist/plist.h>
#include <utility>
#include <vector>

namespace
{

constexpr const char *playerKey = "player", *gamesKey = "games", *looksKey = "window";

bool isDictionary(plist_t node) { return node && plist_get_node_type(node) == PLIST_DICT; }

std::string stringIn(plist_t node)
{
    std::uint64_t length = 0;
    const char* text = plist_get_string_ptr(node, &length);
    return text ? std::string(text, length) : "";
}

/// An array of strings; none if it holds anything else.
std::optional<std::string> textOfArray(plist_t array)
{
    std::vector<std::string> texts;
    for (std::uint32_t index = 0; index < plist_array_get_size(array); ++index) {
        auto* const node = plist_array_get_item(array, index);
        if (plist_get_node_type(node) != PLIST_STRING)
            return std::nullopt;
        texts.push_back(stringIn(node));
    }
    const auto list = znt::listOfTexts(texts);
    return list ? std::optional(znt::joinedTexts(*list)) : std::nullopt;
}

/// A node as the text of a setting; none if no setting is kept in such a node.
std::optional<std::string> textOf(plist_t node)
{
    switch (plist_get_node_type(node)) {
    case PLIST_BOOLEAN: {
        std::uint8_t isOn = 0;
        plist_get_bool_val(node, &isOn);
        return isOn != 0 ? "on" : "off";
    }
    case PLIST_UINT: {
        std::uint64_t number = 0;
        plist_get_uint_val(node, &number);
        return std::to_string(number);
    }
    case PLIST_STRING:
        return stringIn(node);
    case PLIST_ARRAY:
        return textOfArray(node);
    default:
        return std::nullopt;
    }
}

plist_t arrayOf(const ZNTTextList& list)
{
    auto* array = plist_new_array();
    for (const auto& text : list)
        plist_array_append_item(array, plist_new_string(text.c_str()));
    return array;
}

/// The type of a list's node is that of the setting: a text of a list can look like a number.
plist_t nodeOf(std::string_view name, const std::string& text)
{
    const auto* row = znt::settingNamed(name);
    if (row && std::holds_alternative<ZNTTextList ZNTSettings::*>(row->field))
        return arrayOf(znt::textsIn(text).value_or(ZNTTextList()));
    if (text == "on" || text == "off")
        return plist_new_bool(text == "on" ? 1 : 0);
    const bool isNumber =
        !text.empty() && std::ranges::all_of(text, [](char unit) { return unit >= '0' && unit <= '9'; });
    return isNumber ? plist_new_uint(std::strtoull(text.c_str(), nullptr, 10))
                    : plist_new_string(text.c_str());
}

/// Calls `use` with the key and the node of each entry of a dictionary.
template <typename Use>
void forEachEntry(plist_t dictionary, Use use)
{
    if (!isDictionary(dictionary))
        return;
    plist_dict_iter entries = nullptr;
    plist_dict_new_iter(dictionary, &entries);
    for (;;) {
        char* key = nullptr;
        plist_t node = nullptr;
        plist_dict_next_item(dictionary, entries, &key, &node);
        if (!node)
            break;
        use(std::string(key), node);
        std::free(key);
    }
    std::free(entries);
}

ZNTSettingValues valuesIn(plist_t dictionary)
{
    ZNTSettingValues values;
    forEachEntry(dictionary, [&](const std::string& name, plist_t node) {
        if (auto text = textOf(node))
            values[name] = std::move(*text);
    });
    return values;
}

/// The dictionary under `key`, which is made if there is none.
plist_t dictionaryUnder(plist_t parent, const std::string& key)
{
    if (auto* known = plist_dict_get_item(parent, key.c_str()); isDictionary(known))
        return known;
    auto* made = plist_new_dict();
    plist_dict_set_item(parent, key.c_str(), made);
    return made;
}

/// The way to the values of `game`, or of all games if that is empty.
std::vector<std::string> keysOf(std::string_view game)
{
    return game.empty() ? std::vector<std::string>{playerKey}
                        : std::vector<std::string>{gamesKey, std::string(game)};
}

} // namespace

ZNTSettingsFile::ZNTSettingsFile(const ZNTFilePlaces& places, ZNTPlatformLog& log)
    : path(places.home + "/Library/Zantor/settings.plist"),
      log(log)
{
}

bool ZNTSettingsFile::exists() const
{
    std::error_code ignored;
    return std::filesystem::exists(path, ignored);
}

void ZNTSettingsFile::begin()
{
    if (exists())
        return;
    static_cast<void>(
        znt::makePrivateFolder(std::filesystem::path(path).parent_path())); // the write fails then
    write(znt::xmlOf(znt::emptyDictionary()));
}

void ZNTSettingsFile::remove()
{
    std::error_code failure;
    std::filesystem::remove(path, failure);
    if (failure)
        log.log("The settings could not be removed: " + failure.message());
}

ZNTSettingsFile::Content ZNTSettingsFile::read()
{
    Content content;
    if (!exists())
        return content;
    const auto root = znt::dictionaryIn(path);
    if (!root) {
        putAside();
        return content;
    }
    content.player = valuesIn(plist_dict_get_item(root.get(), playerKey));
    forEachEntry(plist_dict_get_item(root.get(), gamesKey),
                 [&](const std::string& game, plist_t node) { content.games[game] = valuesIn(node); });
    forEachEntry(plist_dict_get_item(root.get(), looksKey), [&](const std::string& name, plist_t node) {
        content.looks[name] = textOf(node).value_or("");
    });
    return content;
}

void ZNTSettingsFile::store(std::string_view game, const ZNTSettingValues& values)
{
    storeUnder(keysOf(game), values);
}

void ZNTSettingsFile::storeLooks(const ZNTSettingValues& values) { storeUnder({looksKey}, values); }

void ZNTSettingsFile::forget(std::string_view game, std::string_view name)
{
    change(keysOf(game), [&](plist_t kept) { plist_dict_remove_item(kept, std::string(name).c_str()); });
}

void ZNTSettingsFile::storeUnder(const Keys& keys, const ZNTSettingValues& values)
{
    if (values.empty())
        return;
    change(keys, [&](plist_t kept) {
        for (const auto& [name, text] : values)
            if (text.empty() && !znt::settingNamed(name))
                plist_dict_remove_item(kept, name.c_str());
            else
                plist_dict_set_item(kept, name.c_str(), nodeOf(name, text));
    });
}

/// Changes the dictionary that is found by the keys, each in the one before it.
void ZNTSettingsFile::change(const Keys& keys, const std::function<void(void* dictionary)>& change)
{
    if (!exists())
        return;
    auto root = znt::dictionaryIn(path);
    if (!root) {
        putAside();
        root = znt::emptyDictionary();
    }
    plist_t kept = root.get();
    for (const auto& key : keys)
        kept = dictionaryUnder(kept, key);
    change(kept);
    write(znt::xmlOf(root));
}

void ZNTSettingsFile::putAside()
{
    const auto aside = znt::putDamagedFileAside(path);
    if (!aside) {
        log.log("The settings are damaged, and could not be put aside: " + aside.error().description);
        return;
    }
    log.log("The settings were damaged; they were put aside as " + aside.value() +
            ", and new ones are begun.");
    write(znt::xmlOf(znt::emptyDictionary()));
}

void ZNTSettingsFile::write(const std::string& content)
{
    if (const auto written = znt::replacePrivateFile(path, content); !written)
        log.log("The settings could not be written: " + written.error().description);
}
