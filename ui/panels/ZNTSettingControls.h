#pragma once

#include "ZNTSettings.h"

#include <QObject>
#include <functional>
#include <vector>

class QBoxLayout;
class QWidget;
class ZNTPreferencesHost;

/// The preferences' controls for settings that have no control of their own: one for each such row of the
/// table, below the other controls of its tab. A box for on and off, a number field for a number, a list for
/// one of a few choices, a small editor for a list of texts.
class ZNTSettingControls
{
public:
    struct Tab {
        QBoxLayout* layout; ///< its last item is a spring
        QWidget* lastControl;
    };
    using TabOf = std::function<Tab(ZNTSettingTab)>;

    /// Makes the controls. They show the settings of `host` and give it the player's choices. To be called
    /// once; `host` outlives the controls.
    void make(ZNTPreferencesHost& host, const TabOf& tabOf);
    /// Makes the controls show what is in force now.
    void show();

private:
    QObject life; ///< the widgets live longer, and leaving an editor is a choice as long as the host lives
    std::vector<std::function<void()>> showers; ///< one for each control
};
