#pragma once

class ZNTMainWindow;

/// The application's delegate: closing the main window quits, connected or not.
class ZNTVandrelAppDelegate
{
public:
    /// The caller owns `window`, which outlives this.
    explicit ZNTVandrelAppDelegate(ZNTMainWindow& window);
    ~ZNTVandrelAppDelegate();

    void applicationDidFinishLaunching() {}
    [[nodiscard]] bool applicationShouldTerminateAfterLastWindowClosed() const { return true; }
    [[nodiscard]] bool applicationShouldTerminate() const { return true; }
    /// Asks the application to end, then answers yes.
    bool windowShouldClose();
    void windowWillClose();

private:
    ZNTMainWindow& window;
};
