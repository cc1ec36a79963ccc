#pragma once

class QWidget;

namespace znt
{

/// Gives every control of `window` that has none a "What's this?" text, a sentence for Shift+F1 and for
/// screen readers. It comes from the row of the setting or the action behind the control, or from the table
/// here. Each control is found by its object name.
void explainControls(QWidget& window);

} // namespace znt
