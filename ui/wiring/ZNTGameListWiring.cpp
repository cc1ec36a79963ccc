#include "ZNTGameListWiring.h"

#include "ZNTMainScreen.h"
#include "ZNTMudAppController.h"
#include "ZNTMudListSheet.h"
#include "ZNTPlayArguments.h"
#include "ZNTQtText.h"
#include "ZNTText.h"
#include "ZNTWebAddressDialogs.h"

#include <QStringList>

ZNTGameListWiring::ZNTGameListWiring(ZNTMainWindow& window, ZNTMainScreen& screen,
                                     ZNTMudAppController& controller)
    : window(window),
      screen(screen),
      controller(controller)
{
}

ZNTGameListWiring::~ZNTGameListWiring() = default;

void ZNTGameListWiring::showWindow()
{
    if (!sheet) {
        sheet = std::make_unique<ZNTMudListSheet>(
            window, controller.services().database,
            ZNTMudListSheet::GameFields{screen.ipAddress, screen.port, screen.mudName}, *this);
        sheet->setGameBeingPlayed(gameBeingPlayed);
    }
    sheet->showWindow();
}

void ZNTGameListWiring::setGameBeingPlayed(const QString& name)
{
    gameBeingPlayed = name;
    if (sheet)
        sheet->setGameBeingPlayed(name);
}

void ZNTGameListWiring::reload()
{
    if (sheet)
        sheet->reload();
}

void ZNTGameListWiring::gamePicked()
{
    if (controller.whenGamePicked)
        controller.whenGamePicked();
}

void ZNTGameListWiring::openWebPage(QWidget& inFront, const ZNTMudList& game)
{
    if (!webPages)
        webPages = std::make_unique<ZNTWebAddressDialogs>(inFront, *window.textFromServer);
    webPages->ask(znt::qtText(game.url));
}

void ZNTGameListWiring::playInNewWindow(const ZNTMudList& game)
{
    const auto arguments = znt::argumentsForGame(znt::utf8FromText(game.telnetURL), game.port);
    if (!arguments) {
        controller.services().platform.alert.showMessage(u"The game was not opened.",
                                                         znt::textFromUtf8(arguments.error().description));
        return;
    }
    QStringList words;
    for (const auto& each : arguments.value())
        words << QString::fromStdString(each);
    controller.startInstance(words);
}

const ZNTSettingsKeeper& ZNTGameListWiring::settings() const { return controller.settings(); }

void ZNTGameListWiring::chooseSettingForGame(const std::string& game, std::string_view name,
                                             const std::string& text)
{
    controller.chooseSettingForGame(game, name, text);
}
