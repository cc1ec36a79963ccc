#include "ZNTPropertyList.h"

#include "ZNTPrivateFiles.h"

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <plist/plist.h>

namespace
{

// libplist 2.3 also returns an error and tells the format that it found; both are left aside.
template <typename Result, typename... Format>
void parse(Result (*reader)(const char*, std::uint32_t, plist_t*, Format*...), const std::string& content,
           plist_t& read)
{
    reader(content.data(), static_cast<std::uint32_t>(content.size()), &read,
           static_cast<Format*>(nullptr)...);
}

} // namespace

namespace znt
{

void PropertyListCloser::operator()(void* node) const { plist_free(node); }

PropertyList dictionaryIn(const std::string& path)
{
    const auto content = contentOfFile(path);
    plist_t read = nullptr;
    parse(plist_from_memory, content, read);
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
