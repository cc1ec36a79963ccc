#pragma once

#include "ZNTPlainElements.h"
#include "ZNTSessionScreen.h"

/// The screen of a session in a terminal. Only the output view is shown; the other elements are plain
/// records, because the session needs them. The client fills the command line and the game's fields, and
/// reads them.
class ZNTConsoleScreen
{
public:
    /// `outputView` outlives this.
    explicit ZNTConsoleScreen(ZNTTextView& outputView) : outputView(outputView) {}

    /// For the session, which this outlives.
    ZNTSessionScreen elements();

    ZNTPlainTextField commandLine, host, port, mudName;

private:
    ZNTTextView& outputView;
    ZNTPlainButton connectionButton;
    std::array<ZNTPlainButton, ZNTDirections.size()> directionButtons;
    ZNTPlainSpinner spinner;
    ZNTPlainTableView macroTable;
    ZNTPlainTextArea voiceOver;
};
