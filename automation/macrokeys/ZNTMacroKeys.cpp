#include "ZNTMacroKeys.h"

#include "ZNTPlayerList.h"

#include <algorithm>
#include <optional>
#include <plist/plist.h>
#include <utility>

namespace
{

constexpr ZNTPlayerList::Kind macroKeysFile{
    .file = "macro-keys.plist", .key = "keys", .things = "keys of macros"};
constexpr const char *macroKey = "macro", *keyKey = "key";

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

void removeIf(plist_t list, const auto& isUnwanted)
{
    for (std::uint32_t at = plist_array_get_size(list); at-- > 0;)
        if (const auto entry = macroKeyIn(plist_array_get_item(list, at)); entry && isUnwanted(*entry))
            plist_array_remove_item(list, at);
}

} // namespace

ZNTMacroKeys::ZNTMacroKeys(const ZNTFilePlaces& places, ZNTPlatformLog& log) : places(places), log(log)
{
    read(ZNTPlayerList(macroKeysFile, places, log));
}

void ZNTMacroKeys::read(const ZNTPlayerList& file)
{
    keys.clear();
    auto* const list = file.entries();
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
    const ZNTPlayerList file(macroKeysFile, places, log);
    removeIf(file.entries(),
             [&](const ZNTMacroKey& known) { return known.macro == macro || known.key == key; });
    if (!key.empty()) {
        if (plist_array_get_size(file.entries()) >= mostKeys)
            return sentence("So many macros have keys already; clear one first.");
        auto* const made = plist_new_dict();
        plist_dict_set_item(made, macroKey, plist_new_uint(static_cast<std::uint64_t>(macro)));
        plist_dict_set_item(made, keyKey, plist_new_string(std::string(key).c_str()));
        plist_array_append_item(file.entries(), made);
    }
    if (auto stored = file.store(); !stored)
        return stored;
    read(file);
    return {};
}
