#pragma once

#include <string_view>

class ZNTServerConnectController;
class ZNTSettingsKeeper;

namespace znt
{

/// Puts the settings of the game into force while it is played, and the others before and afterwards. A front
/// end calls it on each change of the session's state, with the text of the fields for host and port. True if
/// the session's settings have changed.
bool useSettingsOfGame(ZNTSettingsKeeper& keeper, ZNTServerConnectController& session,
                       std::u16string_view host, std::u16string_view port);

} // namespace znt
