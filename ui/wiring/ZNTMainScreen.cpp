#include "ZNTMainScreen.h"

#include "ZNTCommandLine.h"
#include "ZNTHintedTable.h"
#include "ZNTKeyColumn.h"
#include "ZNTOutputView.h"

#include <QComboBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>

ZNTMainScreen::ZNTMainScreen(ZNTMainWindow& window)
    : textToServer(window.textToServer),
      ipAddress(window.ipAddress),
      port(window.port),
      mudName(window.mudName),
      connectionButton(window.connectionButton, QLatin1Char('c')),
      myProgressIndicator(window.myProgressIndicator),
      macroRows({{"name", QStringLiteral("Name"), ZNTColumn::Kind::Text, false}}),
      macroTable(window.macroTable, &macroRows),
      window(window)
{
    window.macroTable->horizontalHeader()->hide();
    window.macroTable->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    window.macroTable->setItemDelegate(new ZNTKeyColumn(window.macroTable));
    macroComboBoxGroup.addBox(window.macroComboBoxGroup);
    for (const ZNTDirectionRow& way : ZNTDirections)
        directionButtons.emplace_back(window.compass->button(way.direction));
}

ZNTSessionScreen ZNTMainScreen::sessionScreen()
{
    ZNTSessionScreen screen;
    screen.textToServer = &textToServer;
    screen.textFromServer = window.textFromServer;
    screen.ipAddress = &ipAddress;
    screen.port = &port;
    screen.mudName = &mudName;
    screen.connectionButton = &connectionButton;
    screen.myProgressIndicator = &myProgressIndicator;
    screen.macroTable = &macroTable;
    screen._voiceOver = &voiceOver;
    for (std::size_t at = 0; at < ZNTDirections.size(); ++at)
        screen.directionButtons[at] = &directionButtons[at];
    return screen;
}
