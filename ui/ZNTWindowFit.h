#pragma once

class QWidget;

namespace znt
{

/// Gives `window`, before it is shown, the size that its content asks for, but no more than its screen has.
/// Its content is to scroll where that is less than it needs.
void fitToScreen(QWidget& window);

} // namespace znt
