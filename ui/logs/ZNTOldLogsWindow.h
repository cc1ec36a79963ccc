#pragma once

#include "ZNTEmptyHint.h"
#include "ZNTFullColourParser.h"
#include "ZNTLogReader.h"
#include "ZNTOldLogs.h"

#include <QDialog>
#include <QListWidget>
#include <QTimer>
#include <memory>
#include <string>
#include <vector>

class QLabel;
class QSplitter;
class ZNTFindBar;
class ZNTOutputView;

/// The logs of earlier sessions beside the game: the list at the left, the newest first; the text of the
/// chosen one at the right, with the same search as in the main window. Opens the newest log.
class ZNTOldLogsWindow final : public QDialog
{
public:
    /// A child of `window`. Text is shown in the font and with the zoom of `model`.
    ZNTOldLogsWindow(QWidget& window, const ZNTOutputView& model, const std::string& folder);

private:
    void makeParts(const ZNTOutputView& model);
    void wireKeys();
    void listLogs(const std::string& folder);
    void openLog(int row);
    void readPart();
    void shareWidth();
    void say(const QString& words);

    std::vector<ZNTOldLog> logs;
    QSplitter* halves = nullptr;
    ZNTHintedList<QListWidget>* list = nullptr;
    ZNTOutputView* output = nullptr;
    ZNTFindBar* findBar = nullptr;
    QLabel* status = nullptr;
    ZNTFullColourParser sequences;        ///< takes them out of the text
    std::unique_ptr<ZNTLogReader> reader; ///< while a log is being read
    QTimer nextTurn;
};
