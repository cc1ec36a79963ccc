#pragma once

#include "ZNTExchange.h"
#include "ZNTMainMenu.h"

#include <QPointer>
#include <string>

class QFileDialog;
class QDialog;
class ZNTMainWindow;
class ZNTMudAppController;

/// Joins the menu's actions about files to what they do: exporting and importing what the player has stored,
/// and the logs.
class ZNTFileWiring
{
public:
    /// The caller owns what it passes; all of it outlives this.
    ZNTFileWiring(ZNTMainWindow& window, ZNTMainMenu& menu, ZNTMudAppController& controller);

private:
    void askForExportFile();
    void askForImportFile();
    void exportTo(const QString& path);
    void importFrom(const QString& path);
    using UseFile = void (ZNTFileWiring::*)(const QString& path);
    /// `use` is called with the file that the player chooses.
    QFileDialog* newFileDialog(const char* objectName, const char* title, UseFile use);
    void openLogFolder();
    void showOldLogs();
    [[nodiscard]] std::string logFolder() const;

    ZNTMainWindow& window;
    ZNTMudAppController& controller;
    ZNTExchange exchange;
    QString lastFolder; ///< where the player found or put a file
    QPointer<QDialog> oldLogs;
};
