#include "ZNTMacroKeys.h"

#include "ZNTPrivateFiles.h"
#include "ZNTPropertyList.h"

#include <algorithm>
#include <filesystem>
#include <optional>
#include <plist/plist.h>
#include <utility>

namespace
{

constexpr const char *keysKey = "keys", *macroKey = "macro", *keyKey = "key";

ZNTError sentence(std::string words)
{
    return {.domain = "macro keys", .code = 0, .description = std::move(words)};
}

/// None if the node is no key of ours.
std::optional<ZNTMacroKey> macroKeyIn(plist_t node)
{
    if (!node || plist_get_node_type(node) != PLIST_DICT)
        return std::nullopt;
    auto* const macro = plist_dict_get_item(node, macroKey);
    auto* const key = plist_dict_get_item(node, keyKey);
    if (!macro || plist_get_node_type(macro) != PLIST_UINT || !key ||
        plist_get_node_type(key) != PLIST_STRING)
        return std::nullopt;
    std::uint64_t number = 0, length = 0;
    plist_get_uint_val(macro, &number);
    const char* text = plist_get_string_ptr(key, &length);
    if (!text || length == 0 || length > ZNTMacroKeys::longestKey)
        return std::nullopt;
    return ZNTMacroKey{.macro = static_cast<std::int64_t>(number), .key = std::string(text, length)};
}

} // namespace

/// What stands in the file at this moment.
class ZNTMacroKeys::File
{
public:
    File(const std::string& path, ZNTPlatformLog& log) : path(path), root(znt::emptyDictionary())
    {
        std::error_code ignored;
        if (!std::filesystem::exists(path, ignored))
            return;
        auto found = znt::dictionaryIn(path);
        auto* const list = found ? plist_dict_get_item(found.get(), keysKey) : nullptr;
        if (found && (!list || plist_get_node_type(list) == PLIST_ARRAY)) {
            root = std::move(found);
            return;
        }
        const auto aside = znt::putDamagedFileAside(path);
        isBlocked = !aside;
        log.log(aside ? "The keys of macros were damaged; they were put aside as " + aside.value() + "."
                      : "The keys of macros are damaged, and could not be put aside: " +
                            aside.error().description);
    }

    [[nodiscard]] plist_t list() const
    {
        if (auto* const known = plist_dict_get_item(root.get(), keysKey))
            return known;
        auto* const made = plist_new_array();
        plist_dict_set_item(root.get(), keysKey, made);
        return made;
    }
    void removeIf(const auto& isUnwanted) const
    {
        for (std::uint32_t at = plist_array_get_size(list()); at-- > 0;)
            if (const auto entry = macroKeyIn(plist_array_get_item(list(), at)); entry && isUnwanted(*entry))
                plist_array_remove_item(list(), at);
    }
    [[nodiscard]] ZNTResult<void> store() const
    {
        if (isBlocked)
            return sentence("The file of the keys is damaged; nothing is written to it.");
        static_cast<void>(
            znt::makePrivateFolder(std::filesystem::path(path).parent_path())); // the write fails then
        if (const auto written = znt::replacePrivateFile(path, znt::xmlOf(root)); !written)
            return sentence("The key could not be written: " + written.error().description);
        return {};
    }

private:
    std::string path;
    znt::PropertyList root;
    bool isBlocked = false; ///< a damaged file stands there that could not be put aside
};

ZNTMacroKeys::ZNTMacroKeys(const ZNTFilePlaces& places, ZNTPlatformLog& log)
    : path(places.home + "/Library/Zantor/macro-keys.plist"),
      log(log)
{
    read(File(path, log));
}

void ZNTMacroKeys::read(const File& file)
{
    keys.clear();
    auto* const list = file.list();
    const auto count = std::min<std::size_t>(plist_array_get_size(list), mostKeys);
    for (std::uint32_t at = 0; at < count; ++at) {
        auto entry = macroKeyIn(plist_array_get_item(list, at));
        const auto clashes = [&](const ZNTMacroKey& known) {
            return known.macro == entry->macro || known.key == entry->key;
        };
        if (entry && std::ranges::none_of(keys, clashes))
            keys.push_back(std::move(*entry));
    }
}

std::string ZNTMacroKeys::keyOf(std::int64_t macro) const
{
    const auto found = std::ranges::find(keys, macro, &ZNTMacroKey::macro);
    return found == keys.end() ? std::string() : found->key;
}

ZNTResult<void> ZNTMacroKeys::give(std::int64_t macro, std::string_view key)
{
    if (key.size() > longestKey)
        return sentence("The name of the key is too long.");
    const File file(path, log);
    file.removeIf([&](const ZNTMacroKey& known) { return known.macro == macro || known.key == key; });
    if (!key.empty()) {
        if (plist_array_get_size(file.list()) >= mostKeys)
            return sentence("So many macros have keys already; clear one first.");
        auto* const made = plist_new_dict();
        plist_dict_set_item(made, macroKey, plist_new_uint(static_cast<std::uint64_t>(macro)));
        plist_dict_set_item(made, keyKey, plist_new_string(std::string(key).c_str()));
        plist_array_append_item(file.list(), made);
    }
    if (auto stored = file.store(); !stored)
        return stored;
    read(file);
    return {};
}
