#pragma once

#include "ZNTAlert.h"
#include "ZNTConsoleInput.h"
#include "ZNTText.h"

/// Alerts of the terminal client: one line each on stderr, "TITLE: TEXT". A question is taken as confirmed,
/// for the player has typed the command that asks it.
class ZNTConsoleAlert final : public ZNTAlert
{
public:
    /// `input`, which outlives this, steps aside for each alert.
    explicit ZNTConsoleAlert(ZNTConsoleInput& input) : input(input) {}

    void showMessage(std::u16string_view title, std::u16string_view text) override
    {
        input.writeAside(znt::utf8FromText(title) + ": " + znt::utf8FromText(text) + "\n");
    }
    void askForConfirmation(std::u16string_view, std::u16string_view,
                            std::function<void(bool)> answered) override
    {
        answered(true);
    }

private:
    ZNTConsoleInput& input;
};
