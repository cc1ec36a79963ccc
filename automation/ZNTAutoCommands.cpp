#include "ZNTAutoCommands.h"

#include "ZNTText.h"

std::string ZNTAutoCommands::description() const
{
    std::string commands;
    for (const auto& command : *_commands)
        commands += (commands.empty() ? "" : ", ") + znt::utf8FromText(command);
    return "OID: " + std::to_string(_oid) + ", NAME: " + znt::utf8FromText(_name) + ", COMMANDS: (" +
           commands + "), SECONDS BETWEEN COMMANDS: " + std::to_string(_secondsBetweenSendingCommand);
}
