#pragma once

#include "ZNTWindowPlace.h"

#include <QObject>
#include <functional>
#include <map>
#include <string>

/// Knows where each window of the program stands or stood last, by its object name. Alerts have no place of
/// their own, since each is another one.
///
/// Windows but the main one come back to their places when they are shown again, if `areKept` says so.
class ZNTWindowPlaces final : public QObject
{
public:
    using Places = std::map<std::string, ZNTWindowPlace>;

    /// `mainWindow` outlives this. Made after the application object.
    ZNTWindowPlaces(QWidget& mainWindow, std::function<bool()> areKept);

    /// Called when a window has moved or changed its size or its state, or the controls have another size.
    std::function<void()> whenChanged;

    [[nodiscard]] const Places& places() const { return places_; }
    /// As of an earlier run. The main window goes to its place at once.
    void usePlaces(const Places& kept);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    [[nodiscard]] static bool hasPlace(const QWidget& widget);
    void note(const QWidget& window);
    /// Their sizes were for controls of another size.
    void forgetSheets();

    QWidget& mainWindow;
    std::function<bool()> areKept;
    Places places_;
    double controlsSize;
};
