#include "ZNTGameSettings.h"

#include "ZNTServerConnectController.h"
#include "ZNTSettingsKeeper.h"
#include "ZNTText.h"

bool znt::useSettingsOfGame(ZNTSettingsKeeper& keeper, ZNTServerConnectController& session,
                            std::u16string_view host, std::u16string_view port)
{
    switch (session.state()) {
    case ZNTSessionState::Connecting:
        keeper.beginGame(utf8FromText(host), utf8FromText(port));
        break;
    case ZNTSessionState::Connected:
        keeper.gameConnected();
        break;
    case ZNTSessionState::Idle:
        keeper.endGame();
        break;
    }
    const auto before = session.settings();
    const auto& now = keeper.settings();
    if (now == before)
        return false;
    // The game's last words may still be held back. They are read as the rest of its text was.
    if (session.state() == ZNTSessionState::Idle && session.hasTextHeldBack() &&
        (now.fullColours != before.fullColours || now.standardSounds != before.standardSounds))
        session.showAllThatCame();
    session.setSettings(now);
    return true;
}
