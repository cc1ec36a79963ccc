#include "ZNTChannelHistorySheet.h"

#include "ZNTControlHelp.h"
#include "ZNTQtText.h"

#include <QDateTime>
#include <QHeaderView>
#include <QSignalBlocker>
#include <utility>

namespace
{

std::vector<ZNTColumn> lineColumns()
{
    using Kind = ZNTColumn::Kind;
    return {{"text", QStringLiteral("Line"), Kind::Text, false},
            {"time", QStringLiteral("Time"), Kind::Text, false},
            {"channel", QStringLiteral("Channel"), Kind::Text, false}};
}

std::u16string timeInWords(std::chrono::system_clock::time_point time)
{
    const auto when = QDateTime::fromSecsSinceEpoch(std::chrono::system_clock::to_time_t(time));
    const bool isToday = when.date() == QDate::currentDate();
    return znt::textOfQt(isToday ? when.toString(QStringLiteral("HH:mm:ss"))
                                 : when.toString(QStringLiteral("yyyy-MM-dd HH:mm")));
}

} // namespace

ZNTChannelHistorySheet::ZNTChannelHistorySheet(QWidget& window, ZNTChannelHistory& history,
                                               std::function<void(const QString&)> lineTaken)
    : history(history),
      lineTaken(std::move(lineTaken)),
      dialog(new ZNTSheetDialog(&window)),
      rows(lineColumns()),
      tableView((layout.setupUi(dialog), layout.linesTable), &rows),
      theSheet(dialog)
{
    rows.setSource({[this] { return static_cast<long>(lines.size()); },
                    [this](std::string_view column, long row) -> ZNTCellValue { return cell(column, row); },
                    {}});
    layout.linesTable->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    layout.linesTable->horizontalHeader()->setStretchLastSection(true);
    znt::explainControls(*dialog);
    QObject::connect(layout.channel, &QComboBox::currentIndexChanged, dialog, [this] { showLines(); });
    QObject::connect(layout.takeButton, &QPushButton::clicked, dialog, [this] { takeLine(); });
    QObject::connect(layout.linesTable, &QTableView::doubleClicked, dialog, [this] { takeLine(); });
    QObject::connect(layout.closeButton, &QPushButton::clicked, dialog, [this] { theSheet.close(); });
}

void ZNTChannelHistorySheet::show()
{
    listChannels();
    showLines();
    theSheet.show();
    layout.linesTable->setFocus();
}

/// The channel that was shown last is shown again, if it still exists.
void ZNTChannelHistorySheet::listChannels()
{
    const QSignalBlocker blocker(layout.channel);
    const QString shownBefore = layout.channel->currentData().toString();
    layout.channel->clear();
    layout.channel->addItem(QStringLiteral("All channels"), QString());
    for (const auto& name : history.channelNames())
        layout.channel->addItem(znt::qtText(name), znt::qtText(name));
    layout.channel->setCurrentIndex(std::max(0, layout.channel->findData(shownBefore)));
}

std::u16string ZNTChannelHistorySheet::shownChannel() const
{
    return znt::textOfQt(layout.channel->currentData().toString());
}

void ZNTChannelHistorySheet::showLines()
{
    lines = history.lines(shownChannel());
    layout.linesTable->setEmptyHint(znt::qtText(history.nothingInWords(shownChannel())));
    layout.takeButton->setEnabled(!lines.empty());
    rows.reload();
    layout.linesTable->setCurrentIndex(rows.index(rows.rowCount() - 1, 0));
    layout.linesTable->scrollToBottom();
}

void ZNTChannelHistorySheet::takeLine()
{
    const auto row = tableView.selectedRow();
    if (row < 0 || row >= static_cast<long>(lines.size()))
        return;
    const auto text = znt::qtText(lines[static_cast<std::size_t>(row)].text);
    theSheet.close();
    lineTaken(text);
}

std::u16string ZNTChannelHistorySheet::cell(std::string_view column, long row) const
{
    const auto& line = lines[static_cast<std::size_t>(row)];
    return column == "text" ? line.text : column == "time" ? timeInWords(line.time) : line.channel;
}
