#pragma once

#include <QString>
#include <functional>
#include <memory>

class QDialog;
class QLabel;

/// Says, before there is a main window, that the program waits for its database.
///
/// It lets Qt handle events, so it may be used only while nothing exists yet that could call the store.
class ZNTStoreWaitWindow
{
public:
    /// `quit` is called when the player does not want to wait any longer, and does not return.
    explicit ZNTStoreWaitWindow(std::function<void()> quit);
    ~ZNTStoreWaitWindow();
    ZNTStoreWaitWindow(const ZNTStoreWaitWindow&) = delete;
    ZNTStoreWaitWindow& operator=(const ZNTStoreWaitWindow&) = delete;

    /// Shows the window if it is not shown yet, draws it and takes its keys. To be called often.
    void keepAlive();

private:
    std::function<void()> quit;
    std::unique_ptr<QDialog> dialog;
};

/// Says in the status line that the program waits for its database, while it can do nothing else: no event is
/// handled, because a line of the game would call the store that waits.
class ZNTStoreWaitStatus
{
public:
    /// The label outlives this.
    explicit ZNTStoreWaitStatus(QLabel& statusText) : statusText(statusText) {}

    void show();
    /// Puts back what stood there.
    void clear();

private:
    QLabel& statusText;
    QString before;
    bool isShown = false;
};
