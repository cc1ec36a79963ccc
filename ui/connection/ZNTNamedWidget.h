#pragma once

#include <QString>

namespace znt
{

/// Space between the widgets of this room, in pixels.
inline constexpr int connectionGap = 8;

/// `widget` with that object name, by which tests and screen readers' tools find it. The caller goes on
/// owning it.
template <typename Widget>
Widget* called(Widget* widget, const char* objectName)
{
    widget->setObjectName(QString::fromLatin1(objectName));
    return widget;
}

} // namespace znt
