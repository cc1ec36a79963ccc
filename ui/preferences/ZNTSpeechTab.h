#pragma once

class ZNTPreferencesHost;
class ZNTServerConnectController;
struct ZNTSettings;
namespace Ui
{
class PreferencesView;
}

/// The tab about speech. The boxes for speech and its interruption follow the session.
class ZNTSpeechTab
{
public:
    /// Both outlive this.
    ZNTSpeechTab(Ui::PreferencesView& form, ZNTPreferencesHost& host);

    void textToSpeechOnAndOff();
    void show();
    void showSettings(const ZNTSettings& now);

private:
    Ui::PreferencesView& form;
    ZNTServerConnectController& session;
};
