#pragma once

#include "ZNTMacroGroup.h"
#include "ZNTMudList.h"
#include "ZNTTriggerColumns.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

// The fields of each kind of record in an exported file, in the order in which they are written. Players have
// such files, so a name stays as it is. A further field gets a row.
namespace znt::exchange
{

template <typename Record>
using Member = std::variant<std::u16string Record::*, std::optional<std::u16string> Record::*, bool Record::*,
                            std::int64_t Record::*>;

template <typename Record>
struct Field {
    std::string_view name;
    Member<Record> member;
    bool isNeeded = false; ///< what else is left out of a file is as in a new record
};

inline constexpr auto triggerFields = [] {
    std::array<Field<ZNTTrigger>, ZNTTriggerColumns.size()> fields{};
    for (std::size_t at = 0; at < fields.size(); ++at) {
        const auto& column = ZNTTriggerColumns[at];
        fields[at] = {column.exported,
                      std::visit([](auto member) { return Member<ZNTTrigger>(member); }, column.field),
                      column.field == ZNTTriggerField(&ZNTTrigger::check)};
    }
    return fields;
}();

inline constexpr std::array groupFields{Field<ZNTMacroGroup>{"name", &ZNTMacroGroup::groupName, true}};

inline constexpr std::array macroFields{Field<ZNTMacro>{"name", &ZNTMacro::name, true},
                                        Field<ZNTMacro>{"text", &ZNTMacro::dataToExecute, true}};

/// The only numbers are ports.
inline constexpr std::array gameFields{Field<ZNTMudList>{"name", &ZNTMudList::name, true},
                                       Field<ZNTMudList>{"address", &ZNTMudList::telnetURL, true},
                                       Field<ZNTMudList>{"port", &ZNTMudList::port, true},
                                       Field<ZNTMudList>{"web page", &ZNTMudList::url},
                                       Field<ZNTMudList>{"default", &ZNTMudList::defaultConnection},
                                       Field<ZNTMudList>{"available", &ZNTMudList::active}};

} // namespace znt::exchange
