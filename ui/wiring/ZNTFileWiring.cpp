#include "ZNTFileWiring.h"

#include "ZNTActionWiring.h"
#include "ZNTAlert.h"
#include "ZNTLogger.h"
#include "ZNTMainWindow.h"
#include "ZNTMudAppController.h"
#include "ZNTOldLogsWindow.h"
#include "ZNTOutputView.h"
#include "ZNTPlatform.h"
#include "ZNTQtText.h"

#include <QAbstractItemView>
#include <QDesktopServices>
#include <QFileDialog>
#include <QFileInfo>
#include <QUrl>
#include <memory>

using namespace znt;

namespace
{

/// Qt's own dialog leaves its lists without names for screen readers.
void nameLists(QFileDialog& dialog)
{
    for (auto* list : dialog.findChildren<QAbstractItemView*>())
        if (list->accessibleName().isEmpty())
            list->setAccessibleName(list->objectName() == QLatin1String("sidebar") ? QStringLiteral("Places")
                                                                                   : QStringLiteral("Files"));
}

std::string pathOf(const QString& path) { return QFile::encodeName(path).toStdString(); }

} // namespace

ZNTFileWiring::ZNTFileWiring(ZNTMainWindow& window, ZNTMainMenu& menu, ZNTMudAppController& controller)
    : window(window),
      controller(controller),
      exchange(controller.services().database),
      lastFolder(QString::fromStdString(controller.services().platform.places.home))
{
    whenTriggered(menu["exportRecords"], [this] { askForExportFile(); });
    whenTriggered(menu["importRecords"], [this] { askForImportFile(); });
    whenTriggered(menu["showLogFolder"], [this] { openLogFolder(); });
    whenTriggered(menu["showOldLogs"], [this] { showOldLogs(); });
}

QFileDialog* ZNTFileWiring::newFileDialog(const char* objectName, const char* title, UseFile use)
{
    auto* dialog = new QFileDialog(&window, QString::fromLatin1(title), lastFolder,
                                   QStringLiteral("Text files (*.txt);;All files (*)"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setObjectName(QString::fromLatin1(objectName));
    QObject::connect(dialog, &QDialog::finished, &window, &QWidget::activateWindow);
    // The answer's alert belongs to the window in front, so it waits until the dialog is gone.
    const auto chosen = std::make_shared<QString>();
    QObject::connect(dialog, &QFileDialog::fileSelected, dialog,
                     [chosen](const QString& path) { *chosen = path; });
    QObject::connect(dialog, &QObject::destroyed, &window, [this, chosen, use] {
        if (!chosen->isEmpty())
            (this->*use)(*chosen);
    });
    return dialog;
}

void ZNTFileWiring::askForExportFile()
{
    auto* dialog =
        newFileDialog("exportDialog", "Export triggers, macros and games", &ZNTFileWiring::exportTo);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setFileMode(QFileDialog::AnyFile);
    dialog->setDefaultSuffix(QStringLiteral("txt"));
    dialog->selectFile(QStringLiteral("zantor-export.txt"));
    nameLists(*dialog);
    dialog->open();
}

void ZNTFileWiring::askForImportFile()
{
    auto* dialog =
        newFileDialog("importDialog", "Import triggers, macros and games", &ZNTFileWiring::importFrom);
    dialog->setFileMode(QFileDialog::ExistingFile);
    nameLists(*dialog);
    dialog->open();
}

void ZNTFileWiring::exportTo(const QString& path)
{
    lastFolder = QFileInfo(path).absolutePath();
    // The dialog has asked already whether a file may be replaced.
    const auto answer = exchange.exportTo(pathOf(path), ZNTExchange::Overwrite::AnyFile);
    if (answer.hasSucceeded)
        controller.services().platform.alert.showSuccess(u"Exported", answer.words);
    else
        controller.services().platform.alert.showMessage(u"Not exported", answer.words);
}

void ZNTFileWiring::importFrom(const QString& path)
{
    lastFolder = QFileInfo(path).absolutePath();
    auto answer = exchange.importFrom(pathOf(path));
    if (!answer.newTriggers.empty())
        answer.words += u" The triggers take effect after Reload triggers.";
    if (!answer.hasSucceeded) {
        controller.services().platform.alert.showMessage(u"Not imported", answer.words);
        return;
    }
    controller.showImported(answer.newTriggers);
    controller.services().platform.alert.showSuccess(u"Imported", answer.words);
}

std::string ZNTFileWiring::logFolder() const
{
    return ZNTLogger::folder(controller.services().platform.places);
}

void ZNTFileWiring::openLogFolder()
{
    const auto folder = QFile::decodeName(logFolder().c_str());
    if (!QDesktopServices::openUrl(QUrl::fromLocalFile(folder)))
        controller.services().platform.alert.showMessage(u"The desktop did not open the folder of logs.",
                                                         u"The logs are in " + textOfQt(folder) + u".");
}

void ZNTFileWiring::showOldLogs()
{
    if (!oldLogs)
        oldLogs = new ZNTOldLogsWindow(window, *window.textFromServer, logFolder());
    oldLogs->show();
    oldLogs->raise();
    oldLogs->activateWindow();
}
