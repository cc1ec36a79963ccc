#include "ZNTSpeechTab.h"

#include "ZNTMarks.h"
#include "ZNTPreferencesHost.h"
#include "ZNTServerConnectController.h"
#include "ui_PreferencesView.h"

#include <QSignalBlocker>

ZNTSpeechTab::ZNTSpeechTab(Ui::PreferencesView& form, ZNTPreferencesHost& host)
    : form(form),
      session(host.serverConnectController())
{
    znt::whenMarked(*form.speechOnOffCheckBox, [this](bool) { textToSpeechOnAndOff(); });
    znt::whenMarked(*form.speechInterruptCheckBox,
                    [this](bool on) { session.setSpeechInterruptOnOffBindingState(on ? 1 : 0); });
    znt::whenMarked(*form.useSystemVoiceCheckBox,
                    [&host](bool on) { host.chooseSetting("system-voice", on ? "on" : "off"); });
    znt::whenMarked(*form.useTimerCheckBox,
                    [&host](bool on) { host.chooseSetting("pacing", on ? "on" : "off"); });
    QObject::connect(form.speechRate, &QSpinBox::valueChanged, form.speechRate,
                     [&host](int rate) { host.chooseSetting("rate", std::to_string(rate)); });
    QObject::connect(form.replayButton, &QPushButton::clicked, form.replayButton,
                     [this] { session.replayLastText(); });
    QObject::connect(form.stopSpeakingButton, &QPushButton::clicked, form.stopSpeakingButton,
                     [this] { session.stopSpeaking(); });
}

void ZNTSpeechTab::textToSpeechOnAndOff()
{
    session.setSpeechOnOffBindingState(znt::isMarked(*form.speechOnOffCheckBox) ? 1 : 0);
    session.textToSpeechOnAndOff();
}

void ZNTSpeechTab::show()
{
    form.speechOnOffCheckBox->setChecked(session.speechOnOffBindingState() == 1);
    form.speechInterruptCheckBox->setChecked(session.speechInterruptOnOffBindingState() == 1);
}

void ZNTSpeechTab::showSettings(const ZNTSettings& now)
{
    znt::showMark(*form.useSystemVoiceCheckBox, now.systemVoice);
    znt::showMark(*form.useTimerCheckBox, now.pacing);
    const QSignalBlocker blocker(form.speechRate);
    form.speechRate->setValue(now.rate);
}
