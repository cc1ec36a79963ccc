#pragma once

#include <QAbstractTableModel>
#include <functional>
#include <limits>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

/// What a cell holds: text, a number or a yes/no.
using ZNTCellValue = std::variant<std::u16string, std::int64_t, bool>;

/// One column: the name of the record's field that it shows, and how it is headed.
struct ZNTColumn {
    std::string identifier;
    QString heading;
    enum class Kind { Text, Number, YesNo } kind = Kind::Text;
    bool isEditable = true;
    int largestNumber = std::numeric_limits<int>::max(); ///< that can be typed; the smallest is 0
};

/// Where the rows come from. Rows count from 0. The model asks only for rows that exist at that moment.
struct ZNTRowSource {
    std::function<long()> numberOfRows;
    std::function<ZNTCellValue(std::string_view identifier, long row)> objectValue;
    /// Null for rows that cannot be edited. The value has the column's kind.
    std::function<void(const ZNTCellValue& value, std::string_view identifier, long row)> setObjectValue;
    /// What a row says beside its cells: its tool tip and its description for screen readers. May be null,
    /// and mostly answers an empty text.
    std::function<std::u16string(long row)> toolTip = {};
    /// The keys of a row, such as "Alt+1". They stand beside its cells, and in its tool tip and description.
    std::function<QString(long row)> keys = {};
};

/// The rows of a controller for Qt's item views. Nothing is copied: a cell is asked for when it is painted or
/// read out. Call `reload` after each change of the rows.
class ZNTRowModel final : public QAbstractTableModel
{
public:
    explicit ZNTRowModel(std::vector<ZNTColumn> columns, QObject* parent = nullptr);

    void setSource(ZNTRowSource source);
    /// Views keep their selection where its row still exists.
    void reload();

    static constexpr int keysRole = Qt::UserRole; ///< a row's keys, as text

    [[nodiscard]] const ZNTColumn& column(const QModelIndex& index) const;

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    [[nodiscard]] QString wordsOfRow(long row) const;

    std::vector<ZNTColumn> columns;
    ZNTRowSource source;
    int rows = 0; ///< as the views know it
};
