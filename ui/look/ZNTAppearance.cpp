#include "ZNTAppearance.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QStyle>

namespace
{

const QString portalService = QStringLiteral("org.freedesktop.portal.Desktop");
const QString portalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString portalInterface = QStringLiteral("org.freedesktop.portal.Settings");
const QString appearanceGroup = QStringLiteral("org.freedesktop.appearance");

struct Shades {
    QRgb window, base, alternate, text, button, border, highlight, highlighted, link, quiet;
    QRgb disabledText, disabledBorder, disabledHighlight;
};

/// Text has a contrast of 4.5 to 1 or more with its background; focus and borders have 3 to 1.
constexpr Shades lightShades{0xfff3f4f6, 0xffffffff, 0xfff7f8fa, 0xff1c2026, 0xfffafbfc,
                             0xff7d8590, 0xff1a5fb4, 0xffffffff, 0xff1a5fb4, 0xff5c6470,
                             0xff5c6470, 0xff7d8590, 0xffb4bac3};
constexpr Shades darkShades{0xff23262b, 0xff1a1c20, 0xff202328, 0xffe8eaed, 0xff31353c,
                            0xff99a1ad, 0xff62a0ea, 0xff10131a, 0xff8ab8f0, 0xffa4abb6,
                            0xffa4abb6, 0xff99a1ad, 0xff565c66};
constexpr Shades contrastShades{0xff000000, 0xff000000, 0xff101010, 0xffffffff, 0xff000000,
                                0xffffffff, 0xffffff00, 0xff000000, 0xff66ffff, 0xffc8c8c8,
                                0xff9a9a9a, 0xff808080, 0xff4d4d4d};

QPalette paletteOf(const Shades& shades)
{
    QPalette palette;
    const auto set = [&palette](QPalette::ColorRole role, QRgb colour) {
        palette.setColor(role, QColor(colour));
    };
    set(QPalette::Window, shades.window);
    set(QPalette::Base, shades.base);
    set(QPalette::AlternateBase, shades.alternate);
    set(QPalette::Button, shades.button);
    for (const auto role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText})
        set(role, shades.text);
    set(QPalette::BrightText, shades.highlighted);
    set(QPalette::ToolTipBase, shades.base);
    set(QPalette::PlaceholderText, shades.quiet);
    set(QPalette::Highlight, shades.highlight);
    set(QPalette::HighlightedText, shades.highlighted);
    set(QPalette::Link, shades.link);
    set(QPalette::LinkVisited, shades.link);
    set(QPalette::Mid, shades.border);
    set(QPalette::Dark, shades.border);
    palette.setColor(QPalette::Light, QColor(shades.button).lighter(108));
    palette.setColor(QPalette::Midlight, QColor(shades.button).lighter(104));
    palette.setColor(QPalette::Shadow, QColor(shades.border).darker(150));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, QColor(shades.disabledText));
    palette.setColor(QPalette::Disabled, QPalette::Mid, QColor(shades.disabledBorder));
    palette.setColor(QPalette::Disabled, QPalette::Base, QColor(shades.window));
    palette.setColor(QPalette::Disabled, QPalette::Highlight, QColor(shades.disabledHighlight));
    return palette;
}

} // namespace

ZNTAppearance::ZNTAppearance(QObject* parent)
    : QObject(parent),
      given(QApplication::palette()),
      isGiven(given.color(QPalette::Window) !=
              QApplication::style()->standardPalette().color(QPalette::Window))
{
    apply();
    QDBusConnection::sessionBus().connect(portalService, portalPath, portalInterface,
                                          QStringLiteral("SettingChanged"), this,
                                          SLOT(settingChanged(QString, QString)));
    askPortal();
}

void ZNTAppearance::use(Colours colours)
{
    chosen = colours;
    apply();
}

void ZNTAppearance::settingChanged(const QString& group, const QString&)
{
    if (group == appearanceGroup)
        askPortal();
}

void ZNTAppearance::askPortal()
{
    // Without a portal the answer is an error, and nothing is preferred. The start does not wait for it.
    const auto ask = [this](const QString& key, void (*take)(ZNTAppearance&, uint)) {
        QDBusMessage question = QDBusMessage::createMethodCall(portalService, portalPath, portalInterface,
                                                               QStringLiteral("Read"));
        question << appearanceGroup << key;
        auto* watcher = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(question), this);
        connect(watcher, &QDBusPendingCallWatcher::finished, this,
                [this, take](QDBusPendingCallWatcher* done) {
                    done->deleteLater();
                    const QDBusPendingReply<QDBusVariant> reply = *done;
                    if (reply.isError())
                        return;
                    // `Read` wraps the value twice.
                    QVariant value = reply.value().variant();
                    if (value.canConvert<QDBusVariant>())
                        value = value.value<QDBusVariant>().variant();
                    take(*this, value.toUInt());
                    apply();
                });
    };
    ask(QStringLiteral("color-scheme"),
        [](ZNTAppearance& self, uint value) { self.prefersDark = value == 1; });
    ask(QStringLiteral("contrast"),
        [](ZNTAppearance& self, uint value) { self.prefersContrast = value == 1; });
}

void ZNTAppearance::apply()
{
    switch (chosen) {
    case Colours::Light:
        QApplication::setPalette(light());
        return;
    case Colours::Dark:
        QApplication::setPalette(dark());
        return;
    case Colours::HighContrast:
        QApplication::setPalette(highContrast());
        return;
    case Colours::System:
        break;
    }
    if (prefersContrast)
        QApplication::setPalette(highContrast());
    else if (isGiven)
        QApplication::setPalette(given);
    else
        QApplication::setPalette(prefersDark ? dark() : light());
}

QPalette ZNTAppearance::light() { return paletteOf(lightShades); }

QPalette ZNTAppearance::dark() { return paletteOf(darkShades); }

QPalette ZNTAppearance::highContrast() { return paletteOf(contrastShades); }
