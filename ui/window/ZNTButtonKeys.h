#pragma once

#include <QObject>

/// Makes Return and Enter press the button that has the focus, in every window, as Space does.
///
/// Qt leaves that to the desktop's theme. If the theme says nothing, Return on a dialog's Cancel presses the
/// default button instead, and Return on a button of the main window does nothing.
class ZNTButtonKeys final : public QObject
{
public:
    /// Made once, after the application object.
    explicit ZNTButtonKeys(QObject* parent = nullptr);

    bool eventFilter(QObject* watched, QEvent* event) override;
};
