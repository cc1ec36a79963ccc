#include "ZNTConsoleScreen.h"

ZNTSessionScreen ZNTConsoleScreen::elements()
{
    ZNTSessionScreen elements;
    elements.textToServer = &commandLine;
    elements.textFromServer = &outputView;
    elements.ipAddress = &host;
    elements.port = &port;
    elements.mudName = &mudName;
    elements.connectionButton = &connectionButton;
    elements.myProgressIndicator = &spinner;
    elements.macroTable = &macroTable;
    elements._voiceOver = &voiceOver;
    for (std::size_t at = 0; at < ZNTDirections.size(); ++at)
        elements.directionButtons[at] = &directionButtons[at];
    return elements;
}
