#pragma once

#include "ZNTAlert.h"
#include "ZNTConsoleOutput.h"
#include "ZNTPlatformLog.h"
#include "ZNTText.h"

/// Alerts of the terminal client: one line each on stderr, "TITLE: TEXT". A question is taken as confirmed,
/// for the player has typed the command that asks it.
class ZNTConsoleAlert final : public ZNTAlert
{
public:
    /// `output` outlives this.
    explicit ZNTConsoleAlert(ZNTConsoleOutput& output) : output(output) {}

    void showMessage(std::u16string_view title, std::u16string_view text) override
    {
        output.writeAside(
            ZNTStandardErrorLog::lineOf(znt::utf8FromText(title) + ": " + znt::utf8FromText(text)));
    }
    void askForConfirmation(std::u16string_view, std::u16string_view,
                            std::function<void(bool)> answered) override
    {
        answered(true);
    }

private:
    ZNTConsoleOutput& output;
};
