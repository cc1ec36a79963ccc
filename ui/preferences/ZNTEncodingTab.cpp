#include "ZNTEncodingTab.h"

#include "ZNTMarks.h"
#include "ZNTPreferencesHost.h"
#include "ZNTQtText.h"
#include "ZNTServerConnectController.h"
#include "ui_PreferencesView.h"

#include <QRadioButton>
#include <QSignalBlocker>

namespace
{

std::optional<ZNTStringEncoding> encodingOf(const QRadioButton& button)
{
    return znt::encodingTitled(znt::textOfQt(button.text()));
}

/// Its box stands below the radio buttons and takes their place while it is ticked.
constexpr auto boxedEncoding = ZNTStringEncoding::Utf8;

QString wordsFor(ZNTStringEncoding encoding)
{
    const auto& row = znt::rowOf(encoding);
    return row.title.empty()
               ? QString::fromUtf8(row.name.data(), static_cast<qsizetype>(row.name.size())).toUpper()
               : znt::qtText(row.title);
}

} // namespace

ZNTEncodingTab::ZNTEncodingTab(Ui::PreferencesView& form, ZNTPreferencesHost& host)
    : form(form),
      session(host.serverConnectController())
{
    for (auto* button : form.encoding->findChildren<QRadioButton*>()) {
        QObject::connect(button, &QRadioButton::toggled, button, [this](bool on) {
            if (on)
                chooseButton();
        });
        // The button that was chosen before the box was ticked does not toggle.
        QObject::connect(button, &QRadioButton::clicked, button, [this] {
            if (znt::isMarked(*this->form.encodingUtf8))
                chooseButton();
        });
    }
    znt::whenMarked(*form.encodingUtf8, [this](bool on) {
        if (on)
            session.changeEncoding(boxedEncoding);
        else
            encodingChanged();
    });
}

void ZNTEncodingTab::chooseButton()
{
    const QSignalBlocker blocker(form.encodingUtf8);
    form.encodingUtf8->setChecked(false);
    encodingChanged();
}

void ZNTEncodingTab::encodingChanged()
{
    for (const auto* button : form.encoding->findChildren<QRadioButton*>())
        if (button->isChecked())
            session.changeEncoding(znt::textOfQt(button->text()));
}

void ZNTEncodingTab::show()
{
    const auto inForce = session.cfStringEncoding();
    const QString now = QStringLiteral("Text: ") + wordsFor(inForce);
    form.encodingNow->setText(now);
    // A reader speaks the name before the description, so the description leaves the name out.
    const auto described = [&](std::optional<ZNTStringEncoding> encoding) {
        return encoding == inForce ? QStringLiteral("In force now") : now;
    };
    for (auto* button : form.encoding->findChildren<QRadioButton*>())
        button->setAccessibleDescription(described(encodingOf(*button)));
    form.encodingUtf8->setAccessibleDescription(described(boxedEncoding) +
                                                QStringLiteral(". Takes the place of the choice above"));
}

void ZNTEncodingTab::showSettings(const ZNTSettings& now)
{
    for (auto* button : form.encoding->findChildren<QRadioButton*>()) {
        const QSignalBlocker blocker(button);
        if (encodingOf(*button) == now.encoding)
            button->setChecked(true);
    }
    znt::showMark(*form.encodingUtf8, now.encoding == boxedEncoding);
}
