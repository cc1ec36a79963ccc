#pragma once

#include <QList>
#include <QTableView>

/// A table that says in words why it is empty, and asks for as much width as its columns need.
///
/// While there are no rows, the hint is painted in their place and is the table's accessible description. It
/// is not a row, so it is never counted or read as one.
class ZNTHintedTable final : public QTableView
{
    Q_OBJECT
    Q_PROPERTY(QString emptyHint READ emptyHint WRITE setEmptyHint)
    Q_PROPERTY(int comfortableRows READ comfortableRows WRITE setComfortableRows)
    Q_PROPERTY(bool roomyRows READ hasRoomyRows WRITE setRoomyRows)
    Q_PROPERTY(bool hidesHeadings READ hidesHeadings WRITE setHidesHeadings)

public:
    explicit ZNTHintedTable(QWidget* parent = nullptr);

    [[nodiscard]] QString emptyHint() const { return hint; }
    void setEmptyHint(const QString& words);

    /// Describes the table while it has rows.
    void setStandingDescription(const QString& words);

    /// How many rows it shows at once if there is room. It asks the layout for fewer; the rest scrolls.
    [[nodiscard]] int comfortableRows() const { return rowsWanted; }
    void setComfortableRows(int rows) { rowsWanted = rows; }
    /// The height that it would take beyond the one that it asks for.
    [[nodiscard]] int comfortableGrowth() const;

    /// With some air above and below the words of each row.
    [[nodiscard]] bool hasRoomyRows() const { return isRoomy; }
    void setRoomyRows(bool roomy) { isRoomy = roomy; }
    [[nodiscard]] int rowHeight() const;

    /// Whether the headings go while there are no rows.
    [[nodiscard]] bool hidesHeadings() const { return areHeadingsHidden; }
    void setHidesHeadings(bool hides) { areHeadingsHidden = hides; }

    /// From now on the columns share the width of the table, so that it does not scroll sideways. Each gets
    /// what its content needs, the last one the rest. If there is too little, the columns `narrowFirst` give
    /// way, the first one first, then the widest of all; none becomes narrower than its heading.
    /// Where not even the headings have room, it scrolls.
    void shareWidth(QList<int> narrowFirst = {});

    void setModel(QAbstractItemModel* model) override;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

Q_SIGNALS:
    void emptyHintChanged(const QString& words);

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    [[nodiscard]] bool isEmpty() const;
    [[nodiscard]] int heightOfRows(int number) const;
    void describe();
    void rowsChanged();
    void keepHeadingsReadable();
    void shareLater();
    void fitColumns();

    QString hint, standing;
    int rowsWanted = 7;
    bool isRoomy = false;
    bool areHeadingsHidden = false;
    bool isWidthShared = false;
    bool isSharingLater = false;
    QList<int> narrowFirst;
    QList<int> widestYet; ///< what the columns wanted; they stay so while rows come and go
};
