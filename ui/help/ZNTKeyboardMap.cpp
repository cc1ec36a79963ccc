#include "ZNTKeyboardMap.h"

#include "ZNTCaptionedField.h"
#include "ZNTFilterField.h"
#include "ZNTHintedTable.h"
#include "ZNTKeyRows.h"
#include "ZNTPlainKeys.h"
#include "ZNTQtTableView.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QPushButton>
#include <QSortFilterProxyModel>
#include <QStandardItemModel>
#include <QVBoxLayout>
#include <utility>

namespace
{

constexpr int rowsAtOnce = 20;
constexpr int columnsOfFilter = 40;
constexpr int airOfRow = 8;

QStandardItem* newCell(const QString& words, const QString& spoken)
{
    auto* cell = new QStandardItem(words);
    cell->setEditable(false);
    cell->setAccessibleText(spoken);
    return cell;
}

} // namespace

/// The rows that fit the filter.
class ZNTKeyboardMap::Rows final : public QSortFilterProxyModel
{
public:
    Rows(QList<ZNTKeyRow> all, QObject* parent) : QSortFilterProxyModel(parent), all(std::move(all))
    {
        auto* cells = new QStandardItemModel(this);
        cells->setHorizontalHeaderLabels(
            {QStringLiteral("What it does"), QStringLiteral("Key"), QStringLiteral("Menu or place")});
        for (const ZNTKeyRow& row : this->all)
            cells->appendRow(
                {newCell(row.what, row.what), newCell(row.keys, row.spoken), newCell(row.place, row.place)});
        for (int column = 0; column < cells->columnCount(); ++column)
            cells->horizontalHeaderItem(column)->setTextAlignment(Qt::AlignLeft | Qt::AlignVCenter);
        setSourceModel(cells);
    }

    void show(const QString& words)
    {
        wanted = words;
        invalidateFilter();
    }

protected:
    [[nodiscard]] bool filterAcceptsRow(int row, const QModelIndex& /*parent*/) const override
    {
        return znt::isWanted(all[row], wanted);
    }

private:
    QList<ZNTKeyRow> all;
    QString wanted;
};

ZNTKeyboardMap::ZNTKeyboardMap(QWidget& window, const ZNTMainMenu& menu, std::function<void()> openManual)
    : ZNTHelpDialog(window, QStringLiteral("Keyboard map"), "keyboardPage")
{
    setWhatsThis(
        QStringLiteral("All keys. Type a word or a key to find some of them; Escape closes the map."));
    makeTable(menu);
    makeFilter();
    auto* manual = buttons().addButton(QStringLiteral("Open the &manual"), QDialogButtonBox::ActionRole);
    manual->setObjectName(QStringLiteral("openManual"));
    manual->setWhatsThis(QStringLiteral("Opens the manual, which explains everything else."));
    QObject::connect(manual, &QPushButton::clicked, this, std::move(openManual));
    arrange(comfortableSize(), *filter, numberOfKeys());
}

void ZNTKeyboardMap::makeTable(const ZNTMainMenu& menu)
{
    table = new ZNTHintedTable(this);
    rows = new Rows(znt::keyRows(menu), table);
    table->setObjectName(QStringLiteral("keyTable"));
    table->setAccessibleName(QStringLiteral("Keys"));
    table->setWhatsThis(
        QStringLiteral("What each key does, and in which menu it is. Up and Down go through the rows."));
    table->setEmptyHint(QStringLiteral("No key fits these words."));
    table->setModel(rows);
    ZNTQtTableView::followFocus(*table);
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setSelectionMode(QAbstractItemView::SingleSelection);
    table->setTabKeyNavigation(false);
    table->setShowGrid(false);
    table->setAlternatingRowColors(true);
    table->setWordWrap(true); // in a narrow window
    table->verticalHeader()->hide();
    table->ensurePolished();
    auto& columns = *table->horizontalHeader();
    columns.setHighlightSections(false);
    table->verticalHeader()->setMinimumSectionSize(table->fontMetrics().height() + airOfRow);
    table->verticalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    table->shareWidth();
}

/// All columns side by side, and as many rows as can be looked over at once.
QSize ZNTKeyboardMap::comfortableSize() const
{
    const QSize around = sizeHint() - table->sizeHint();
    const int sides = 2 * table->frameWidth();
    return around + QSize(table->sizeHint().width(),
                          table->horizontalHeader()->sizeHint().height() +
                              rowsAtOnce * table->verticalHeader()->minimumSectionSize() + sides);
}

void ZNTKeyboardMap::makeFilter()
{
    auto* field = new ZNTFilterField(
        *table, [this](const QString& words) { rows->show(words); }, [this] { return numberOfKeys(); });
    field->setObjectName(QStringLiteral("keyFilter"));
    field->setPlaceholderText(QStringLiteral("A word, or a key such as ctrl+k"));
    field->setWhatsThis(
        QStringLiteral("Type words, or a key such as ctrl+k, to see only what fits. Down goes to the rows."));
    new ZNTPlainKeys(*field, {Qt::Key_Return, Qt::Key_Enter}, [field] {
        field->goToView();
        return true;
    });
    filter = field;
    content().addWidget(new ZNTCaptionedField(QStringLiteral("&Filter"), field, columnsOfFilter));
    content().addWidget(table, 1);
    setTabOrder(field, table);
}

QString ZNTKeyboardMap::numberOfKeys() const
{
    const int number = rows->rowCount();
    return number == 1 ? QStringLiteral("1 row") : QStringLiteral("%1 rows").arg(number);
}
