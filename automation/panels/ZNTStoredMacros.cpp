#include "ZNTStoredMacros.h"

#include "ZNTDatabaseHelper.h"

std::vector<std::u16string> ZNTStoredMacros::getAllMacroNames() { return database.getAllMacroNames(); }

std::optional<std::u16string> ZNTStoredMacros::textOfMacroNamed(std::u16string_view name)
{
    const auto macro = database.getMacroFromDatabaseByName(name);
    return macro ? std::optional(macro->dataToExecute) : std::nullopt;
}
