#pragma once

#include "ZNTSettings.h"

#include <QObject>
#include <functional>
#include <vector>

class QWidget;
class ZNTPreferencesHost;

/// The preferences' controls for settings that have no control of their own: one for each such row of the
/// table, in the group that the row names. A box for on and off, a number field for a number, a list for one
/// of a few choices, a small editor for a list of texts; below it what its words do not say.
class ZNTSettingControls
{
public:
    /// The content of a tab, a column of groups.
    using PageOf = std::function<QWidget&(ZNTSettingTab)>;

    /// Makes the controls. They show the settings of `host` and give it the player's choices. To be called
    /// once; `host` outlives the controls.
    void make(ZNTPreferencesHost& host, const PageOf& pageOf);
    /// Makes the controls show what is in force now.
    void show();

private:
    QObject life; ///< the widgets live longer, and leaving an editor is a choice as long as the host lives
    std::vector<std::function<void()>> showers; ///< one for each control
};
