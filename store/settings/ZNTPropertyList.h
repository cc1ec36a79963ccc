#pragma once

#include "ZNTResult.h"

#include <memory>
#include <string>

/// Property lists in files, through libplist. The nodes are libplist's own.
namespace znt
{

struct PropertyListCloser {
    void operator()(void* node) const;
};
using PropertyList = std::unique_ptr<void, PropertyListCloser>;

/// The dictionary in a file, XML or binary. Null if the file holds none.
PropertyList dictionaryIn(const std::string& path);

PropertyList emptyDictionary();

/// Renames a damaged file to a free name beside it, and returns that name.
ZNTResult<std::string> putDamagedFileAside(const std::string& path);

/// Empty if the list could not be made.
std::string xmlOf(const PropertyList& list);

} // namespace znt
