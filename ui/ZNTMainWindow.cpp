#include "ZNTMainWindow.h"

#include "ZNTCommandLine.h"
#include "ZNTCompass.h"
#include "ZNTFindBar.h"
#include "ZNTFlowLayout.h"
#include "ZNTUITextViewAccessability.h"

#include <QApplication>
#include <QCloseEvent>
#include <QComboBox>
#include <QGridLayout>
#include <QIntValidator>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QSplitter>
#include <QStatusBar>
#include <QTableView>
#include <QVBoxLayout>
#include <array>

namespace
{

constexpr int margin = 12;
constexpr int gap = 8;
constexpr int wideGap = 16;
/// What most games lay their text out for.
constexpr int usualColumns = 80, usualRows = 32;

QString text(const char* latin) { return QString::fromLatin1(latin); }

template <typename Widget>
Widget* named(Widget* widget, const char* objectName)
{
    widget->setObjectName(text(objectName));
    return widget;
}

/// A field with its caption before it, which a row keeps together.
QWidget* captioned(const char* caption, QWidget* field, int columns)
{
    auto* pair = new QWidget;
    auto* layout = new QHBoxLayout(pair);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(gap);
    auto* label = new QLabel(text(caption));
    label->setBuddy(field);
    field->setAccessibleName(text(caption).remove(QLatin1Char('&')));
    field->setMinimumWidth(field->fontMetrics().averageCharWidth() * columns);
    layout->addWidget(label);
    layout->addWidget(field, 1);
    return pair;
}

QLabel* heading(const char* words, QWidget* buddy = nullptr)
{
    auto* label = new QLabel(text(words));
    QFont bold = label->font();
    bold.setBold(true);
    label->setFont(bold);
    label->setBuddy(buddy);
    return label;
}

/// Asks for no more than it needs, so that what can scroll does not push the rest out of sight.
class ModestWidget final : public QWidget
{
public:
    [[nodiscard]] QSize sizeHint() const override { return minimumSizeHint(); }
};

/// Scrolls rather than make the window higher, and no wider than its content.
class SidePanel final : public QScrollArea
{
public:
    [[nodiscard]] QSize sizeHint() const override
    {
        const int width = widget()->sizeHint().width() + verticalScrollBar()->sizeHint().width();
        return {width, minimumSizeHint().height()};
    }
};

} // namespace

ZNTMainWindow::ZNTMainWindow()
{
    setObjectName(text("mainWindow"));
    setWindowTitle(text("Zantor"));

    auto* content = new QWidget;
    auto* layout = new QVBoxLayout(content);
    layout->setContentsMargins(margin, margin, margin, gap);
    layout->setSpacing(gap);
    layout->addWidget(makeConnectionRow());

    splitter = named(new QSplitter(Qt::Horizontal), "splitter");
    splitter->addWidget(makePlayArea());
    sidePanel = makeSidePanel();
    splitter->addWidget(sidePanel);
    splitter->setStretchFactor(0, 1);
    splitter->setStretchFactor(1, 0);
    splitter->setCollapsible(0, false);
    splitter->setHandleWidth(margin);
    layout->addWidget(splitter, 1);

    auto* scroll = new QScrollArea;
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setFocusPolicy(Qt::NoFocus);
    scroll->setWidgetResizable(true);
    scroll->setWidget(content);
    setCentralWidget(scroll);
    makeStatusBar();
    setTabOrders();
    takeUsualSize();
}

ZNTMainWindow::~ZNTMainWindow() = default;

void ZNTMainWindow::takeUsualSize()
{
    const QSize output = textFromServer->sizeForGrid(usualColumns, usualRows);
    const int side = sidePanel->sizeHint().width();
    const QSize around = sizeHint() - splitter->sizeHint();
    const QSize wanted(output.width() + splitter->handleWidth() + side + 2 * margin,
                       output.height() + around.height());
    resize(wanted.expandedTo(minimumSizeHint()).boundedTo(screen()->availableSize()));
    // The output yields nothing to the panel but what the panel needs.
    splitter->setSizes({width() - side - splitter->handleWidth() - 2 * margin, side});
}

QWidget* ZNTMainWindow::makeConnectionRow()
{
    connectionRow = named(new QWidget, "connectionRow");
    auto* row = new ZNTFlowLayout(connectionRow, margin);
    mudName = named(new QLineEdit, "mudName");
    ipAddress = named(new QLineEdit, "ipAddress");
    port = named(new QLineEdit, "port");
    port->setValidator(new QIntValidator(0, 65535, port));
    connectionButton = named(new QPushButton(text("&Connect")), "connectionButton");
    connectionButton->setAccessibleName(text("Connect"));
    // As wide with either title, so that the row stands still.
    connectionButton->setMinimumWidth(connectionButton->fontMetrics().horizontalAdvance(text("Disconnect")) +
                                      connectionButton->fontMetrics().height() * 2);
    myProgressIndicator = named(new QProgressBar, "myProgressIndicator");
    myProgressIndicator->setAccessibleName(text("Connecting"));
    myProgressIndicator->setMaximumWidth(connectionButton->fontMetrics().averageCharWidth() * 12);

    row->addStretching(captioned("&Name", mudName, 14));
    row->addStretching(captioned("&Address", ipAddress, 22));
    row->addWidget(captioned("&Port", port, 8));
    auto* ends = new QWidget;
    auto* pair = new QHBoxLayout(ends);
    pair->setContentsMargins(0, 0, 0, 0);
    pair->setSpacing(gap);
    pair->addWidget(connectionButton);
    pair->addWidget(myProgressIndicator);
    row->addWidget(ends);
    return connectionRow;
}

QWidget* ZNTMainWindow::makePlayArea()
{
    auto* area = new ModestWidget;
    auto* column = new QVBoxLayout(area);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(gap);

    textFromServer = named(new ZNTUITextViewAccessability, "textFromServer");
    textFromServer->setAccessibleName(text("Output"));
    textFromServer->setMinimumHeight(textFromServer->fontMetrics().height() * 5);
    column->addWidget(textFromServer, 1);
    findBar = named(new ZNTFindBar(*textFromServer), "findBar");
    findBar->hide();
    column->addWidget(findBar);

    auto* row = new QWidget;
    auto* flow = new ZNTFlowLayout(row, gap);
    textToServer = named(new ZNTCommandLine, "textToServer");
    flow->addStretching(captioned("Command &line", textToServer, 20));
    resendLastCommand = named(new QPushButton(text("Resen&d")), "resendLastCommand");
    resendLastCommand->setToolTip(text("Send the last command again"));
    flow->addWidget(resendLastCommand);
    startStopSpeech = named(new QPushButton(text("S&tart speech")), "startStopSpeech");
    flow->addWidget(startStopSpeech);
    column->addWidget(row);
    return area;
}

QScrollArea* ZNTMainWindow::makeSidePanel()
{
    auto* panel = new QWidget;
    auto* column = new QVBoxLayout(panel);
    column->setContentsMargins(0, 0, gap, 0);
    column->setSpacing(gap);

    column->addWidget(heading("Directions"));
    compass = named(new ZNTCompass, "compass");
    column->addWidget(compass);
    column->addSpacing(wideGap - gap);

    macroComboBoxGroup = named(new QComboBox, "macroComboBoxGroup");
    macroComboBoxGroup->setEditable(true);
    macroComboBoxGroup->setAccessibleName(text("Macro group"));
    macroComboBoxGroup->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    macroComboBoxGroup->setMinimumContentsLength(12);
    column->addWidget(heading("Macro gro&up", macroComboBoxGroup));
    column->addWidget(macroComboBoxGroup);
    createNewMacroGroup = named(new QPushButton(text("Ne&w group")), "createNewMacroGroup");
    deleteMacroGroup = named(new QPushButton(text("Delete group")), "deleteMacroGroup");
    auto* groupButtons = new QHBoxLayout;
    groupButtons->setSpacing(gap);
    groupButtons->addWidget(createNewMacroGroup, 1);
    groupButtons->addWidget(deleteMacroGroup, 1);
    column->addLayout(groupButtons);
    column->addSpacing(wideGap - gap);

    macroTable = named(new QTableView, "macroTable");
    macroTable->setAccessibleName(text("Macro list"));
    macroTable->setMinimumHeight(macroTable->fontMetrics().height() * 6);
    column->addWidget(heading("Macro l&ist", macroTable));
    column->addWidget(macroTable, 1);
    runMacro = named(new QPushButton(text("Run")), "runMacro");
    addMacro = named(new QPushButton(text("Add...")), "addMacro");
    editMacro = named(new QPushButton(text("Edit...")), "editMacro");
    removeMacro = named(new QPushButton(text("Remove")), "removeMacro");
    runMacro->setAccessibleName(text("Run macro"));
    addMacro->setAccessibleName(text("Add macro"));
    editMacro->setAccessibleName(text("Edit macro"));
    removeMacro->setAccessibleName(text("Remove macro"));
    auto* macroButtons = new QGridLayout;
    macroButtons->setSpacing(gap);
    macroButtons->addWidget(runMacro, 0, 0);
    macroButtons->addWidget(addMacro, 0, 1);
    macroButtons->addWidget(editMacro, 1, 0);
    macroButtons->addWidget(removeMacro, 1, 1);
    column->addLayout(macroButtons);

    auto* scroll = named(new SidePanel, "sidePanel");
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setFocusPolicy(Qt::NoFocus);
    scroll->setWidgetResizable(true);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    scroll->setWidget(panel);
    return scroll;
}

void ZNTMainWindow::makeStatusBar()
{
    statusText = named(new QLabel, "statusText");
    statusText->setTextFormat(Qt::PlainText);
    // Reached with Tab and read with the arrows, for a status bar alone cannot have the focus.
    statusText->setTextInteractionFlags(Qt::TextSelectableByKeyboard | Qt::TextSelectableByMouse);
    statusText->setFocusPolicy(Qt::StrongFocus);
    statusText->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    statusText->setContentsMargins(margin, 2, margin, 4);
    statusBar()->addWidget(statusText, 1);
    statusBar()->setSizeGripEnabled(false);
}

void ZNTMainWindow::setTabOrders()
{
    std::vector<QWidget*> order{mudName, ipAddress, port, connectionButton, textFromServer};
    for (QWidget* widget : findBar->parts())
        order.push_back(widget);
    for (QWidget* widget : std::initializer_list<QWidget*>{textToServer, resendLastCommand, startStopSpeech})
        order.push_back(widget);
    for (std::size_t index = 0; index < numberOfDirections; ++index)
        order.push_back(compass->button(static_cast<ZNTDirection>(index)));
    for (QWidget* widget :
         std::initializer_list<QWidget*>{macroComboBoxGroup, createNewMacroGroup, deleteMacroGroup,
                                         macroTable, runMacro, addMacro, editMacro, removeMacro, statusText})
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

void ZNTMainWindow::closeEvent(QCloseEvent* event) { event->setAccepted(!whenClosing || whenClosing()); }
