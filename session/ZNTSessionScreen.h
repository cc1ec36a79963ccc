#pragma once

#include "ZNTScreenElements.h"

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
    ZNTButton* northButton = nullptr;
    ZNTButton* southButton = nullptr;
    ZNTButton* eastButton = nullptr;
    ZNTButton* westButton = nullptr;
    ZNTButton* northEastButton = nullptr;
    ZNTButton* northWestButton = nullptr;
    ZNTButton* southEastButton = nullptr;
    ZNTButton* southWestButton = nullptr;
    ZNTButton* upButton = nullptr;
    ZNTButton* downButton = nullptr;

    /// What scrolls the output view: the view itself.
    [[nodiscard]] ZNTTextView* scrollView() const { return textFromServer; }
};
