#include "ZNTConsoleScreen.h"

#include <iterator>

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
    ZNTButton** directions[] = {&elements.northButton,     &elements.southButton,
                                &elements.eastButton,      &elements.westButton,
                                &elements.northEastButton, &elements.northWestButton,
                                &elements.southEastButton, &elements.southWestButton,
                                &elements.upButton,        &elements.downButton};
    for (std::size_t at = 0; at < std::size(directions); ++at)
        *directions[at] = &directionButtons[at];
    return elements;
}
