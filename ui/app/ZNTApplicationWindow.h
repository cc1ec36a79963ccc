#pragma once

#include "ZNTAppearance.h"
#include "ZNTButtonKeys.h"
#include "ZNTConnectionWiring.h"
#include "ZNTFileWiring.h"
#include "ZNTMainMenu.h"
#include "ZNTMainWindow.h"
#include "ZNTMainWiring.h"
#include "ZNTMudAppController.h"
#include "ZNTVandrelAppDelegate.h"

/// The main window with everything that belongs to it, made and taken down in the right order.
class ZNTApplicationWindow
{
public:
    explicit ZNTApplicationWindow(ZNTMainWindow& window, const ZNTWindowServices& services)
        : appDelegate(window),
          menu(window),
          controller(window, services),
          connection(window, menu, controller),
          wiring(window, menu, controller, connection, appearance),
          files(window, menu, controller)
    {
        controller.awakeFromNib();
        wiring.showAll();
        window.takeUsualSize();
    }

    ZNTVandrelAppDelegate appDelegate;
    ZNTAppearance appearance;
    ZNTButtonKeys buttonKeys;
    ZNTMainMenu menu;
    ZNTMudAppController controller;
    ZNTConnectionWiring connection;
    ZNTMainWiring wiring;
    ZNTFileWiring files;
};
