#pragma once

class QWidget;
class ZNTOutputView;
class ZNTServerConnectController;

namespace znt
{

/// Opens the font panel over `window`. The font that is picked there is for text that arrives later.
void chooseFont(QWidget& window, ZNTOutputView& output, ZNTServerConnectController& session);

/// Makes the font of everything but the output larger by one step, or smaller where `steps` is -1.
void zoomControls(int steps);

} // namespace znt
