#pragma once

#include "ZNTHelpDialog.h"

#include <functional>

class ZNTHintedTable;
class ZNTMainMenu;

/// All keys in a table, with a field that narrows it by words or by a key.
class ZNTKeyboardMap final : public ZNTHelpDialog
{
public:
    /// `openManual` is called for the manual's button.
    ZNTKeyboardMap(QWidget& window, const ZNTMainMenu& menu, std::function<void()> openManual);

private:
    class Rows;

    void makeTable(const ZNTMainMenu& menu);
    void makeFilter();
    [[nodiscard]] QSize comfortableSize() const;
    [[nodiscard]] QString numberOfKeys() const;

    Rows* rows;
    ZNTHintedTable* table;
    QWidget* filter = nullptr;
};
