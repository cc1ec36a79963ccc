#pragma once

#include "ZNTAppearance.h"
#include "ZNTButtonKeys.h"
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
          wiring(window, menu, controller, appearance)
    {
        controller.awakeFromNib();
        wiring.refresh();
        window.takeUsualSize();
    }

    ZNTVandrelAppDelegate appDelegate;
    ZNTAppearance appearance;
    ZNTButtonKeys buttonKeys;
    ZNTMainMenu menu;
    ZNTMudAppController controller;
    ZNTMainWiring wiring;
};
