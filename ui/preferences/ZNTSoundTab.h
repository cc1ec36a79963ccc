#pragma once

class ZNTPreferencesHost;
class ZNTServerConnectController;
struct ZNTSettings;
namespace Ui
{
class PreferencesView;
}

/// The tab about sounds and compression.
class ZNTSoundTab
{
public:
    /// Both outlive this.
    ZNTSoundTab(Ui::PreferencesView& form, ZNTPreferencesHost& host);

    void mudClientCompressionProtocolOnOff();
    void mudSoundProtocolOnOff();
    /// Says what is in force. The controls stay as they were left.
    void show();
    void showSettings(const ZNTSettings& now);

private:
    void wireVolume();

    Ui::PreferencesView& form;
    ZNTPreferencesHost& host;
    ZNTServerConnectController& session;
};
