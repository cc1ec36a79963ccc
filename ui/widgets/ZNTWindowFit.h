#pragma once

class QDialog;
class QMenu;
class QScrollArea;
class QWidget;

namespace znt
{

/// Gives `window`, before it is shown or when its font has changed, the size that its content asks for, but
/// no more than its screen has. Its content is to scroll where that is less than it needs.
void fitToScreen(QWidget& window);

/// Makes the rows of buttons in `dialog` (each a QHBoxLayout in a column of its layout description) go on in
/// a further row where the width ends. To be called once, when the description is loaded.
void letButtonsWrap(QDialog& dialog);

/// Scrolls `area` until all of `widget`, which is in its content, can be seen, or as much as there is room.
void scrollIntoSight(QScrollArea& area, const QWidget& widget);

/// Takes smaller characters for `dialog`, whose content cannot scroll, until it fits on its screen.
void shrinkFontToScreen(QDialog& dialog);

/// Takes smaller characters for `menu`, which can scroll up and down alone, until it is no wider than its
/// screen. To be called before it shows.
void shrinkFontToScreen(QMenu& menu);

} // namespace znt
