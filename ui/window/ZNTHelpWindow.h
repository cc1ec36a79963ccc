#pragma once

#include <QPointer>
#include <QString>

class QDialog;
class QMainWindow;
class QUrl;
class QWidget;
class ZNTMainMenu;

/// The pages behind the Help menu, each in a window of its own that stays open beside the game.
class ZNTHelpWindow
{
public:
    /// The caller owns the window and the menu, and they outlive this. `manual` is the file of the manual.
    ZNTHelpWindow(QMainWindow& window, const ZNTMainMenu& menu, QString manual);
    ~ZNTHelpWindow();

    void showFirstSteps();
    void showFirstHourByEar();
    /// In the desktop's web browser, where a screen reader jumps by headings; else in a window as the others.
    void showManual();
    /// Every command of the menus with its keys, and the keys that are in no menu.
    void showKeyboardMap();
    void showAbout();

private:
    enum class Format { Markdown, Html };
    void show(QPointer<QDialog>& page, const QString& title, const char* objectName, const QString& words,
              Format format = Format::Markdown);
    void follow(const QUrl& link);
    [[nodiscard]] QString keyboardMap() const;

    QMainWindow& window;
    const ZNTMainMenu& menu;
    QString manual;
    QPointer<QDialog> firstStepsPage, manualPage, listeningPage, keyboardPage, aboutPage;
};
