#pragma once

#include "ZNTOutputView.h"

#include <mutex>
#include <string>
#include <string_view>

/// The main window's output view. It also keeps a text to be spoken, which any thread may set and read as a
/// whole.
class ZNTUITextViewAccessability final : public ZNTOutputView
{
    Q_OBJECT

public:
    using ZNTOutputView::ZNTOutputView;

    /// Kept as part of the interface: the text that a screen reader is to speak.
    [[nodiscard]] std::u16string textToSpeak() const
    {
        const std::lock_guard hold(guard);
        return textToSpeak_;
    }
    void setTextToSpeak(std::u16string_view text)
    {
        const std::lock_guard hold(guard);
        textToSpeak_ = text;
    }

private:
    mutable std::mutex guard;
    std::u16string textToSpeak_;
};
