#pragma once

#include <functional>
#include <string_view>

/// Shows the player a message that must not be missed: a message box in the window, a line on stderr in the
/// terminal.
class ZNTAlert
{
public:
    virtual ~ZNTAlert() = default;
    /// Shows `title` and `text` with the one button "OK". Returns at once; the player may dismiss it much
    /// later, or never.
    virtual void showMessage(std::u16string_view title, std::u16string_view text) = 0;
    /// The same for what has succeeded, so that it does not look like a warning.
    virtual void showSuccess(std::u16string_view title, std::u16string_view text)
    {
        showMessage(title, text);
    }
    /// Shows them with "OK", the default, and "Cancel". Returns at once. `answered` is called once,
    /// with true for "OK", on the run loop's thread, possibly before this returns.
    virtual void askForConfirmation(std::u16string_view title, std::u16string_view text,
                                    std::function<void(bool confirmed)> answered) = 0;
};
