#pragma once

#include "ZNTCompass.h"
#include "ZNTMainWindow.h"
#include "ZNTQtComboBox.h"
#include "ZNTQtElements.h"
#include "ZNTQtTableView.h"
#include "ZNTRowModel.h"
#include "ZNTSessionScreen.h"

#include <vector>

/// The main window's widgets as the screen elements that the logic works with.
class ZNTMainScreen
{
public:
    /// The caller owns `window`, which outlives this.
    explicit ZNTMainScreen(ZNTMainWindow& window);

    [[nodiscard]] ZNTSessionScreen sessionScreen();

    /// The main window's list of macros as a widget.
    [[nodiscard]] ZNTHintedTable& macroList() const { return *window.macroTable; }

    ZNTQtTextField textToServer, ipAddress, port, mudName;
    ZNTQtButton connectionButton;
    ZNTQtSpinner myProgressIndicator;
    ZNTRowModel macroRows;
    ZNTQtTableView macroTable;
    ZNTQtComboBox macroComboBoxGroup;

private:
    /// Takes no echo, because screen readers read the output view itself.
    class NoEcho final : public ZNTTextArea
    {
    public:
        [[nodiscard]] std::u16string text() const override { return {}; }
        void setText(std::u16string_view) override {}
    };

    ZNTMainWindow& window;
    NoEcho voiceOver;
    std::vector<ZNTQtButton> directionButtons;
};
