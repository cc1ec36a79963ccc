#include "ZNTRowModel.h"

#include "ZNTQtText.h"

#include <algorithm>
#include <limits>

namespace
{

QString textOfCell(const ZNTCellValue& value)
{
    if (const auto* text = std::get_if<std::u16string>(&value))
        return znt::qtText(*text);
    if (const auto* number = std::get_if<std::int64_t>(&value))
        return QString::number(*number);
    return std::get<bool>(value) ? QStringLiteral("yes") : QStringLiteral("no");
}

/// Of the cells and their heading. Marks stand in the middle.
QVariant alignmentIn(const ZNTColumn& column)
{
    switch (column.kind) {
    case ZNTColumn::Kind::Number:
        return QVariant(Qt::AlignRight | Qt::AlignVCenter);
    case ZNTColumn::Kind::YesNo:
        return QVariant(Qt::AlignCenter);
    case ZNTColumn::Kind::Text:
        break;
    }
    return {};
}

bool isChecked(const ZNTCellValue& value)
{
    const auto* yes = std::get_if<bool>(&value);
    return yes != nullptr && *yes;
}

} // namespace

ZNTRowModel::ZNTRowModel(std::vector<ZNTColumn> columns, QObject* parent)
    : QAbstractTableModel(parent),
      columns(std::move(columns))
{
}

void ZNTRowModel::setSource(ZNTRowSource newSource)
{
    source = std::move(newSource);
    reload();
}

void ZNTRowModel::reload()
{
    // Rows that come and go at the end keep the views' selection, place and focus. A reset would lose them.
    const long wanted = source.numberOfRows ? source.numberOfRows() : 0;
    const int now = static_cast<int>(std::min<long>(wanted, std::numeric_limits<int>::max()));
    if (now > rows) {
        beginInsertRows({}, rows, now - 1);
        rows = now;
        endInsertRows();
    } else if (now < rows) {
        beginRemoveRows({}, now, rows - 1);
        rows = now;
        endRemoveRows();
    }
    if (rows > 0)
        Q_EMIT dataChanged(index(0, 0), index(rows - 1, static_cast<int>(columns.size()) - 1));
}

int ZNTRowModel::rowCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : rows; }

int ZNTRowModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(columns.size());
}

const ZNTColumn& ZNTRowModel::column(const QModelIndex& index) const
{
    return columns[static_cast<std::size_t>(index.column())];
}

/// What the row says beside its cells.
QString ZNTRowModel::wordsOfRow(long row) const
{
    QStringList words;
    if (source.keys)
        words << source.keys(row);
    if (source.toolTip)
        words << znt::qtText(source.toolTip(row));
    words.removeAll(QString());
    return words.join(QLatin1Char('\n'));
}

QVariant ZNTRowModel::data(const QModelIndex& index, int role) const
{
    // After a change and before the reload there may be fewer rows.
    if (!index.isValid() || !source.objectValue || index.row() >= source.numberOfRows())
        return {};
    const ZNTColumn& shown = column(index);
    const auto value = [&] { return source.objectValue(shown.identifier, index.row()); };
    if (role == Qt::ToolTipRole || role == Qt::AccessibleDescriptionRole) {
        const QString ofRow = wordsOfRow(index.row());
        const bool hasNone = role == Qt::AccessibleDescriptionRole || shown.kind == ZNTColumn::Kind::YesNo;
        const QString ofCell = hasNone ? QString() : textOfCell(value());
        return ofCell.isEmpty() || ofRow.isEmpty() ? QString(ofCell + ofRow)
                                                   : QString(ofCell + QLatin1Char('\n') + ofRow);
    }
    if (shown.kind == ZNTColumn::Kind::YesNo) {
        if (role == Qt::CheckStateRole)
            return isChecked(value()) ? Qt::Checked : Qt::Unchecked;
        if (role == Qt::AccessibleTextRole)
            return QString(shown.heading + QLatin1String(": ") + textOfCell(value()));
        return {};
    }
    if (role == Qt::DisplayRole || role == Qt::EditRole)
        return textOfCell(value());
    if (role == keysRole)
        return source.keys ? source.keys(index.row()) : QString();
    if (role == Qt::AccessibleTextRole) {
        const QString text = textOfCell(value());
        return text.isEmpty() ? QString(shown.heading + QLatin1String(": empty")) : text;
    }
    if (role == Qt::TextAlignmentRole)
        return alignmentIn(shown);
    return {};
}

bool ZNTRowModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (!index.isValid() || !source.setObjectValue || index.row() >= source.numberOfRows())
        return false;
    const ZNTColumn& edited = column(index);
    if (edited.kind == ZNTColumn::Kind::YesNo) {
        if (role != Qt::CheckStateRole)
            return false;
        source.setObjectValue(value.toInt() == Qt::Checked, edited.identifier, index.row());
    } else if (role != Qt::EditRole) {
        return false;
    } else if (edited.kind == ZNTColumn::Kind::Number) {
        bool isNumber = false;
        const std::int64_t number = value.toString().trimmed().toLongLong(&isNumber);
        if (!isNumber)
            return false; // the cell keeps its value
        source.setObjectValue(number, edited.identifier, index.row());
    } else {
        source.setObjectValue(znt::textOfQt(value.toString()), edited.identifier, index.row());
    }
    Q_EMIT dataChanged(index, index);
    return true;
}

Qt::ItemFlags ZNTRowModel::flags(const QModelIndex& index) const
{
    if (!index.isValid())
        return Qt::NoItemFlags;
    Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
    const ZNTColumn& shown = column(index);
    if (shown.isEditable && source.setObjectValue)
        flags |= shown.kind == ZNTColumn::Kind::YesNo ? Qt::ItemIsUserCheckable : Qt::ItemIsEditable;
    return flags;
}

QVariant ZNTRowModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Horizontal && role == Qt::DisplayRole)
        return columns[static_cast<std::size_t>(section)].heading;
    if (orientation == Qt::Horizontal && role == Qt::TextAlignmentRole)
        return alignmentIn(columns[static_cast<std::size_t>(section)]);
    if (orientation == Qt::Vertical && role == Qt::DisplayRole)
        return section + 1;
    return {};
}
