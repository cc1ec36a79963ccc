#include "ZNTMainWindow.h"

#include "ZNTAskBar.h"
#include "ZNTCaptionedField.h"
#include "ZNTCommandLine.h"
#include "ZNTFindBar.h"
#include "ZNTFirstStart.h"
#include "ZNTFlowLayout.h"
#include "ZNTFoldedKeys.h"
#include "ZNTMainWindowParts.h"
#include "ZNTQuitAnywhere.h"
#include "ZNTSidePanel.h"
#include "ZNTStatusButtons.h"
#include "ZNTTurningRing.h"
#include "ZNTUITextViewAccessability.h"
#include "ZNTWindowFit.h"

#include <QApplication>
#include <QCloseEvent>
#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QResizeEvent>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QSplitter>
#include <QStatusBar>
#include <QStyle>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>
#include <array>

namespace
{

constexpr int margin = 10;
constexpr int gap = 8;
constexpr int statusBarInset = 2; // how far to the right Qt sets what stands in a status bar
/// The grid that most games lay their text out for.
constexpr int usualColumns = 80, usualRows = 32;
/// In characters of the window's font.
constexpr int leastColumnsBesidePanel = 28;

QString text(const char* latin) { return QString::fromLatin1(latin); }

template <typename Widget>
Widget* named(Widget* widget, const char* objectName)
{
    widget->setObjectName(text(objectName));
    return widget;
}

} // namespace

ZNTMainWindow::ZNTMainWindow()
{
    setObjectName(text("mainWindow"));
    setWindowTitle(text("Zantor"));

    content = new QWidget;
    content->installEventFilter(this);
    auto* layout = new QVBoxLayout(content);
    layout->setContentsMargins(margin, margin, margin, gap);
    layout->setSpacing(gap);
    splitter = named(new QSplitter(Qt::Horizontal), "splitter");
    splitter->addWidget(makePlayArea());
    splitter->addWidget(makeSidePanel());
    splitter->setStretchFactor(0, 1);
    splitter->setStretchFactor(1, 0);
    splitter->setChildrenCollapsible(false);
    splitter->setHandleWidth(margin);
    connect(splitter, &QSplitter::splitterMoved, this, [this] {
        isShareChosen = true;
        if (splitter->orientation() == Qt::Horizontal)
            chosenPanelWidth_ = splitter->sizes().constLast();
        if (whenPanelWidthChosen)
            whenPanelWidthChosen();
    });
    layout->addWidget(splitter, 1);

    auto* scroll = new ZNTContentScroll;
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setFocusPolicy(Qt::NoFocus);
    scroll->setWidgetResizable(true);
    scroll->setWidget(content);
    setCentralWidget(scroll);
    makeStatusBar();
    setTabOrders();
    new ZNTFoldedKeys(*this, *sidePanel, [this] { chooseSidePanel(true); });
    standSidePanel();
}

ZNTMainWindow::~ZNTMainWindow() = default;

/// That the window needs for so many columns of text beside a panel of that width.
int ZNTMainWindow::widthWithPanel(int columns, int panel) const
{
    return 2 * margin + splitter->handleWidth() + textFromServer->sizeForGrid(columns, usualRows).width() +
           panel;
}

void ZNTMainWindow::takeUsualSize()
{
    const QSize output = textFromServer->sizeForGrid(usualColumns, usualRows);
    const QSize room =
        screen()->availableSize() - QSize(0, style()->pixelMetric(QStyle::PM_TitleBarHeight, nullptr, this));
    const bool hasPanel = widthWithPanel(usualColumns, sidePanel->leastWidth()) <= room.width();
    const int wanted =
        hasPanel ? widthWithPanel(usualColumns, sidePanel->comfortableWidth()) : 2 * margin + output.width();
    const int wide = std::min(wanted, room.width());
    const int high = menuBar()->heightForWidth(wide) + margin +
                     connectionRow->heightForWidth(output.width()) + gap + output.height() + gap +
                     commandRow->heightForWidth(output.width()) + gap + statusBar()->sizeHint().height();
    resize(QSize(wide, std::min(high, room.height())).expandedTo(minimumSizeHint()));
    standSidePanel();
    shareWidth();
}

void ZNTMainWindow::shareWidth()
{
    // The output gets its width first. The panel can do with less than its comfortable width.
    const int output = textFromServer->sizeForGrid(usualColumns, usualRows).width();
    const int shared = width() - 2 * margin - splitter->handleWidth();
    const int fitting = std::clamp(shared - output, sidePanel->leastWidth(), sidePanel->comfortableWidth());
    const int most =
        std::max(sidePanel->leastWidth(), shared - splitter->widget(0)->minimumSizeHint().width());
    const int side = chosenPanelWidth_ > 0 ? std::min(chosenPanelWidth_, most) : fitting;
    splitter->setSizes({shared - side, side});
}

void ZNTMainWindow::choosePanelWidth(int width)
{
    isShareChosen = true;
    chosenPanelWidth_ = width;
    if (splitter->orientation() == Qt::Horizontal)
        shareWidth();
}

void ZNTMainWindow::standSidePanel()
{
    fold.setRoom(widthWithPanel(usualColumns, sidePanel->leastWidth()) <= width());
    if (fold.isShown())
        standBesideOrBelow();
    if (fold.isShown() != isSidePanelShown())
        showSidePanel(fold.isShown());
}

void ZNTMainWindow::standBesideOrBelow()
{
    const int output = std::max(splitter->widget(0)->minimumSizeHint().width(),
                                fontMetrics().averageCharWidth() * leastColumnsBesidePanel);
    const int around =
        2 * margin + splitter->handleWidth() + sidePanel->verticalScrollBar()->sizeHint().width();
    const bool isBelow = output + sidePanel->leastWidth() + around > width();
    sidePanel->showWhole(isBelow);
    if (isBelow == (splitter->orientation() == Qt::Vertical))
        return;
    splitter->setOrientation(isBelow ? Qt::Vertical : Qt::Horizontal);
    if (!isBelow)
        shareWidth();
}

void ZNTMainWindow::showSidePanel(bool shown)
{
    // The focus goes to the line where a player wants to be next, not to what follows in the Tab order.
    const QWidget* focused = focusWidget();
    if (!shown && focused && sidePanel->isAncestorOf(focused))
        (textToServer->isEnabled() ? static_cast<QWidget*>(textToServer) : textFromServer)
            ->setFocus(Qt::OtherFocusReason);
    sidePanel->setVisible(shown);
    if (shown && (!isShareChosen || chosenPanelWidth_ > 0) && splitter->orientation() == Qt::Horizontal)
        shareWidth();
    if (whenSidePanelMoves)
        whenSidePanelMoves(shown);
}

void ZNTMainWindow::chooseSidePanel(bool shown)
{
    if (shown == isSidePanelShown())
        return;
    fold.choose(shown);
    standSidePanel();
}

bool ZNTMainWindow::isSidePanelShown() const { return !sidePanel->isHidden(); }

bool ZNTMainWindow::eventFilter(QObject* watched, QEvent* event)
{
    // The content needs another size, for instance after a change of the font.
    if (watched == content && event->type() == QEvent::LayoutRequest)
        standSidePanel();
    return QMainWindow::eventFilter(watched, event);
}

void ZNTMainWindow::resizeEvent(QResizeEvent* event)
{
    QMainWindow::resizeEvent(event);
    standSidePanel();
    if (!isShareChosen && splitter->orientation() == Qt::Horizontal)
        shareWidth();
}

QWidget* ZNTMainWindow::makeConnectionRow()
{
    connectionRow = new ZNTConnectionRow;
    mudName = connectionRow->mudName;
    ipAddress = connectionRow->ipAddress;
    port = connectionRow->port;
    connectionButton = connectionRow->connectionButton;
    return connectionRow;
}

QWidget* ZNTMainWindow::makePlayArea()
{
    auto* area = new ZNTPlayArea;
    auto* column = new QVBoxLayout(area);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(gap);
    // In this column, so that the row begins and ends where the output does.
    column->addWidget(makeConnectionRow());

    textFromServer = named(new ZNTUITextViewAccessability, "textFromServer");
    textFromServer->setAccessibleName(text("Output"));
    connect(textFromServer, &ZNTOutputView::shownFontChanged, this, [this] { standSidePanel(); });
    textFromServer->setMinimumHeight(textFromServer->fontMetrics().height() * 5);
    firstStart = new ZNTFirstStart;
    firstStart->hide();
    listeningBox = firstStart->listeningBox;
    auto* outputPlace = new QGridLayout; // a screen reader would not find the card inside the output
    outputPlace->addWidget(textFromServer, 0, 0);
    outputPlace->addWidget(firstStart, 0, 0, Qt::AlignCenter);
    column->addLayout(outputPlace, 1);
    findBar = named(new ZNTFindBar(*textFromServer), "findBar");
    findBar->hide();
    column->addWidget(findBar);
    findInSaidBar = named(new ZNTAskBar(text("Find in what was said")), "findInSaidBar");
    findInSaidBar->hide();
    column->addWidget(findInSaidBar);

    commandRow = new QWidget;
    auto* flow = new ZNTFlowLayout(commandRow, gap);
    textToServer = named(new ZNTCommandLine, "textToServer");
    flow->addStretching(new ZNTCaptionedField(text("Command &line"), textToServer, 20));
    resendLastCommand = named(new QPushButton(text("Resen&d")), "resendLastCommand");
    resendLastCommand->setToolTip(text("Send the last command again"));
    flow->addWidget(resendLastCommand);
    startStopSpeech = named(new QPushButton(text("S&tart speech")), "startStopSpeech");
    flow->addWidget(startStopSpeech);
    column->addWidget(commandRow);
    return area;
}

QWidget* ZNTMainWindow::makeSidePanel()
{
    sidePanel = new ZNTSidePanel;
    compass = sidePanel->compass;
    macroComboBoxGroup = sidePanel->macroComboBoxGroup;
    createNewMacroGroup = sidePanel->createNewMacroGroup;
    deleteMacroGroup = sidePanel->deleteMacroGroup;
    macroTable = sidePanel->macroTable;
    runMacro = sidePanel->runMacro;
    addMacro = sidePanel->addMacro;
    editMacro = sidePanel->editMacro;
    removeMacro = sidePanel->removeMacro;
    return sidePanel;
}

void ZNTMainWindow::makeStatusBar()
{
    statusText = named(new ZNTStatusLabel, "statusText");
    statusText->setTextFormat(Qt::PlainText);
    // Tab comes here and the arrows read it. The status bar itself cannot have the focus.
    statusText->setTextInteractionFlags(Qt::TextSelectableByKeyboard | Qt::TextSelectableByMouse);
    statusText->setFocusPolicy(Qt::StrongFocus);
    statusText->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    myProgressIndicator = named(new ZNTTurningRing, "myProgressIndicator");
    myProgressIndicator->setAccessibleName(text("Connecting"));
    statusButtons = new ZNTStatusButtons;
    auto* line = new QWidget;
    auto* row = new QHBoxLayout(line);
    row->setContentsMargins(margin - statusBarInset, 2, margin + statusBarInset, 4);
    row->setSpacing(gap);
    row->addWidget(myProgressIndicator);
    row->addWidget(statusText, 1);
    row->addWidget(statusButtons);
    statusBar()->addWidget(line, 1);
    statusBar()->setSizeGripEnabled(false);
}

void ZNTMainWindow::setTabOrders()
{
    std::vector<QWidget*> order{mudName, ipAddress, port, connectionButton, textFromServer};
    for (QWidget* widget : firstStart->parts())
        order.push_back(widget);
    for (QWidget* widget : findBar->parts())
        order.push_back(widget);
    for (QWidget* widget :
         std::initializer_list<QWidget*>{findInSaidBar, textToServer, resendLastCommand, startStopSpeech})
        order.push_back(widget);
    for (QWidget* widget : sidePanel->tabOrder())
        order.push_back(widget);
    for (QWidget* widget : std::initializer_list<QWidget*>{statusText, statusButtons->stopConnecting,
                                                           statusButtons->connectAgain})
        order.push_back(widget);
    for (std::size_t index = 1; index < order.size(); ++index)
        setTabOrder(order[index - 1], order[index]);
}

void ZNTMainWindow::focusNextPart(int direction)
{
    const std::array<QWidget*, 4> entrances{ipAddress->isEnabled() ? static_cast<QWidget*>(ipAddress)
                                                                   : connectionButton,
                                            textFromServer, textToServer, macroComboBoxGroup};
    const std::array<const QWidget*, 4> parts{connectionRow, textFromServer, textToServer, sidePanel};
    const QWidget* focused = QApplication::focusWidget();
    int now = direction > 0 ? -1 : 0;
    for (std::size_t index = 0; index < parts.size(); ++index)
        if (focused && (parts[index] == focused || parts[index]->isAncestorOf(focused)))
            now = static_cast<int>(index);
    const int count = static_cast<int>(parts.size());
    for (int step = 1; step <= count; ++step) {
        QWidget* next =
            entrances[static_cast<std::size_t>(((now + direction * step) % count + count) % count)];
        if (next->isVisible() && next->isEnabled()) {
            next->setFocus(Qt::TabFocusReason);
            return;
        }
    }
}

void ZNTMainWindow::closeEvent(QCloseEvent* event)
{
    ZNTQuitAnywhere::closeDialogs();
    event->setAccepted(!whenClosing || whenClosing());
}
