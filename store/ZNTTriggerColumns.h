#pragma once

#include "ZNTTrigger.h"

#include <array>
#include <string>
#include <string_view>
#include <variant>

/// The type of a column is that of its field: a text, a text that may be absent (NULL), or yes and no.
using ZNTTriggerField = std::variant<std::u16string ZNTTrigger::*,
                                     std::optional<std::u16string> ZNTTrigger::*, bool ZNTTrigger::*>;

/// One column of the table of triggers.
struct ZNTTriggerColumn {
    std::string_view name; ///< for the trigger editor
    ZNTTriggerField field;
    std::string_view stored;     ///< the column of the database
    std::string_view assignment; ///< the same in the statement that updates a trigger
    int placeInUpdate; ///< that statement assigns the columns in another order, and its text is settled
    std::u16string_view heading; ///< in the window
    int placeInWindow;
    std::string_view exported;         ///< in exported files; players have such files, so it stays
    std::u16string_view option = {};   ///< of the terminal's /trigger add
    std::u16string_view argument = {}; ///< what follows the option
    std::u16string_view label = {};    ///< in the terminal's list of triggers
    /// The later step of `ZNTDatabaseAndPropertyUpdater` that adds it to a player's database. 0: the database
    /// has it since before the later steps.
    int addedByStep = 0;
};

/// Every column, in the order in which the database is given them. The store, the trigger editor, the window
/// and the terminal read this table.
inline constexpr std::array ZNTTriggerColumns{
    ZNTTriggerColumn{.name = "name",
                     .field = &ZNTTrigger::name,
                     .stored = "name",
                     .assignment = "name=?",
                     .placeInUpdate = 0,
                     .heading = u"Name",
                     .placeInWindow = 1,
                     .exported = "name"},
    ZNTTriggerColumn{.name = "check",
                     .field = &ZNTTrigger::check,
                     .stored = "checkString",
                     .assignment = "checkString = ?",
                     .placeInUpdate = 2,
                     .heading = u"Pattern",
                     .placeInWindow = 2,
                     .exported = "pattern"},
    ZNTTriggerColumn{.name = "action",
                     .field = &ZNTTrigger::action,
                     .stored = "action",
                     .assignment = "action=?",
                     .placeInUpdate = 1,
                     .heading = u"Command",
                     .placeInWindow = 3,
                     .exported = "command"},
    ZNTTriggerColumn{.name = "active",
                     .field = &ZNTTrigger::active,
                     .stored = "enabled",
                     .assignment = "enabled = ?",
                     .placeInUpdate = 3,
                     .heading = u"Active",
                     .placeInWindow = 0,
                     .exported = "active"},
    ZNTTriggerColumn{.name = "gag",
                     .field = &ZNTTrigger::gag,
                     .stored = "gag",
                     .assignment = "gag = ?",
                     .placeInUpdate = 4,
                     .heading = u"Not spoken",
                     .placeInWindow = 5,
                     .exported = "not spoken",
                     .option = u"--gag",
                     .label = u"gag"},
    ZNTTriggerColumn{.name = "soundFileToPlay",
                     .field = &ZNTTrigger::soundFileToPlay,
                     .stored = "sound_file_to_play",
                     .assignment = "sound_file_to_play = ?",
                     .placeInUpdate = 5,
                     .heading = u"Sound file",
                     .placeInWindow = 4,
                     .exported = "sound file",
                     .option = u"--sound",
                     .argument = u"FILE",
                     .label = u"sound"},
};
