#pragma once

#include <QDateTime>
#include <optional>
#include <string>
#include <string_view>

class ZNTHintedTable;
class ZNTMacroGroupDropDownController;
class ZNTMudMacroTableViewController;
class ZNTQtComboBox;
class ZNTQtTableView;
class ZNTRowModel;
class ZNTServerConnectController;
class ZNTSettingsKeeper;
struct ZNTWindowServices;

/// What the preferences ask of the main window's controller, which makes them.
class ZNTPreferencesHost
{
public:
    /// The main window's elements for macros. The preferences show the same selector and the same rows.
    struct MacroElements {
        ZNTQtComboBox& groupSelector;
        ZNTRowModel& rows;
        ZNTQtTableView& table;
        ZNTHintedTable& list;
    };

    virtual ~ZNTPreferencesHost() = default;

    [[nodiscard]] virtual const ZNTWindowServices& services() const = 0;
    [[nodiscard]] virtual ZNTServerConnectController& serverConnectController() = 0;
    [[nodiscard]] virtual ZNTMacroGroupDropDownController& macroGroupDropDownController() = 0;
    [[nodiscard]] virtual ZNTMudMacroTableViewController& mudMacroTableViewController() = 0;
    [[nodiscard]] virtual MacroElements macroElements() = 0;
    virtual void showZNTAddMacroViewController() = 0;
    virtual void showZNTEditMacroViewController() = 0;
    [[nodiscard]] virtual ZNTSettingsKeeper& settings() = 0;
    /// A choice of the player among the settings; takes effect at once.
    virtual void chooseSetting(std::string_view name, const std::string& text) = 0;
    /// The same for all games, also while one is played.
    virtual void chooseSettingForAllGames(std::string_view name, const std::string& text) = 0;
    /// Whether settings are remembered for the next start.
    virtual void setRemembering(bool on) = 0;
    /// Silences all sounds, or plays them again.
    virtual void setSoundsMuted(bool muted) = 0;
    /// When the game's text began to come compressed. Empty while it is not compressed.
    [[nodiscard]] virtual const std::optional<QDateTime>& compressedSince() const = 0;
};
