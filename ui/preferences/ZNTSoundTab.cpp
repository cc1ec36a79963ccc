#include "ZNTSoundTab.h"

#include "ZNTMarks.h"
#include "ZNTPreferencesForm.h"
#include "ZNTPreferencesHost.h"
#include "ZNTServerConnectController.h"
#include "ZNTSoundFactory.h"
#include "ZNTWindowServices.h"
#include "ui_PreferencesView.h"

namespace
{

constexpr int columnsOfVolume = 24;

} // namespace

ZNTSoundTab::ZNTSoundTab(Ui::PreferencesView& form, ZNTPreferencesHost& host)
    : form(form),
      host(host),
      session(host.serverConnectController())
{
    znt::whenMarked(*form._mspCheckBox, [this](bool) { mudSoundProtocolOnOff(); });
    znt::whenMarked(*form._mccpCheckBox, [this](bool) { mudClientCompressionProtocolOnOff(); });
    wireVolume();
}

void ZNTSoundTab::wireVolume()
{
    ZNTSoundFactory& sounds = host.services().sounds;
    auto* volume = form.masterVolume;
    volume->setMinimumWidth(volume->fontMetrics().averageCharWidth() * columnsOfVolume);
    volume->setValue(qRound(sounds.masterVolume() * 100));
    form.muteCheckBox->setChecked(sounds.isMuted());
    QObject::connect(volume, &QSlider::valueChanged, volume, [&sounds](int percent) {
        sounds.setMasterVolume(static_cast<float>(percent) / 100.0F);
    });
    znt::whenMarked(*form.muteCheckBox, [this](bool on) { host.setSoundsMuted(on); });
}

void ZNTSoundTab::mudClientCompressionProtocolOnOff()
{
    // On at once, also without a connection: then the next game's first block is taken as compressed.
    session.set_isMccpOnOff(znt::isMarked(*form._mccpCheckBox));
}

void ZNTSoundTab::mudSoundProtocolOnOff() { session.set_isMspOnOff(znt::isMarked(*form._mspCheckBox)); }

void ZNTSoundTab::show()
{
    const auto& since = host.compressedSince();
    form.compressionNow->setText(since ? QStringLiteral("Compressed since ") +
                                             since->toString(QStringLiteral("HH:mm"))
                                       : QStringLiteral("Not compressed"));
    form.soundNow->setText(session.playsSoundTags() ? QStringLiteral("The game's sounds are played")
                                                    : QStringLiteral("The game's sounds are not played"));
    znt::describeControl(*form._mccpCheckBox);
    znt::describeControl(*form._mspCheckBox);
}

void ZNTSoundTab::showSettings(const ZNTSettings& now)
{
    znt::showMark(*form._mspCheckBox, now.sounds);
    znt::showMark(*form._mccpCheckBox, now.compression);
}
