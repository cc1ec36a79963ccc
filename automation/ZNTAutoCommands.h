#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

/// A named list of commands with a pause between them. It is filled and logged, but not stored and not
/// played.
struct ZNTAutoCommands {
    using Commands = std::vector<std::u16string>;

    std::int64_t _oid = 0; ///< 0 for a record that was never stored
    std::u16string _name;
    std::int64_t _secondsBetweenSendingCommand = 0;
    /// The list that was recorded, shared and not copied.
    std::shared_ptr<Commands> _commands = std::make_shared<Commands>();

    /// "OID: 0, NAME: x, COMMANDS: (a, b), SECONDS BETWEEN COMMANDS: 1" in UTF-8.
    [[nodiscard]] std::string description() const;
};
