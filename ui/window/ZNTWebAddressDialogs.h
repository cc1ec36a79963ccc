#pragma once

#include <QString>
#include <functional>

class QDialog;
class QUrl;
class QWidget;
class ZNTOutputView;

/// Opens web addresses of the game's text in the player's browser, each only after the player has read it.
class ZNTWebAddressDialogs
{
public:
    /// Both outlive this.
    ZNTWebAddressDialogs(QWidget& window, const ZNTOutputView& output);

    /// Lists the addresses of the last lines, the newest first.
    void showList();
    /// Shows the whole address as it goes to the browser, with its site, and opens it if the player agrees.
    /// Letters of other scripts are shown as the browser sends them ("xn--" in a site, "%" and digits
    /// elsewhere), so that no letter can pass for another. If no browser could open the address, says so.
    void ask(const QString& address);

    static constexpr int lastLines = 500;

private:
    /// Deletes itself when it is closed. `words` stand above what is added.
    QDialog* makeDialog(const char* name, const QString& words);
    void show(QDialog& dialog, QWidget& focused, std::function<void()> whenAccepted = {});
    void openInBrowser(const QUrl& address);

    QWidget& window;
    const ZNTOutputView& output;
};
