#pragma once

#include <QObject>
#include <QPalette>

/// The colours of everything but the game pane.
///
/// Of the system: the palette that the desktop's own theme gives Qt; where it gives none, light or dark as
/// the desktop asks for through its settings portal (org.freedesktop.appearance, followed while the program
/// runs), high contrast if it asks for that.
class ZNTAppearance final : public QObject
{
    Q_OBJECT

public:
    enum class Colours { System, Light, Dark, HighContrast };

    /// Made once, after the application object.
    explicit ZNTAppearance(QObject* parent = nullptr);

    void use(Colours colours);

    [[nodiscard]] static QPalette light();
    [[nodiscard]] static QPalette dark();
    [[nodiscard]] static QPalette highContrast();

private Q_SLOTS:
    /// The portal's signal.
    void settingChanged(const QString& group, const QString& key);

private:
    void askPortal();
    void apply();

    Colours chosen = Colours::System;
    QPalette given; ///< by the desktop's theme
    bool isGiven;
    bool prefersDark = false;
    bool prefersContrast = false;
};
