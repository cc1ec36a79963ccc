#include "ZNTStoredMacros.h"

#include "ZNTDatabaseHelper.h"

std::vector<std::u16string> ZNTStoredMacros::getAllMacroNames() { return database.getAllMacroNames(); }

std::optional<std::u16string> ZNTStoredMacros::textOfMacroNamed(std::u16string_view name)
{
    const auto macro = database.getMacroFromDatabaseByName(name);
    return macro ? std::optional(macro->dataToExecute) : std::nullopt;
}

std::optional<ZNTMacro> ZNTStoredMacros::macroNumbered(std::int64_t oid)
{
    for (const ZNTMacroGroup& group : database.getAllMacroGroupsFromDatabase())
        for (ZNTMacro& macro : database.getAllMacrosFromDatabaseByMacroGroupId(group.oid))
            if (macro.oid == oid)
                return std::move(macro);
    return std::nullopt;
}
