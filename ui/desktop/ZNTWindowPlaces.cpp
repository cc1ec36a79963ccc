#include "ZNTWindowPlaces.h"

#include <QApplication>
#include <QEvent>
#include <QMessageBox>
#include <QWidget>
#include <utility>

ZNTWindowPlaces::ZNTWindowPlaces(QWidget& mainWindow, std::function<bool()> areKept)
    : mainWindow(mainWindow),
      areKept(std::move(areKept)),
      controlsSize(QApplication::font().pointSizeF())
{
    QCoreApplication::instance()->installEventFilter(this);
}

void ZNTWindowPlaces::usePlaces(const Places& kept)
{
    controlsSize = QApplication::font().pointSizeF();
    for (const auto& [name, place] : kept)
        places_.insert_or_assign(name, place);
    if (const auto found = kept.find(mainWindow.objectName().toStdString()); found != kept.end())
        znt::usePlace(mainWindow, found->second);
}

bool ZNTWindowPlaces::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::Show:
    case QEvent::Move:
    case QEvent::Resize:
    case QEvent::WindowStateChange:
        break;
    case QEvent::ApplicationFontChange:
        if (std::exchange(controlsSize, QApplication::font().pointSizeF()) !=
            QApplication::font().pointSizeF())
            forgetSheets();
        return false;
    default:
        return false;
    }
    if (!watched->isWidgetType() || !hasPlace(static_cast<QWidget&>(*watched)))
        return false;
    auto& window = static_cast<QWidget&>(*watched);
    if (event->type() != QEvent::Show) {
        note(window);
        return false;
    }
    // The window is not on the screen yet. One that was minimised comes back by itself.
    const auto known = places_.find(window.objectName().toStdString());
    if (!event->spontaneous() && &window != &mainWindow && known != places_.end() && areKept())
        znt::usePlace(window, ZNTWindowPlace(known->second));
    return false;
}

bool ZNTWindowPlaces::hasPlace(const QWidget& widget)
{
    return widget.isWindow() && (widget.windowType() == Qt::Window || widget.windowType() == Qt::Dialog) &&
           !widget.objectName().isEmpty() && !qobject_cast<const QMessageBox*>(&widget);
}

void ZNTWindowPlaces::note(const QWidget& window)
{
    if (!window.isVisible()) // the program gives it a size before it is shown
        return;
    const ZNTWindowPlace place = znt::placeOf(window);
    auto& known = places_[window.objectName().toStdString()];
    if (std::exchange(known, place) != place && whenChanged)
        whenChanged();
}

void ZNTWindowPlaces::forgetSheets()
{
    const auto main = mainWindow.objectName().toStdString();
    std::erase_if(places_, [&main](const auto& place) { return place.first != main; });
    if (whenChanged)
        whenChanged();
}
