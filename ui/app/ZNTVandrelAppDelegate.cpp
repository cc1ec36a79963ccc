#include "ZNTVandrelAppDelegate.h"

#include "ZNTMainWindow.h"

#include <QApplication>

ZNTVandrelAppDelegate::ZNTVandrelAppDelegate(ZNTMainWindow& window) : window(window)
{
    QApplication::setQuitOnLastWindowClosed(applicationShouldTerminateAfterLastWindowClosed());
    window.whenClosing = [this] {
        const bool closes = windowShouldClose();
        if (closes)
            windowWillClose();
        return closes;
    };
}

ZNTVandrelAppDelegate::~ZNTVandrelAppDelegate() { window.whenClosing = nullptr; }

bool ZNTVandrelAppDelegate::windowShouldClose()
{
    if (applicationShouldTerminate())
        QApplication::exit(0);
    return true;
}

void ZNTVandrelAppDelegate::windowWillClose()
{
    // Other windows of ours may still be open; they end with the application.
    if (applicationShouldTerminate())
        QApplication::exit(0);
}
