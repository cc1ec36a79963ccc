#pragma once

class ZNTPreferencesHost;
namespace Ui
{
class PreferencesView;
}

/// The tab with the macros. It shows the main window's own selector and list, so that what is selected in one
/// is selected in the other. Its buttons are the host's.
class ZNTMacrosTab
{
public:
    /// Both outlive this.
    ZNTMacrosTab(Ui::PreferencesView& form, ZNTPreferencesHost& host);

private:
    static void showMainWindowsMacros(Ui::PreferencesView& form, ZNTPreferencesHost& host);
};
