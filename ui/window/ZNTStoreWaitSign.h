#pragma once

#include <QString>
#include <functional>
#include <memory>

class QDialog;
class QLabel;

/// Shows that the program waits for its database while there is no main window yet.
///
/// It lets Qt handle events, so use it only while nothing exists that could call the store.
class ZNTStoreWaitWindow
{
public:
    /// `quit` is called when the player does not want to wait any longer, and does not return.
    explicit ZNTStoreWaitWindow(std::function<void()> quit);
    ~ZNTStoreWaitWindow();
    ZNTStoreWaitWindow(const ZNTStoreWaitWindow&) = delete;
    ZNTStoreWaitWindow& operator=(const ZNTStoreWaitWindow&) = delete;

    /// Shows the window if it is not shown yet, draws it and handles its keys. Call it often.
    void keepAlive();

private:
    std::function<void()> quit;
    std::unique_ptr<QDialog> dialog;
};

/// Shows in the status line that the program waits for its database. It handles no event meanwhile, because a
/// line of the game would call the store that waits.
class ZNTStoreWaitStatus
{
public:
    /// The label outlives this.
    explicit ZNTStoreWaitStatus(QLabel& statusText) : statusText(statusText) {}

    void show();
    /// Puts the earlier text back.
    void clear();

private:
    QLabel& statusText;
    QString before;
    bool isShown = false;
};
