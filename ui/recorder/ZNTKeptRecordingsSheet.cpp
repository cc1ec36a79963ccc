#include "ZNTKeptRecordingsSheet.h"

#include "ZNTAnswerLine.h"
#include "ZNTClientActions.h"
#include "ZNTControlHelp.h"
#include "ZNTPlatform.h"
#include "ZNTQtText.h"
#include "ZNTServerConnectController.h"
#include "ZNTWindowFit.h"

#include <QDialog>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QShortcut>
#include <string>

ZNTKeptRecordingsSheet::ZNTKeptRecordingsSheet(QWidget& window, const ZNTWindowServices& services,
                                               ZNTKeptRecordings& kept, ZNTServerConnectController& session)
    : dialog(new QDialog(&window)),
      recordingRows({{std::string(ZNTKeptRecordingsView::nameColumn), QStringLiteral("Name")},
                     {std::string(ZNTKeptRecordingsView::secondsColumn), QStringLiteral("Seconds between")}}),
      commandRows({{"command", QStringLiteral("Command")}}),
      recordingsTable((layout.setupUi(dialog), layout.recordingsTable), &recordingRows),
      commandsTable(layout.commandsTable, &commandRows),
      controller({.recordings = recordingsTable, .commands = commandsTable}, kept, services.platform.alert,
                 {.run = [&session](const auto& recording,
                                    auto times) { return session.runRecording(recording, times); },
                  .stop = [&session] { session.stopAllThatRuns(); },
                  .say = [this](std::u16string_view sentence) { answer(sentence); }})
{
    znt::letButtonsWrap(*dialog);
    wireRows();
    wireButtons();
    znt::explainControls(*dialog);
    QObject::connect(dialog, &QDialog::finished, &window, &QWidget::activateWindow);
}

void ZNTKeptRecordingsSheet::wireRows()
{
    recordingRows.setSource({[this] { return controller.numberOfRecordings(); },
                             [this](std::string_view column, long row) -> ZNTCellValue {
                                 return controller.recordingValue(column, row);
                             },
                             [this](const ZNTCellValue& value, std::string_view column, long row) {
                                 controller.setRecordingValue(std::get<std::u16string>(value), column, row);
                             },
                             [this](long row) { return controller.recordingInWords(row); }});
    commandRows.setSource(
        {[this] { return controller.numberOfCommands(); },
         [this](std::string_view, long row) -> ZNTCellValue { return controller.command(row); },
         [this](const ZNTCellValue& value, std::string_view, long row) {
             controller.setCommand(std::get<std::u16string>(value), row);
         }});
    layout.recordingsTable->horizontalHeader()->setSectionResizeMode(0, QHeaderView::Stretch);
    layout.commandsTable->horizontalHeader()->hide();
    layout.commandsTable->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    QObject::connect(recordingsTable.selectionModel(), &QItemSelectionModel::selectionChanged, dialog,
                     [this] { controller.selectionChanged(); });
}

void ZNTKeptRecordingsSheet::wireButtons()
{
    const auto click = [this](QPushButton* button, auto task) {
        QObject::connect(button, &QPushButton::clicked, dialog, task);
    };
    click(layout.runRecordingButton, [this] { controller.run(ZNTReplay::Times::Once); });
    click(layout.runRecordingAgainButton, [this] { controller.run(ZNTReplay::Times::AgainAndAgain); });
    click(layout.stopRecordingButton, [this] { controller.stop(); });
    click(layout.renameRecordingButton, [this] { rename(); });
    click(layout.removeRecordingButton, [this] { controller.removeRecording(); });
    click(layout.addCommandButton, [this] { controller.addCommand(); });
    click(layout.deleteCommandButton, [this] { controller.deleteCommand(); });
    click(layout.closeKeptButton, [this] { dialog->close(); });
    // The main window's key does not reach this window.
    const auto key = QKeySequence::fromString(znt::latinText(ZNTActionName("stopWalking").row().keys),
                                              QKeySequence::PortableText);
    layout.stopRecordingButton->setToolTip(key.toString(QKeySequence::NativeText));
    QObject::connect(new QShortcut(key, dialog), &QShortcut::activated, dialog,
                     [this] { controller.stop(); });
}

void ZNTKeptRecordingsSheet::rename()
{
    const auto row = static_cast<int>(recordingsTable.selectedRow());
    if (row < 0) {
        answer(ZNTKeptRecordingsView::noneSelected);
        return;
    }
    layout.recordingsTable->setFocus();
    layout.recordingsTable->edit(recordingRows.index(row, 0));
}

void ZNTKeptRecordingsSheet::answer(std::u16string_view sentence)
{
    znt::showAnswer(*layout.answer, znt::qtText(sentence));
}

void ZNTKeptRecordingsSheet::showWindow()
{
    controller.reload();
    if (!dialog->isVisible()) {
        znt::showAnswer(*layout.answer, {});
        znt::fitToScreen(*dialog);
    }
    dialog->show();
    dialog->raise();
    dialog->activateWindow();
    layout.recordingsTable->setFocus();
    if (!layout.recordingsTable->currentIndex().isValid())
        layout.recordingsTable->setCurrentIndex(recordingRows.index(0, 0));
}
