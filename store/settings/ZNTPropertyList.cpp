#include "ZNTPropertyList.h"

#include "ZNTPrivateFiles.h"

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <plist/plist.h>

namespace znt
{

void PropertyListCloser::operator()(void* node) const { plist_free(node); }

PropertyList dictionaryIn(const std::string& path)
{
    const auto content = contentOfFile(path);
    plist_t read = nullptr;
    plist_from_memory(content.data(), static_cast<std::uint32_t>(content.size()), &read);
    PropertyList root(read);
    return root && plist_get_node_type(root.get()) == PLIST_DICT ? std::move(root) : nullptr;
}

PropertyList emptyDictionary() { return PropertyList(plist_new_dict()); }

ZNTResult<std::string> putDamagedFileAside(const std::string& path)
{
    std::string aside;
    std::error_code failure;
    for (int number = 1; aside.empty() || std::filesystem::exists(aside, failure); ++number)
        aside = path + ".broken-" + std::to_string(number);
    std::filesystem::rename(path, aside, failure);
    if (failure)
        return ZNTError{ZNTPOSIXErrorDomain, failure.value(), failure.message()};
    return aside;
}

std::string xmlOf(const PropertyList& list)
{
    char* text = nullptr;
    std::uint32_t length = 0;
    plist_to_xml(list.get(), &text, &length);
    std::string xml(text ? text : "", length);
    std::free(text);
    return xml;
}

} // namespace znt
