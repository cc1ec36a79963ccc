#include "ZNTQtComboBox.h"

#include "ZNTQtText.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QLineEdit>
#include <QSignalBlocker>

void ZNTQtComboBox::setSource(ZNTComboSource newSource)
{
    source = std::move(newSource);
    reloadData();
}

void ZNTQtComboBox::addBox(QComboBox* box)
{
    box->setEditable(true);
    box->view()->setAccessibleName(box->accessibleName());
    // The label says what the box is for. Qt uses the box's content as its name, and this name while it is
    // empty.
    box->setAccessibleName(QStringLiteral("none"));
    box->lineEdit()->setAccessibleName(box->accessibleName());
    box->setInsertPolicy(QComboBox::NoInsert);
    // Groups that differ in case alone are different groups, so completion must not turn one into another.
    box->setCompleter(nullptr);
    boxes.emplace_back(box);
    fill(*box);
    QObject::connect(box, &QComboBox::editTextChanged, box,
                     [this](const QString& text) { textChanged(text); });
}

void ZNTQtComboBox::whenTextChanges(std::function<void(const std::u16string&)> newHandler)
{
    handler = std::move(newHandler);
}

std::u16string ZNTQtComboBox::text() const { return znt::textOfQt(current); }

void ZNTQtComboBox::setText(std::u16string_view text) { textChanged(znt::qtText(text)); }

void ZNTQtComboBox::reloadData()
{
    for (const auto& box : boxes)
        if (box)
            fill(*box);
}

void ZNTQtComboBox::textChanged(const QString& newText)
{
    if (newText == current)
        return;
    current = newText;
    for (const auto& box : boxes)
        if (box && box->currentText() != current) {
            const QSignalBlocker quiet(*box);
            box->setEditText(current);
        }
    if (handler)
        handler(znt::textOfQt(current));
}

void ZNTQtComboBox::fill(QComboBox& box) const
{
    const QSignalBlocker quiet(box);
    box.clear();
    const long count = source.numberOfItems ? source.numberOfItems() : 0;
    for (long index = 0; index < count; ++index)
        box.addItem(znt::qtText(source.objectValueForItemAtIndex(index)));
    box.setCurrentIndex(static_cast<int>(box.findText(current, Qt::MatchExactly | Qt::MatchCaseSensitive)));
    box.setEditText(current);
}
