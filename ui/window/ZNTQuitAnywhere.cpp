#include "ZNTQuitAnywhere.h"

#include <QApplication>
#include <QDialog>
#include <QKeyEvent>
#include <QWidget>
#include <cstdlib>
#include <memory>
#include <string_view>
#include <utility>
#include <xcb/xcb.h>

namespace
{

xcb_atom_t atomOf(xcb_connection_t* connection, std::string_view name)
{
    const auto cookie = xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(name.size()), name.data());
    const std::unique_ptr<xcb_intern_atom_reply_t, decltype(&std::free)> reply(
        xcb_intern_atom_reply(connection, cookie, nullptr), &std::free);
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

/// The dialog that blocks the other windows, if there is one.
QDialog* frontDialog()
{
    if (auto* modal = qobject_cast<QDialog*>(QApplication::activeModalWidget()))
        return modal;
    for (QWidget* each : QApplication::topLevelWidgets())
        if (auto* dialog = qobject_cast<QDialog*>(each); dialog && dialog->isVisible())
            return dialog;
    return nullptr;
}

} // namespace

ZNTQuitAnywhere::ZNTQuitAnywhere(QWidget& window, QKeySequence key) : window(window), key(std::move(key))
{
    QCoreApplication::instance()->installEventFilter(this);
    const auto* x11 = qApp->nativeInterface<QNativeInterface::QX11Application>();
    // A Qt with X11 has this interface on its offscreen platform, too. It has no connection there.
    auto* connection = x11 ? x11->connection() : nullptr;
    if (!connection)
        return;
    protocols = atomOf(connection, "WM_PROTOCOLS");
    deleteWindow = atomOf(connection, "WM_DELETE_WINDOW");
    QCoreApplication::instance()->installNativeEventFilter(this);
}

ZNTQuitAnywhere::~ZNTQuitAnywhere() { QCoreApplication::instance()->removeNativeEventFilter(this); }

void ZNTQuitAnywhere::closeDialogs()
{
    // A limited number of times, so that a dialog that refuses to close cannot keep the program from ending.
    for (auto left = QApplication::topLevelWidgets().size(); left > 0; --left)
        if (QDialog* dialog = frontDialog())
            dialog->close();
}

bool ZNTQuitAnywhere::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress || !watched->isWidgetType())
        return false;
    const auto& pressed = static_cast<const QKeyEvent&>(*event);
    const QWidget* in = static_cast<QWidget*>(watched)->window();
    if (in == &window || key != QKeySequence(pressed.keyCombination()))
        return false;
    closeSoon();
    return true;
}

bool ZNTQuitAnywhere::nativeEventFilter(const QByteArray& eventType, void* message, qintptr*)
{
    if (eventType != "xcb_generic_event_t")
        return false;
    const auto* event = static_cast<const xcb_generic_event_t*>(message);
    constexpr std::uint8_t sentBit = 0x80;
    if ((event->response_type & ~sentBit) != XCB_CLIENT_MESSAGE)
        return false;
    const auto* asked = reinterpret_cast<const xcb_client_message_event_t*>(event);
    const bool isClosing = asked->type == protocols && asked->data.data32[0] == deleteWindow;
    if (!isClosing || asked->window != window.winId() || !QApplication::activeModalWidget())
        return false; // Qt closes it
    closeSoon();
    return true;
}

void ZNTQuitAnywhere::closeSoon()
{
    // Later, because an event of a window that closes with it may be under way.
    QMetaObject::invokeMethod(&window, &QWidget::close, Qt::QueuedConnection);
}
