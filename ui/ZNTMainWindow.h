#pragma once

#include <QMainWindow>
#include <functional>
#include <vector>

class QComboBox;
class QLabel;
class QLineEdit;
class QProgressBar;
class QPushButton;
class QScrollArea;
class QSplitter;
class QTableView;
class QWidget;
class ZNTCommandLine;
class ZNTCompass;
class ZNTFindBar;
class ZNTOutputView;

/// The widgets of the main window and where they stand; what they do is wired elsewhere.
///
/// Everything lies in scroll areas, so that with a large font or on a small screen nothing is cut off. Each
/// widget bears its member's name as its object name.
class ZNTMainWindow final : public QMainWindow
{
public:
    ZNTMainWindow();
    ~ZNTMainWindow() override;

    QLineEdit* mudName;
    QLineEdit* ipAddress;
    QLineEdit* port;
    QPushButton* connectionButton;
    QProgressBar* myProgressIndicator;
    ZNTOutputView* textFromServer;
    ZNTFindBar* findBar;
    ZNTCommandLine* textToServer;
    QPushButton* resendLastCommand;
    QPushButton* startStopSpeech;
    ZNTCompass* compass;
    QComboBox* macroComboBoxGroup;
    QPushButton* createNewMacroGroup;
    QPushButton* deleteMacroGroup;
    QTableView* macroTable;
    QPushButton* runMacro;
    QPushButton* addMacro;
    QPushButton* editMacro;
    QPushButton* removeMacro;
    QLabel* statusText;
    QWidget* connectionRow;
    QScrollArea* sidePanel;

    /// Moves the focus to the next of: connection, output, command line, side panel; -1 goes backwards.
    void focusNextPart(int direction);

    /// Asked before the window closes.
    std::function<bool()> whenClosing;

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    /// Large enough for the text that games send, as far as the screen allows.
    void takeUsualSize();
    QWidget* makeConnectionRow();
    QWidget* makePlayArea();
    QScrollArea* makeSidePanel();
    void makeStatusBar();
    void setTabOrders();

    QSplitter* splitter;
};
