#pragma once

#include <QObject>
#include <QPalette>

/// The colours of everything but the game pane.
///
/// The system's colours are the palette that the desktop's theme gives Qt. If the theme gives none, they are
/// light, dark or high contrast, as the desktop's settings portal asks (org.freedesktop.appearance). The
/// portal is followed while the program runs.
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
