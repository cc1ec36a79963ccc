#pragma once

class QDialog;
class QMenu;
class QScrollArea;
class QWidget;

namespace znt
{

/// Gives `window` the size that its content asks for, but no more than its screen has; if that is less than
/// the content needs, the content must scroll. Call it before the window is shown and when its font changes.
void fitToScreen(QWidget& window);

/// Makes the rows of buttons in `dialog` wrap. Each is a QHBoxLayout in a column of its form. Call it once,
/// when the form is loaded.
void letButtonsWrap(QDialog& dialog);

/// Scrolls `area` until all of `widget`, which is in its content, can be seen, or as much of it as fits.
void scrollIntoSight(QScrollArea& area, const QWidget& widget);

/// Makes the font of `dialog`, whose content cannot scroll, smaller until the dialog fits on its screen.
void shrinkFontToScreen(QDialog& dialog);

/// Makes the font of `menu`, which cannot scroll sideways, smaller until the menu is no wider than its
/// screen. Call it before the menu is shown.
void shrinkFontToScreen(QMenu& menu);

} // namespace znt
