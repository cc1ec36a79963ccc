#pragma once

#include <QDialog>
#include <functional>

/// The dialog of a sheet. Escape and its frame end it as its cancel button does, with the same code.
class ZNTSheetDialog final : public QDialog
{
public:
    using QDialog::QDialog;

    /// Closes the sheet.
    std::function<void()> whenCancelled;

    void reject() override { whenCancelled ? whenCancelled() : done(Accepted); }
};
