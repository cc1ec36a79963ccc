#pragma once

#include "ZNTDirections.h"
#include "ZNTScreenElements.h"

#include <array>

/// The screen elements that the session works with. The window hands in its widgets, the terminal client and
/// the tests plain records; none is null, and all outlive the session.
struct ZNTSessionScreen {
    ZNTTextField* textToServer = nullptr;  ///< the command line
    ZNTTextView* textFromServer = nullptr; ///< the output view
    ZNTTextField* ipAddress = nullptr;     ///< host name or address
    ZNTTextField* port = nullptr;
    ZNTTextField* mudName = nullptr;
    ZNTButton* connectionButton = nullptr; ///< titled "Connect" or "Disconnect"
    ZNTSpinner* myProgressIndicator = nullptr;
    ZNTTableView* macroTable = nullptr;
    ZNTTextArea* _voiceOver = nullptr; ///< the accessibility echo, emptied at each Return
    /// northButton to downButton, in the order of ZNTDirections.
    std::array<ZNTButton*, ZNTDirections.size()> directionButtons{};

    /// What scrolls the output view: the view itself.
    [[nodiscard]] ZNTTextView* scrollView() const { return textFromServer; }
};
