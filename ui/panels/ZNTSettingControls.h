#pragma once

#include "ZNTSettings.h"

#include <QString>
#include <functional>

class QBoxLayout;
class QWidget;

/// The preferences' controls for settings that have no control of their own: one for each such row of the
/// table, below the other controls of its tab. A box for on and off, a number field for a number.
class ZNTSettingControls
{
public:
    struct Tab {
        QBoxLayout* layout; ///< its last item is a spring
        QWidget* lastControl;
    };
    using TabOf = std::function<Tab(ZNTSettingTab)>;
    using Choose = std::function<void(std::string_view name, const std::string& text)>;

    /// Makes the controls, showing `settings`. `choose` is called when the player changes one.
    static void make(const ZNTSettings& settings, const TabOf& tabOf, const Choose& choose);
};
