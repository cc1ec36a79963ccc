#pragma once

#include "ZNTAppearance.h"
#include "ZNTAttention.h"
#include "ZNTButtonKeys.h"
#include "ZNTConnectionWiring.h"
#include "ZNTFileWiring.h"
#include "ZNTKeptLooks.h"
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
          attention(window, taskbar, [this] { return controller.settings().settings().attention; }),
          controller(window, services),
          connection(window, menu, controller),
          wiring(window, menu, controller, connection, appearance),
          files(window, menu, controller),
          looks({window, menu, controller.serverConnectController(), controller.settings(),
                 services.platform.log})
    {
        controller.whenTextShown = [this](std::u16string_view text) { attention.textCame(text); };
        controller.awakeFromNib();
        wiring.showAll();
        window.takeUsualSize();
        looks.restore();
    }

    ZNTVandrelAppDelegate appDelegate;
    ZNTAppearance appearance;
    ZNTButtonKeys buttonKeys;
    ZNTMainMenu menu;
    ZNTDesktopTaskbar taskbar;
    ZNTAttention attention; ///< before the controller, which may show text until its end
    ZNTMudAppController controller;
    ZNTConnectionWiring connection;
    ZNTMainWiring wiring;
    ZNTFileWiring files;
    ZNTKeptLooks looks; ///< last, since at its end it looks at what the others show
};
