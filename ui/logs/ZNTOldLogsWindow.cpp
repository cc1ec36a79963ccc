#include "ZNTOldLogsWindow.h"

#include "ZNTAttributedText.h"
#include "ZNTClientActions.h"
#include "ZNTFindBar.h"
#include "ZNTOutputView.h"
#include "ZNTQtText.h"
#include "ZNTWindowFit.h"

#include <QAction>
#include <QDate>
#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QScreen>
#include <QSplitter>
#include <QStyle>
#include <QVBoxLayout>
#include <algorithm>
#include <functional>

namespace
{

constexpr int gapBetweenHalves = 8; // the ring of the list in focus needs some of it
constexpr int usualRowsOfText = 28, usualColumnsOfText = 80;

QString latin(const char* words) { return QString::fromLatin1(words); }

QString sizeInWords(std::uintmax_t bytes)
{
    return QLocale::c().formattedDataSize(static_cast<qint64>(bytes), 1, QLocale::DataSizeTraditionalFormat);
}

/// "22 November 2026, 11:37"
QString momentInWords(const ZNTLogTime& time)
{
    return QLocale::c().toString(QDate(time.year, time.month, time.day), latin("d MMMM yyyy")) +
           QStringLiteral(", %1:%2")
               .arg(time.hour, 2, 10, QLatin1Char('0'))
               .arg(time.minute, 2, 10, QLatin1Char('0'));
}

QString titleOf(const ZNTOldLog& log)
{
    return momentInWords(log.started) + latin(", ") + sizeInWords(log.size);
}

} // namespace

ZNTOldLogsWindow::ZNTOldLogsWindow(QWidget& window, const ZNTOutputView& model, const std::string& folder)
    : QDialog(&window, Qt::Window)
{
    setObjectName(latin("oldLogs"));
    setWindowTitle(latin("Old logs"));
    setWhatsThis(latin("Reads the logs of earlier sessions. Escape closes it."));
    setAttribute(Qt::WA_DeleteOnClose); // the text of a log can be large
    makeParts(model);
    wireKeys();
    nextTurn.setInterval(0);
    QObject::connect(&nextTurn, &QTimer::timeout, this, [this] { readPart(); });
    QObject::connect(list, &QListWidget::currentRowChanged, this, [this](int row) { openLog(row); });
    QObject::connect(this, &QDialog::finished, &window, &QWidget::activateWindow);
    listLogs(folder);
    znt::fitToScreen(*this);
    shareWidth();
    list->setFocus();
}

/// The list is as wide as its titles. On a small screen the text keeps half of the window.
void ZNTOldLogsWindow::shareWidth()
{
    int ofList = std::max(0, list->sizeHintForColumn(0)) + 2 * list->frameWidth();
    if (list->count() > usualRowsOfText)
        ofList += list->style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, list);
    const QMargins edges = layout()->contentsMargins();
    const int around = halves->handleWidth() + edges.left() + edges.right();
    const QSize text = output->sizeForGrid(usualColumnsOfText, usualRowsOfText);
    resize(
        (text + QSize(ofList + around, edges.top() + edges.bottom())).boundedTo(screen()->availableSize()));
    ofList = std::clamp(ofList, list->minimumWidth(), std::max(list->minimumWidth(), width() / 2));
    halves->setSizes({ofList, std::max(1, width() - around - ofList)});
}

void ZNTOldLogsWindow::makeParts(const ZNTOutputView& model)
{
    list = new ZNTHintedList<QListWidget>(this);
    list->setObjectName(latin("oldLogsList"));
    list->setAccessibleName(latin("Logs, the newest first"));
    list->setWhatsThis(
        latin("The logs with the time at which each was started. The chosen one is shown beside the list."));
    list->setUniformItemSizes(true);
    list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    list->setMinimumWidth(list->fontMetrics().averageCharWidth() * 16);

    auto* right = new QWidget(this);
    output = new ZNTOutputView(right);
    output->setObjectName(latin("oldLogText"));
    output->setAccessibleName(latin("Text of the log"));
    output->setWhatsThis(latin("The text of the chosen log. The arrows read it, Ctrl+F searches in it."));
    output->setTextFont(model.textFont());
    output->setPointSize(model.pointSize());
    output->setAmbiguousWidth(model.store().ambiguousWidth());
    output->setMinimumHeight(output->fontMetrics().height() * 5);
    findBar = new ZNTFindBar(*output, QStringLiteral("Find in the log"));
    findBar->setObjectName(latin("oldLogFind"));
    findBar->hide();
    auto* column = new QVBoxLayout(right);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(output, 1);
    column->addWidget(findBar);

    halves = new QSplitter(Qt::Horizontal, this);
    halves->setHandleWidth(gapBetweenHalves);
    halves->addWidget(list);
    halves->addWidget(right);
    halves->setStretchFactor(1, 1);
    halves->setChildrenCollapsible(false);

    status = new QLabel(this);
    status->setObjectName(latin("oldLogStatus"));
    status->setWordWrap(true);
    auto* searching = new QPushButton(latin("&Find..."), this);
    searching->setObjectName(latin("oldLogSearch"));
    searching->setAccessibleName(latin("Find in the log"));
    auto* closing = new QPushButton(latin("Close"), this);
    closing->setObjectName(latin("oldLogsClose"));
    for (QPushButton* button : {searching, closing})
        button->setAutoDefault(false); // Return belongs to the list and the search
    QObject::connect(searching, &QPushButton::clicked, this, [this] { findBar->open(); });
    QObject::connect(closing, &QPushButton::clicked, this, &QDialog::reject);
    auto* row = new QHBoxLayout;
    row->addWidget(status, 1);
    row->addWidget(searching);
    row->addWidget(closing);

    auto* all = new QVBoxLayout(this);
    all->addWidget(halves, 1);
    all->addLayout(row);
}

/// The keys of the main window that mean the same here.
void ZNTOldLogsWindow::wireKeys()
{
    const auto onKeys = [this](ZNTActionName name, std::function<void()> task) {
        auto* action = new QAction(this);
        QList<QKeySequence> keys;
        for (const QString& key : znt::latinText(name.row().keys).split(latin(" or ")))
            keys << QKeySequence::fromString(key, QKeySequence::PortableText);
        action->setShortcuts(keys);
        action->setText(znt::latinText(name.row().title).remove(QLatin1Char('&')).remove(latin("...")));
        action->setWhatsThis(action->text() + QLatin1Char('.'));
        addAction(action);
        QObject::connect(action, &QAction::triggered, this, [task = std::move(task)] { task(); });
    };
    onKeys("find", [this] { findBar->open(); });
    onKeys("findNext", [this] { findBar->findNext(); });
    onKeys("findPrevious", [this] { findBar->findPrevious(); });
    onKeys("larger", [this] { output->zoomIn(); });
    onKeys("smaller", [this] { output->zoomOut(); });
    onKeys("normalSize", [this] { output->resetZoom(); });
    onKeys("jumpToEnd", [this] { output->jumpToEnd(); });
}

void ZNTOldLogsWindow::listLogs(const std::string& folder)
{
    logs = znt::oldLogsIn(folder);
    for (const ZNTOldLog& log : logs)
        list->addItem(titleOf(log));
    list->setEmptyHint(latin("There are no logs yet."));
    if (logs.empty())
        output->setEmptyHint(latin("Zantor writes a log of each session. Its text appears here."));
    list->setCurrentRow(logs.empty() ? -1 : 0);
}

void ZNTOldLogsWindow::openLog(int row)
{
    nextTurn.stop();
    reader.reset();
    findBar->close();
    output->clear();
    if (row < 0 || row >= static_cast<int>(logs.size()))
        return;
    sequences.reset();
    reader = std::make_unique<ZNTLogReader>(logs[static_cast<std::size_t>(row)].path);
    nextTurn.start();
}

void ZNTOldLogsWindow::readPart()
{
    const auto part = reader->nextPart();
    if (!part) {
        say(latin("This log could not be read: ") + QString::fromStdString(part.error().description));
    } else {
        // The log holds each line of the player's own with its colour, which would never end.
        output->append({sequences.attributedText(part.value()).text, {}, {}});
    }
    if (!reader->isAtEnd()) {
        status->setText(
            QStringLiteral("Reading, %1 %").arg(100 * reader->bytesRead() / reader->bytesToRead()));
        return;
    }
    nextTurn.stop();
    if (part && reader->bytesLeftOut() > 0)
        say(QStringLiteral("The last %1 of %2")
                .arg(sizeInWords(reader->bytesRead()),
                     sizeInWords(reader->bytesRead() + reader->bytesLeftOut())));
    else if (part)
        say(reader->bytesRead() == 0 ? latin("This log is empty.") : QString());
    reader.reset();
}

void ZNTOldLogsWindow::say(const QString& words)
{
    status->setText(words);
    output->setAccessibleDescription(words);
}
