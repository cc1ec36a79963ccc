#pragma once

#include <QList>
#include <QRect>
#include <optional>
#include <string>

class QWidget;

/// Where a window stands, in the desktop's coordinates, without its frame.
struct ZNTWindowPlace {
    QRect rect; ///< while it is neither maximised nor minimised
    bool isMaximised = false;

    friend bool operator==(const ZNTWindowPlace&, const ZNTWindowPlace&) = default;
};

namespace znt
{

/// "900x700 at 20,40", with " maximised" after it if it is.
std::string textOfPlace(const ZNTWindowPlace& place);
/// None if the text says no place.
std::optional<ZNTWindowPlace> placeIn(const std::string& text);

/// Of a window that was shown before. A minimised one has the place that it goes back to.
ZNTWindowPlace placeOf(const QWidget& window);
/// Puts `window` there, or as near to it as its screens allow.
void usePlace(QWidget& window, const ZNTWindowPlace& place);

/// `place` as it is if `screens` show all of it. Else it is moved onto the screen that shows the most of it,
/// or onto the first one, and made smaller if that one is smaller. Then there is room for a title bar above.
QRect broughtIntoSight(const QRect& place, const QList<QRect>& screens, int titleHeight);

} // namespace znt
