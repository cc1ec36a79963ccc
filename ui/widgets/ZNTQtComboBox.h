#pragma once

#include "ZNTScreenElements.h"

#include <QPointer>
#include <QString>
#include <functional>
#include <string>
#include <vector>

class QComboBox;

/// Where the names of a combo box's list come from.
struct ZNTComboSource {
    std::function<long()> numberOfItems;
    std::function<std::u16string(long index)> objectValueForItemAtIndex;
};

/// One editable choice shown in any number of boxes: what is typed or picked in one stands in all of them.
class ZNTQtComboBox final : public ZNTComboBox
{
public:
    void setSource(ZNTComboSource source);
    /// Shows the choice in `box`, too, as long as both live.
    void addBox(QComboBox* box);
    /// `listener` is called with each new text, whether it was typed, picked or set.
    void whenTextChanges(std::function<void(const std::u16string& text)> handler);

    [[nodiscard]] std::u16string text() const override;
    void setText(std::u16string_view text) override;
    void reloadData() override;

private:
    void textChanged(const QString& newText);
    void fill(QComboBox& box) const;

    ZNTComboSource source;
    std::vector<QPointer<QComboBox>> boxes;
    std::function<void(const std::u16string&)> handler;
    QString current;
};
