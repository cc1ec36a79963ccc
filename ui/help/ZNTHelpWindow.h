#pragma once

#include <QPointer>
#include <QString>
#include <functional>

class QMainWindow;
class QUrl;
class ZNTHelpDialog;
class ZNTMainMenu;

/// The pages behind the Help menu, each in a window of its own that stays open beside the game.
class ZNTHelpWindow
{
public:
    /// The caller owns the window and the menu, and they outlive this. `manual` is the file of the manual.
    /// `askToOpen` shows an address of the web and opens it if the player agrees.
    ZNTHelpWindow(QMainWindow& window, const ZNTMainMenu& menu, QString manual,
                  std::function<void(const QString& address)> askToOpen);
    ~ZNTHelpWindow();

    void showFirstSteps();
    void showFirstHourByEar();
    /// In the desktop's web browser, where a screen reader jumps by headings; else in a window as the others.
    void showManual();
    /// Every command of the menus with its keys, and the keys that are in no menu.
    void showKeyboardMap();
    void showAbout();

private:
    using Page = QPointer<ZNTHelpDialog>;

    void showText(Page& page, const QString& title, const char* name, const QString& words);
    void follow(const QUrl& link);

    QMainWindow& window;
    const ZNTMainMenu& menu;
    QString manual;
    std::function<void(const QString& address)> askToOpen;
    Page firstStepsPage, manualPage, listeningPage, keyboardPage, aboutPage;
};
