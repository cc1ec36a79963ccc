#pragma once

class ZNTPreferencesHost;
class ZNTServerConnectController;
struct ZNTSettings;
namespace Ui
{
class PreferencesView;
}

/// The tab with the encodings: a radio button for each that has a title, and a box that takes their place
/// while it is ticked.
class ZNTEncodingTab
{
public:
    /// Both outlive this.
    ZNTEncodingTab(Ui::PreferencesView& form, ZNTPreferencesHost& host);

    /// Takes the encoding of the button that is chosen.
    void encodingChanged();
    /// Says which encoding is in force. The controls stay as they were left.
    void show();
    void showSettings(const ZNTSettings& now);

private:
    void chooseButton();

    Ui::PreferencesView& form;
    ZNTServerConnectController& session;
};
