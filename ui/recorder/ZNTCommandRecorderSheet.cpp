#include "ZNTCommandRecorderSheet.h"

#include "ZNTAnswerLine.h"
#include "ZNTControlHelp.h"
#include "ZNTPlatform.h"
#include "ZNTQtText.h"

#include <QHeaderView>

namespace
{
constexpr int columnsOfSeconds = 10;
} // namespace

ZNTCommandRecorderSheet::ZNTCommandRecorderSheet(QWidget& window, const ZNTWindowServices& services,
                                                 ZNTKeptRecordings& kept)
    : kept(kept),
      dialog(new ZNTSheetDialog(&window)),
      rows({{"command", QStringLiteral("Command")}}),
      theTableView((layout.setupUi(dialog), layout._theTableView), &rows),
      theSheet(dialog),
      aliasName(layout._aliasName),
      secondsBetweenSendingCommands(layout._secondsBetweenSendingCommands),
      controller({._theTableView = theTableView,
                  ._aliasName = aliasName,
                  ._secondsBetweenSendingCommands = secondsBetweenSendingCommands,
                  .theSheet = theSheet},
                 services.platform.log)
{
    // As narrow as a number, also after the controls are made larger.
    layout._secondsBetweenSendingCommands->setMaximumWidth(dialog->fontMetrics().averageCharWidth() *
                                                           columnsOfSeconds);
    layout._theTableView->horizontalHeader()->hide();
    layout._theTableView->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    const auto click = [this](QPushButton* button, auto task) {
        QObject::connect(button, &QPushButton::clicked, dialog, task);
    };
    click(layout._addButton, [this] { controller.addEmptyRow(); });
    click(layout._deleteButton, [this] { controller.removeItem(); });
    click(layout._clearList, [this] { controller.clearList(); });
    click(layout.keepButton, [this] { keep(); });
    click(layout._saveButton, [this] { controller.saveToDatabase(); });
    click(layout._cancelButton, [this] { controller.cancelEditing(); });
    dialog->whenCancelled = [this] { controller.cancelEditing(); };
    znt::explainControls(*dialog);
}

void ZNTCommandRecorderSheet::show(ZNTCommandRecorderDataSource& commands)
{
    rows.setSource({[&commands] { return commands.numberOfRowsInTableView(); },
                    [&commands](std::string_view, long row) -> ZNTCellValue {
                        return commands.tableViewObjectValue(row);
                    },
                    [&commands](const ZNTCellValue& value, std::string_view, long row) {
                        commands.tableViewSetObjectValue(std::get<std::u16string>(value), row);
                    }});
    znt::showAnswer(*layout.answer, {});
    controller.showWindow();
    controller.set_theDataSource(commands);
    layout._theTableView->setFocus();
}

void ZNTCommandRecorderSheet::showForKeeping(ZNTCommandRecorderDataSource& commands)
{
    show(commands);
    if (commands.numberOfRowsInTableView() > 0)
        layout._aliasName->setFocus();
}

void ZNTCommandRecorderSheet::keep() { znt::showAnswer(*layout.answer, znt::qtText(controller.keep(kept))); }
