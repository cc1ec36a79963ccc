#pragma once

#include <QAbstractItemModel>
#include <QPaintEvent>
#include <QPainter>
#include <QString>

namespace znt
{

/// Paints `words`, which say why a view is empty, with the painter's pen and font, in lines as wide as
/// `room`. If they would be cut off below, the font shrinks, but to no less than half.
void paintEmptyHint(QPainter& painter, const QRect& room, const QString& words, Qt::Alignment alignment);

/// How far from the edges of a list or a table its hint stands, in pixels.
inline constexpr int emptyHintMargin = 10;

} // namespace znt

/// A list of Qt's, QListView or QListWidget, that says in words why it is empty. The words are painted in the
/// place of the rows and are the list's accessible description meanwhile.
template <typename List>
class ZNTHintedList final : public List
{
public:
    using List::List;

    /// Call it again after the rows have changed: the words describe the list only while there are none.
    void setEmptyHint(const QString& words)
    {
        hint = words;
        this->setAccessibleDescription(isEmpty() ? hint : QString());
        this->viewport()->update();
    }

protected:
    void paintEvent(QPaintEvent* event) override
    {
        List::paintEvent(event);
        if (!isEmpty() || hint.isEmpty())
            return;
        constexpr int around = znt::emptyHintMargin;
        QPainter painter(this->viewport());
        painter.setPen(this->palette().color(QPalette::PlaceholderText));
        znt::paintEmptyHint(painter, this->viewport()->rect().adjusted(around, around, -around, -around),
                            hint, Qt::AlignHCenter | Qt::AlignTop);
    }

private:
    [[nodiscard]] bool isEmpty() const { return !this->model() || this->model()->rowCount() == 0; }

    QString hint;
};
