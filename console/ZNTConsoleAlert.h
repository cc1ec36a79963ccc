#pragma once

#include "ZNTAlert.h"
#include "ZNTText.h"

#include <cstdio>
#include <string>

/// Alerts of the terminal client: one line each on stderr, "TITLE: TEXT". A question is taken as confirmed,
/// for the player has typed the command that asks it.
class ZNTConsoleAlert final : public ZNTAlert
{
public:
    void showMessage(std::u16string_view title, std::u16string_view text) override
    {
        const auto line = znt::utf8FromText(title) + ": " + znt::utf8FromText(text) + "\n";
        std::fwrite(line.data(), 1, line.size(), stderr);
    }
    void askForConfirmation(std::u16string_view, std::u16string_view,
                            std::function<void(bool)> answered) override
    {
        answered(true);
    }
};
