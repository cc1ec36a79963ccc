#include "ZNTPlayerList.h"

#include "ZNTPrivateFiles.h"

#include <filesystem>
#include <plist/plist.h>
#include <utility>

ZNTPlayerList::ZNTPlayerList(const Kind& kind, const ZNTFilePlaces& places, ZNTPlatformLog& log)
    : kind(kind),
      path(places.home + "/Library/Zantor/" + kind.file),
      root(znt::emptyDictionary())
{
    std::error_code ignored;
    if (std::filesystem::exists(path, ignored))
        read(log);
    if (!entries())
        plist_dict_set_item(root.get(), kind.key, plist_new_array());
}

void ZNTPlayerList::read(ZNTPlatformLog& log)
{
    auto found = znt::dictionaryIn(path);
    auto* const list = found ? plist_dict_get_item(found.get(), kind.key) : nullptr;
    if (found && (!list || plist_get_node_type(list) == PLIST_ARRAY)) {
        root = std::move(found);
        return;
    }
    const auto aside = znt::putDamagedFileAside(path);
    isBlocked = !aside;
    const std::string these = std::string("The ") + kind.things;
    log.log(aside ? these + " were damaged; they were put aside as " + aside.value() + "."
                  : these + " are damaged, and could not be put aside: " + aside.error().description);
}

void* ZNTPlayerList::entries() const { return plist_dict_get_item(root.get(), kind.key); }

ZNTResult<void> ZNTPlayerList::store() const
{
    if (isBlocked)
        return error(std::string("The file of the ") + kind.things +
                     " is damaged; nothing is written to it.");
    static_cast<void>(
        znt::makePrivateFolder(std::filesystem::path(path).parent_path())); // the write fails then
    const auto xml = znt::xmlOf(root);
    if (xml.empty()) // an empty file would lose what the old one has
        return error(std::string("The ") + kind.things + " could not be written.");
    if (const auto written = znt::replacePrivateFile(path, xml); !written)
        return error(std::string("The ") + kind.things +
                     " could not be written: " + written.error().description);
    return {};
}

ZNTError ZNTPlayerList::error(const std::string& sentence) const
{
    return {.domain = kind.things, .code = 0, .description = sentence};
}
