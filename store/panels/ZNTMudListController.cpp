#include "ZNTMudListController.h"

#include "ZNTText.h"

ZNTMudListController::ZNTMudListController(ZNTMudListArrayController& controller, Elements elements)
    : controller(controller),
      elements(elements)
{
    controller.set_tableView(&elements.tableView);
    elements.tableView.reloadData();
}

void ZNTMudListController::connectToMud()
{
    const auto* mud = controller.objectAtIndex(elements.tableView.selectedRow());
    if (!mud)
        return;
    elements.portNumber.setText(znt::decimalText(mud->port));
    elements.ipAddress.setText(mud->telnetURL);
    elements.mudName.setText(mud->name);
    closeSheet();
}
