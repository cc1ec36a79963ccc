#pragma once

#include <QPointer>

class QDialog;
class QMainWindow;
class QWidget;
class ZNTMainMenu;

/// The pages behind the Help menu, each in a window of its own that stays open beside the game.
class ZNTHelpWindow
{
public:
    /// The caller owns both, and they outlive this.
    ZNTHelpWindow(QMainWindow& window, const ZNTMainMenu& menu);
    ~ZNTHelpWindow();

    void showFirstSteps();
    void showFirstHourByEar();
    /// Every command of the menus with its keys, and the keys that are in no menu.
    void showKeyboardMap();
    void showAbout();

private:
    void show(QPointer<QDialog>& page, const QString& title, const char* objectName, const QString& markdown);
    [[nodiscard]] QString keyboardMap() const;

    QMainWindow& window;
    const ZNTMainMenu& menu;
    QPointer<QDialog> firstStepsPage, listeningPage, keyboardPage, aboutPage;
};
