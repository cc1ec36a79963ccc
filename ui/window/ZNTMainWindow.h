#pragma once

#include "ZNTConnectionRow.h"

#include "ZNTPanelFold.h"

#include <QMainWindow>
#include <functional>
#include <vector>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QProgressBar;
class QPushButton;
class QSplitter;
class QWidget;
class ZNTAskBar;
class ZNTCommandLine;
class ZNTCompass;
class ZNTFindBar;
class ZNTFirstStart;
class ZNTHintedTable;
class ZNTOutputView;
class ZNTStatusButtons;
class ZNTSidePanel;

/// The widgets of the main window and where they stand; what they do is wired elsewhere.
///
/// Everything lies in scroll areas and rows wrap, so that with a large font or on a small screen nothing is
/// cut off. While 80 columns of text do not fit beside the side panel, it folds away. If the player wants it
/// there all the same, it goes below the output where it must. Each widget's object name is its member's
/// name.
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
    ZNTFirstStart* firstStart; ///< stands in the empty output
    QCheckBox* listeningBox;   ///< on its card
    ZNTFindBar* findBar;
    ZNTAskBar* findInSaidBar;
    ZNTCommandLine* textToServer;
    QPushButton* resendLastCommand;
    QPushButton* startStopSpeech;
    ZNTSidePanel* sidePanel; ///< holds the next nine
    ZNTCompass* compass;
    QComboBox* macroComboBoxGroup;
    QPushButton* createNewMacroGroup;
    QPushButton* deleteMacroGroup;
    ZNTHintedTable* macroTable;
    QPushButton* runMacro;
    QPushButton* addMacro;
    QPushButton* editMacro;
    QPushButton* removeMacro;
    QLabel* statusText;
    ZNTStatusButtons* statusButtons;
    ZNTConnectionRow* connectionRow;

    /// Moves the focus to the next of: connection, output, command line, side panel; -1 goes backwards.
    void focusNextPart(int direction);

    /// What the player wants. It holds until the player wants the opposite.
    void chooseSidePanel(bool shown);
    [[nodiscard]] bool isSidePanelShown() const;
    /// Called when the side panel comes or folds away.
    std::function<void(bool isShown)> whenSidePanelMoves;

    /// Asked before the window closes.
    std::function<bool()> whenClosing;

    /// Makes the window large enough for the text that games send, if the screen is. Call it when everything
    /// is in the window, with its menus.
    void takeUsualSize();

    /// The width that the player gave the side panel; 0 for none. It is kept while the panel stands beside
    /// the output.
    [[nodiscard]] int chosenPanelWidth() const { return chosenPanelWidth_; }
    void choosePanelWidth(int width);
    std::function<void()> whenPanelWidthChosen;

protected:
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    /// Folds it away, or puts it beside the output, or below it if there is too little room.
    void standSidePanel();
    [[nodiscard]] int widthWithPanel(int columns, int panel) const;
    void showSidePanel(bool shown);
    void standBesideOrBelow();
    /// Shares the width between output and side panel. They stand side by side.
    void shareWidth();
    QWidget* makeConnectionRow();
    QWidget* makePlayArea();
    QWidget* makeSidePanel();
    void makeStatusBar();
    void setTabOrders();

    QWidget* content;
    QSplitter* splitter;
    QWidget* commandRow;
    ZNTPanelFold fold;
    bool isShareChosen = false; ///< the player has moved the splitter
    int chosenPanelWidth_ = 0;
};
