#pragma once

#include <cstdint>
#include <string>

/// A named text to be sent in place of its name. The database has a table for aliases; nothing reads or
/// writes it yet.
struct ZNTAlias {
    std::int64_t oid = 0; ///< row key; 0 until stored
    std::u16string name;
    std::u16string dataToExecute;
};
