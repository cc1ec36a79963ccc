#pragma once

#include <QTableView>

/// A table that says in words why it is empty, and asks for as much width as its columns need.
///
/// The hint is painted where the rows would be and is the table's accessible description for as long as
/// there are none; it is no row, so whatever counts or reads rows does not meet it.
class ZNTHintedTable final : public QTableView
{
    Q_OBJECT
    Q_PROPERTY(QString emptyHint READ emptyHint WRITE setEmptyHint)
    Q_PROPERTY(int comfortableRows READ comfortableRows WRITE setComfortableRows)

public:
    explicit ZNTHintedTable(QWidget* parent = nullptr);

    [[nodiscard]] QString emptyHint() const { return hint; }
    void setEmptyHint(const QString& words);

    /// Describes the table while it has rows.
    void setStandingDescription(const QString& words);

    /// How many rows it shows at once where there is room; it asks the layout for fewer, and more scroll.
    [[nodiscard]] int comfortableRows() const { return rowsWanted; }
    void setComfortableRows(int rows) { rowsWanted = rows; }
    /// What it would take beyond what it asks for.
    [[nodiscard]] int comfortableGrowth() const;

    void setModel(QAbstractItemModel* model) override;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

Q_SIGNALS:
    void emptyHintChanged(const QString& words);

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] bool isEmpty() const;
    [[nodiscard]] int heightOfRows(int number) const;
    void describe();
    void keepHeadingsReadable();

    QString hint, standing;
    int rowsWanted = 7;
};
